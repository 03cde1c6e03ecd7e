// Profile files, and the applications that profiles are tied to.
#include <QDialog>
#include <QFileDialog>
#include <utility>
#include <vector>

#include "model/ProfileFolder.h"
#include "model/RecordFile.h"
#include "model/SettingsKeys.h"
#include "platform/AddProblem.h"
#include "platform/ApplicationInfo.h"
#include "platform/ApplicationPanel.h"
#include "platform/FilePanel.h"
#include "platform/Localization.h"
#include "platform/RecordFile.h"
#include "platform/SettingsText.h"
#include "profiles/MouseProfilesController.h"
#include "profiles/ProfileImportSheet.h"
#include "profiles/ProfileMenu.h"
#include "ui_MouseProfilesController.h"

namespace skarn {

namespace keys = vorn::keys;
using vorn::PropertyList;

namespace {

QString fileType() {
  const std::string_view extension = vorn::recordFileExtension(vorn::RecordKind::Profile);
  return QString::fromUtf8(extension.data(), static_cast<qsizetype>(extension.size()));
}

QString folderType() {
  return QString::fromUtf8(vorn::profileFolderExtension.data(), std::ssize(vorn::profileFolderExtension));
}

constexpr const char* documents = "file://localhost/Documents/";
constexpr const char* applications = "/Applications/";

// Where each member of "AppInfo" comes from in an application's information dictionary. The name is an exception.
struct ApplicationMember {
  keys::Key key;
  std::string_view source;
};
constexpr ApplicationMember applicationMembers[] = {
    {keys::Application, ApplicationInfo::nameKey},
    {keys::Executable, ApplicationInfo::executableKey},
    {keys::Identifier, ApplicationInfo::identifierKey},
    {keys::Signature, ApplicationInfo::signatureKey},
};

// appInfo with the application of this information dictionary; an empty one takes the application away.
PropertyList tiedTo(const PropertyList& appInfo, const PropertyList& information) {
  PropertyList result = appInfo.dictionaryOrEmpty();
  for (const ApplicationMember& member : applicationMembers) {
    std::string_view value = information[member.source].string();
    if (member.key == keys::Application && value.empty()) value = information[ApplicationInfo::executableKey].string();
    result = result.with(member.key, value);
  }
  return result;
}

}  // namespace

// --- Panels

void MouseProfilesController::loadPanelForIdentifier(int identifier) {
  static const QString name = QStringLiteral("mProfileOpenPanel");
  const auto ended = [tab = QPointer(this), identifier](int returnCode, const QString& path) {
    if (tab) tab->openPanelDidEnd(returnCode, path, identifier);
  };
  delete mProfileOpenPanel;
  switch (identifier) {
    case ApplicationContext:
      mTarget.openSheet(profilesArray, takeTargetRow());
      mProfileOpenPanel =
          ApplicationPanel::open(sheetParent(), name, {QStringLiteral("app")}, QLatin1String(applications), ended);
      break;
    case ProfileFileContext:
      mProfileOpenPanel =
          FilePanel::open(sheetParent(), name, localized("lkeyImportProfile"),
                          {{fileType()}, localized("lkeyProfileFiles")}, QLatin1String(documents), ended);
      break;
    case ProfileFolderContext:
      mProfileOpenPanel =
          FilePanel::open(sheetParent(), name, localized("lkeyImportAllTitle"),
                          {{folderType()}, localized("lkeyProfileFolders")}, QLatin1String(documents), ended);
      break;
    default:
      mProfileOpenPanel = FilePanel::open(sheetParent(), name, localized("lkeyOpenFile"), {}, {}, ended);
  }
}

void MouseProfilesController::loadSaveAsPanel() {
  const PropertyList profile = targetProfile();
  if (profile.isNone()) return;
  mTarget.openSheet(profilesArray, takeTargetRow());
  delete mProfileSavePanel;
  mProfileSavePanel =
      FilePanel::save(sheetParent(), QStringLiteral("mProfileSavePanel"), localized("lkeyExportProfile"),
                      textOf(profile, keys::ProfileName), QLatin1String(documents),
                      [tab = QPointer(this)](int returnCode, const QString& path) {
                        if (tab) tab->sheetDidEnd(returnCode, ExportContext, path);
                      });
}

void MouseProfilesController::openPanelDidEnd(int returnCode, const QString& path, int contextInfo) {
  const bool isChosen = returnCode == FilePanel::okButton;
  if (contextInfo == ApplicationContext) {
    if (isChosen) {
      if (const auto row = takeConfirmedRow()) assignApplication(*row, path);
    } else if (const auto row = mTarget.hasSheet() ? mTarget.takeSheet(profilesArray) : takeTargetRow()) {
      updateProfile(*row, PropertyList::dictionary({{keys::AutoSwitchOn, 0}}));
    }
    refreshTableDisplay();
  } else if (contextInfo == ProfileFileContext && isChosen) {
    importProfile(path);
  } else if (contextInfo == ProfileFolderContext && isChosen) {
    importFolder(path);
  }
}

// --- Files

void MouseProfilesController::exportProfile(const QString& path) {
  const int row = takeConfirmedRow().value_or(-1);
  if (profilesArray.at(row).isNone()) return;
  exportRecord(sheetParent(), path + QLatin1Char('.') + fileType(), profilesArray.at(row), vorn::RecordKind::Profile,
               mUi->mProfileNotice);
}

void MouseProfilesController::exportAll() {
  delete mProfileSavePanel;
  mProfileSavePanel =
      FilePanel::save(sheetParent(), QStringLiteral("mProfileSavePanel"), localized("lkeyExportAllTitle"),
                      localized("lkeyProfilesFolderName"), QLatin1String(documents),
                      [tab = QPointer(this)](int returnCode, const QString& path) {
                        if (!tab || returnCode != FilePanel::okButton) return;
                        exportProfileFolder(tab->sheetParent(), path + QLatin1Char('.') + folderType(),
                                            tab->profilesArray, *tab->mUi->mProfileNotice);
                      });
}

void MouseProfilesController::importProfile(const QString& path) {
  const ImportedRecord file = importRecord(path, vorn::RecordKind::Profile);
  // The list may have grown while the panel was open.
  const QString problem = file.problem.isEmpty() ? reasonAgainst(ProfileItem::Import) : file.problem;
  if (!problem.isEmpty()) return showImportProblem(sheetParent(), path, problem);
  openImportSheet({{path, file.record, {}}}, false);
}

void MouseProfilesController::importFolder(const QString& path) {
  const ImportedFolder folder = importProfileFolder(path);
  if (!folder.problem.isEmpty()) return showImportProblem(sheetParent(), path, folder.problem);
  std::vector<ProfileCandidate> candidates;
  for (const ImportedFile& file : folder.files) {
    candidates.push_back({file.path, file.contents.record, file.contents.problem});
  }
  openImportSheet(std::move(candidates), true);
}

void MouseProfilesController::openImportSheet(std::vector<ProfileCandidate> candidates, bool isFolder) {
  delete mImport;
  mImport = ProfileImportSheet::open(sheetParent(), std::move(candidates), bundle(),
                                     [tab = QPointer(this), isFolder](const std::vector<ProfileCandidate>& fitting) {
                                       if (!tab) return;
                                       isFolder ? tab->addAllImported(fitting) : tab->addImported(fitting.front());
                                     });
}

void MouseProfilesController::addImported(const ProfileCandidate& candidate) {
  if (!profileDelegate) return;
  const PropertyList before = profilesArray;
  const PropertyList profile = candidate.record.with(
      keys::ProfileName, checkForDuplicateName(before, candidate.record[keys::ProfileName].string()));
  deselect();
  profilesArray = before.appending(profile);
  const auto status = profileDelegate->addNewProfileWithSettings(profile);
  if (!isAdded(status)) {
    takeBack(profile, before);
    showImportProblem(sheetParent(), candidate.path, reasonAgainstAdding(vorn::RecordKind::Profile, status));
    return;
  }
  refreshTableDisplay();
  selectLastRow();
  // Of what the engine cannot use the new profile has the factory's.
  if (status == vorn::ReturnStatus::PartlyRefused) mUi->mProfileNotice->say(localized("lkeyImportedPartly"));
}

void MouseProfilesController::addAllImported(const std::vector<ProfileCandidate>& candidates) {
  if (!profileDelegate) return;
  std::size_t count = 0;
  bool isPartlyRefused = false;
  for (const ProfileCandidate& candidate : candidates) {
    const PropertyList profile = candidate.record.with(
        keys::ProfileName, checkForDuplicateName(profilesArray, candidate.record[keys::ProfileName].string()));
    const auto status = count == 0 ? profileDelegate->addNewProfileWithSettings(profile)
                                   : profileDelegate->addFurtherProfileWithSettings(profile);
    if (!isAdded(status)) {
      showImportProblem(sheetParent(), candidate.path, reasonAgainstAdding(vorn::RecordKind::Profile, status));
      break;
    }
    ++count;
    isPartlyRefused = isPartlyRefused || status == vorn::ReturnStatus::PartlyRefused;
  }
  if (count == 0) return;
  QString words = count == 1 ? localized("lkeyImportedOne") : localized("lkeyImportedAll").arg(count);
  if (isPartlyRefused) words += QLatin1Char(' ') + localized("lkeyUnusableValues");
  mUi->mProfileNotice->say(words);
}

// --- Applications

void MouseProfilesController::assignApplication(int row, const QString& path) {
  mNeedsUpdate = false;
  const PropertyList appInfo = tiedTo(profilesArray.at(row)[keys::AppInfo], ApplicationInfo::infoDictionary(path));
  updateProfile(row, PropertyList::dictionary({{keys::AutoSwitchOn, 1}, {keys::AppInfo, appInfo}}));
  // Stays on; the next reload selects the active row by extending an empty selection.
  mNeedsUpdate = true;
}

void MouseProfilesController::removeApplication() {
  const int row = takeTargetRow();
  if (profilesArray.at(row).isNone()) return;
  const PropertyList appInfo = tiedTo(profilesArray.at(row)[keys::AppInfo], PropertyList());
  updateProfile(row, PropertyList::dictionary({{keys::AutoSwitchOn, false}, {keys::AppInfo, appInfo}}));
  refreshTableDisplay();
}

void MouseProfilesController::setAutoSwitch(int row, int value) {
  if (!profileDelegate) return;
  // Settings are always those of the active profile.
  if (row != activeProfile()) profileDelegate->switchProfileWithID(row);
  // A switch that was refused leaves another row selected, whose profile is not meant.
  if (row != selectedRow()) return refreshTableDisplay();
  if (value == 0) {
    updateValue(0, keys::AutoSwitchOn);
  } else {
    mTableObjectValue = value;
    if (textOf(profilesArray.at(row)[keys::AppInfo], keys::Application).isEmpty()) {
      loadPanelForIdentifier(ApplicationContext);
    } else {
      updateValue(value, keys::AutoSwitchOn);
    }
  }
  refreshTableDisplay();
}

}  // namespace skarn
