#include "profiles/ProfileImportSheet.h"

#include <QFileInfo>
#include <QPushButton>
#include <QStringList>
#include <utility>

#include "model/ProfileContents.h"
#include "model/SettingsKeys.h"
#include "model/VrCoreUtility.h"
#include "platform/Localization.h"
#include "platform/SettingsText.h"
#include "platform/ShownName.h"
#include "profiles/ComparisonWords.h"
#include "ui_ProfileImportSheet.h"
#include "widgets/SheetFlags.h"

namespace skarn {

using vorn::PropertyList;
namespace keys = vorn::keys;

namespace {

QString controlsWords(const vorn::ProfileContents& contents) {
  if (contents.controls == 0) return localized("lkeyImportNoControls");
  return localized("lkeyImportControls").arg(QString::number(contents.controls), QString::number(contents.keymaps));
}

// What the entry at the position is on this mouse.
QString entryWords(const PropertyList& records, keys::Key nameKey, std::int64_t position) {
  const PropertyList& record = records.at(position);
  if (record.isNone()) return localized("lkeyImportIsNothingHere");
  return localized("lkeyImportIsHere").arg(shownName(textOf(record, nameKey)));
}

}  // namespace

ProfileImportSheet* ProfileImportSheet::open(QWidget* window, std::vector<ProfileCandidate> candidates,
                                             const PropertyList& bundle, Accepted accepted) {
  auto* sheet = new ProfileImportSheet(window, std::move(candidates), std::move(accepted));
  sheet->setSettings(bundle);
  (sheet->mFitting.empty() ? sheet->mUi->mImportCancel : sheet->mUi->mImportOK)->setFocus();
  sheet->QDialog::open();
  return sheet;
}

ProfileImportSheet::ProfileImportSheet(QWidget* window, std::vector<ProfileCandidate> candidates, Accepted accepted)
    : QDialog(window, sheetFlags),
      mUi(std::make_unique<Ui::ProfileImportSheet>()),
      mCandidates(std::move(candidates)),
      mAccepted(std::move(accepted)) {
  mUi->setupUi(this);
  setAttribute(Qt::WA_DeleteOnClose);
  connect(mUi->mImportOK, &QPushButton::clicked, this, &QDialog::accept);
  connect(mUi->mImportCancel, &QPushButton::clicked, this, &QDialog::reject);
}

ProfileImportSheet::~ProfileImportSheet() = default;

void ProfileImportSheet::setSettings(const PropertyList& bundle) {
  mFitting.clear();
  PropertyList profiles = bundle[keys::Profiles].arrayOrEmpty();
  mUi->mImportList->begin({QString(), QString()});
  for (const ProfileCandidate& candidate : mCandidates) {
    const QString file = shownName(QFileInfo(candidate.path).fileName());
    const bool hasRoom = profiles.size() < keys::maximumProfiles;
    if (!candidate.problem.isEmpty() || !hasRoom) {
      mUi->mImportList->addGroup(localized("lkeyImportNot").arg(file));
      mUi->mImportList->addRow({localized("lkeyImportReason"),
                                candidate.problem.isEmpty() ? localized("lkeyNoRoomForProfile") : candidate.problem});
      continue;
    }
    // As the import names it: the ones before it are there then.
    const std::string name =
        vorn::VrCoreUtility::generateName(profiles, candidate.record[keys::ProfileName].string(), keys::ProfileName);
    profiles = profiles.appending(candidate.record.with(keys::ProfileName, name));
    mUi->mImportList->addGroup(shownName(QString::fromStdString(name)));
    mUi->mImportList->addRow({localized("lkeyImportFile"), file});
    tellContents(candidate.record, bundle);
    mFitting.push_back(candidate);
  }
  mUi->mImportTitle->setText(mFitting.size() == 1 ? localized("lkeyImportHeadingOne")
                                                  : localized("lkeyImportHeading").arg(mFitting.size()));
  mUi->mImportOK->setEnabled(!mFitting.empty());
  mUi->mImportOK->setToolTip(mFitting.empty() ? localized("lkeyImportNothingFits") : QString());
}

void ProfileImportSheet::tellContents(const PropertyList& record, const PropertyList& bundle) {
  const vorn::ProfileContents contents = vorn::contentsOf(record);
  mUi->mImportList->addRow({localized("lkeyTabButtons"), controlsWords(contents)});
  for (const std::int64_t macro : contents.macros) {
    mUi->mImportList->addRow(
        {localized("lkeyImportPlaysMacro").arg(macro + 1), entryWords(bundle[keys::Macros], keys::MacroName, macro)});
  }
  for (const std::int64_t profile : contents.profiles) {
    mUi->mImportList->addRow({localized("lkeyImportSwitchesTo").arg(profile + 1),
                              entryWords(bundle[keys::Profiles], keys::ProfileName, profile)});
  }
  if (!contents.application.empty()) {
    mUi->mImportList->addRow(
        {localized("lkeyProfileApplicationColumn"), shownName(QString::fromStdString(contents.application))});
  }
  QStringList unusable;
  for (const std::string& key : contents.unusable) unusable << settingTitle(key);
  if (!unusable.isEmpty()) {
    mUi->mImportList->addRow({localized("lkeyImportUnusable"), unusable.join(QStringLiteral(", "))});
  }
}

void ProfileImportSheet::accept() {
  if (mFitting.empty()) return;
  const std::vector<ProfileCandidate> fitting = mFitting;
  const Accepted accepted = std::exchange(mAccepted, {});
  QDialog::accept();
  if (accepted) accepted(fitting);
}

}  // namespace skarn
