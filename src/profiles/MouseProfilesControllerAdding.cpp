// New profiles, copies and names.
#include "model/SettingsKeys.h"
#include "model/VrCoreUtility.h"
#include "platform/AddProblem.h"
#include "platform/SettingsText.h"
#include "profiles/MouseProfilesController.h"
#include "profiles/NSTableViewSubClass.h"
#include "profiles/ProfilesTableDelegate.h"
#include "profiles/ProfilesTableModel.h"
#include "ui_MouseProfilesController.h"

namespace skarn {

namespace keys = vorn::keys;
using vorn::PropertyList;

namespace {

// The name of a new profile, in every language.
constexpr std::string_view untitledName = "Untitled Profile";

}  // namespace

std::string MouseProfilesController::checkForDuplicateName(const PropertyList& profiles,
                                                           std::string_view usingDefaultName) {
  return vorn::VrCoreUtility::generateName(profiles, usingDefaultName, keys::ProfileName);
}

void MouseProfilesController::clickAdd() {
  endEdit();
  mTarget.forget();
  // A menu that was open while the list grew still offers it.
  if (!profileDelegate || isFull()) return;
  mIsAddProfile = true;
  mNeedsProfileEditing = true;
  deselect();
  const PropertyList before = profilesArray;
  const PropertyList profile = defaultDict.with(keys::ProfileName, checkForDuplicateName(before, untitledName));
  profilesArray = before.appending(profile);
  enableControlsForAddProfiles(false);
  refreshTableDisplay();
  selectLastRow();
  const auto status = profileDelegate->addNewProfileWithSettings(profile);
  enableControlsForAddProfiles(true);
  mIsAddProfile = false;
  if (!isAdded(status)) {
    takeBack(profile, before);
    tellRefusal(profile, status);
    return;
  }
  // The reload may have begun the edit; it holds the keyboard then.
  if (mCells->editedRow() < 0) mUi->mProfilesTableView->setFocus();
  editName(mModel->rowCount() - 1);
}

void MouseProfilesController::copyProfile() {
  const PropertyList original = profilesArray.at(takeTargetRow());
  if (!profileDelegate || isFull() || original.isNone()) return;
  mIsAddProfile = true;
  const PropertyList before = profilesArray;
  const PropertyList profile =
      original.with(keys::ProfileName, checkForDuplicateName(before, original[keys::ProfileName].string()));
  profilesArray = before.appending(profile);
  refreshTableDisplay();
  deselect();
  selectLastRow();
  editName(mModel->rowCount() - 1);
  const auto status = profileDelegate->addNewProfileWithSettings(profile);
  mIsAddProfile = false;
  if (isAdded(status)) return;
  takeBack(profile, before);
  tellRefusal(profile, status);
}

bool MouseProfilesController::isAdded(std::optional<vorn::ReturnStatus> status) {
  return status && vorn::isChanged(*status);
}

void MouseProfilesController::takeBack(const PropertyList& profile, const PropertyList& before) {
  mNeedsProfileEditing = false;
  mCells->discardEdit();
  // A refusal may come with what the engine holds now.
  if (profilesArray == before.appending(profile)) profilesArray = before;
  updateUISettings();
}

void MouseProfilesController::tellRefusal(const PropertyList& profile, std::optional<vorn::ReturnStatus> status) {
  showAddProblem(sheetParent(), textOf(profile, keys::ProfileName), vorn::RecordKind::Profile, status);
}

void MouseProfilesController::renameProfile(int row, const QString& name) {
  const PropertyList& record = profilesArray.at(row);
  if (name.isEmpty() || record.isNone() || !profileDelegate) return;
  // Without its own old name the profile may keep it. The record moves to the end of the working list and also takes
  // its old place there; the reload that follows puts the engine's list in its place.
  const PropertyList others = profilesArray.removing(row);
  const PropertyList nameless = record.with(keys::ProfileName, "");
  const PropertyList renamed =
      nameless.with(keys::ProfileName, checkForDuplicateName(others.appending(nameless), name.toStdString()));
  userSettingsDict = renamed;
  profilesArray = others.appending(renamed).replacing(row, renamed);
  mNeedsProfileEditing = false;
  profileDelegate->renameProfileWithProfileID(selectedRow(), renamed);
}

}  // namespace skarn
