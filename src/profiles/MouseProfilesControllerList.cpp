// The list as a whole: its order, and what its profiles differ in.
#include "model/ProfileOrder.h"
#include "model/SettingsKeys.h"
#include "platform/AddProblem.h"
#include "platform/Localization.h"
#include "platform/SettingsText.h"
#include "platform/ShownName.h"
#include "profiles/MouseProfilesController.h"
#include "profiles/ProfileComparisonSheet.h"
#include "profiles/ProfileMenu.h"
#include "ui_MouseProfilesController.h"

namespace skarn {

namespace keys = vorn::keys;
using vorn::PropertyList;

QString MouseProfilesController::reasonAgainst(ProfileListItem item) const {
  const int row = targetRow();
  switch (item) {
    case ProfileListItem::MoveUp:
      return row <= 0 ? localized("lkeyProfileIsFirst") : QString();
    case ProfileListItem::MoveDown:
      return row + 1 >= static_cast<int>(profilesArray.size()) ? localized("lkeyProfileIsLast") : QString();
    case ProfileListItem::Compare:
      return profilesArray.size() < 2 ? localized("lkeyNoOtherProfile") : QString();
    case ProfileListItem::ImportAll:
      return isFull() ? localized("lkeyNoRoomForProfile") : QString();
    case ProfileListItem::ExportAll:
      return {};
  }
  return {};
}

void MouseProfilesController::selectListItem(int tag) {
  endEdit();
  const auto item = static_cast<ProfileListItem>(tag);
  const bool isAboutAll = item == ProfileListItem::ImportAll || item == ProfileListItem::ExportAll;
  if ((!isAboutAll && isTargetGone()) || !reasonAgainst(tag).isEmpty()) return mTarget.forget();
  const int row = takeTargetRow();
  switch (item) {
    case ProfileListItem::MoveUp:
      return moveProfile(row, row - 1);
    case ProfileListItem::MoveDown:
      return moveProfile(row, row + 1);
    case ProfileListItem::Compare:
      return compareProfile(row);
    case ProfileListItem::ImportAll:
      return loadPanelForIdentifier(ProfileFolderContext);
    case ProfileListItem::ExportAll:
      return exportAll();
  }
}

PropertyList MouseProfilesController::bundle() const {
  return PropertyList::dictionary({{keys::Profiles, profilesArray}, {keys::Macros, macrosArray}});
}

void MouseProfilesController::compareProfile(int row) {
  if (profilesArray.at(row).isNone()) return;
  delete mComparison;
  mComparison = ProfileComparisonSheet::open(sheetParent(), bundle(), row, activeProfile());
}

void MouseProfilesController::moveProfile(int from, int to) {
  if (!profileDelegate || from == to || profilesArray.at(from).isNone() || profilesArray.at(to).isNone()) return;
  const QString name = shownName(textOf(profilesArray.at(from), keys::ProfileName));
  mNeedsProfileEditing = false;
  const auto order =
      vorn::orderAfterMove(profilesArray.size(), static_cast<std::size_t>(from), static_cast<std::size_t>(to));
  const auto status = profileDelegate->reorderProfiles(order, vorn::profileNames(profilesArray));
  if (status == vorn::ReturnStatus::Done) {
    mUi->mProfileNotice->say(localized("lkeyProfileMoved").arg(name, QString::number(to + 1)));
  } else if (status == vorn::ReturnStatus::Outdated) {
    mUi->mProfileNotice->say(localized("lkeyProfilesChangedMeanwhile"));
  } else {
    const QString reason = reasonAgainstAdding(vorn::RecordKind::Profile, status);
    mUi->mProfileNotice->say(localized("lkeyProfileNotMoved").arg(name, reason));
  }
}

}  // namespace skarn
