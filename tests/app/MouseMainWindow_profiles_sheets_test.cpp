// What the sheets of the Profiles tab promise.
#include "app/SheetPromises.h"
#include "model/RecordFile.h"
#include "profiles/MouseProfilesController.h"
#include "profiles/ProfileMenu.h"
#include "support/PanelTest.h"
#include "support/QtTests.h"

using namespace skarn;
using namespace skarn::test;

namespace {

namespace requestKeys = vorn::requestKeys;
using vorn::MessageID;

constexpr const char* profiles = "mProfilesTableView";

void chooseProfileItem(SheetBench& bench, ProfileItem item) {
  bench.showTab("MouseProfilesController");
  bench.find<MouseProfilesController>("MouseProfilesController")->selectMenuItem(static_cast<int>(item));
}
void chooseListItem(SheetBench& bench, ProfileListItem item) {
  bench.showTab("MouseProfilesController");
  bench.find<MouseProfilesController>("MouseProfilesController")->selectListItem(static_cast<int>(item));
}
PropertyList importedProfile(const SheetBench& bench) {
  return bench.profile(1).with(keys::ProfileName, "Mine");
}
// The sheet that follows the panel, over a file with a profile or over one without.
void openImport(SheetBench& bench, bool isProfile) {
  bench.showTab("MouseProfilesController");
  const QString folder = bench.folder.filePath(QStringLiteral("All.SkarnProfiles"));
  QDir().mkpath(folder);
  const QString file = folder + QStringLiteral("/Mine.SkarnProfile");
  if (isProfile) {
    vorn::writeRecordFile(file.toStdString(), importedProfile(bench), vorn::RecordKind::Profile);
  } else {
    writeTestFile(file, "no profile");
  }
  bench.find<MouseProfilesController>("MouseProfilesController")
      ->openPanelDidEnd(1, folder, MouseProfilesController::ProfileFolderContext);
}

std::vector<SheetCase> sheetsOfProfiles() {
  return {{.name = "application of a profile",
           .window = "applicationPanel",
           .from = profiles,
           .field = "mApplicationSearch",
           .open = [](SheetBench& bench) { chooseProfileItem(bench, ProfileItem::AssignApplication); },
           .reason = "lkeyNoApplicationSelected",
           .change = [](SheetBench& bench) { bench.type("mApplicationSearch", "edit"); },
           .confirmed =
               [](const SheetBench&) {
                 const PropertyList editor = PropertyList::dictionary({{keys::Application, "Editor"},
                                                                       {keys::Executable, "editor"},
                                                                       {keys::Identifier, "editor.desktop"},
                                                                       {keys::Signature, "????"}});
                 return Sent{
                     {updateOfProfile(0, PropertyList::dictionary({{keys::AutoSwitchOn, 1}, {keys::AppInfo, editor}}))},
                     {}};
               },
           // Without an application the profile is not switched to by itself.
           .cancelled =
               [](const SheetBench&) {
                 return Sent{{updateOfProfile(0, PropertyList::dictionary({{keys::AutoSwitchOn, 0}}))}, {}};
               }},
          filePanel("import of a profile", "mProfileOpenPanel", profiles,
                    [](SheetBench& bench) { chooseProfileItem(bench, ProfileItem::Import); }),
          filePanel("export of a profile", "mProfileSavePanel", profiles,
                    [](SheetBench& bench) { chooseProfileItem(bench, ProfileItem::Export); }),
          filePanel("import of all profiles", "mProfileOpenPanel", profiles,
                    [](SheetBench& bench) { chooseListItem(bench, ProfileListItem::ImportAll); }),
          filePanel("export of all profiles", "mProfileSavePanel", profiles,
                    [](SheetBench& bench) { chooseListItem(bench, ProfileListItem::ExportAll); }),
          {.name = "what files hold",
           .window = "profileImportSheet",
           .from = profiles,
           .field = "mImportOK",
           .open = [](SheetBench& bench) { openImport(bench, true); },
           .confirmed =
               [](const SheetBench& bench) {
                 return Sent{{{MessageID::AddProfile,
                               envelopeWith({{requestKeys::DeviceSettingsDictionary, importedProfile(bench)}})}},
                             {}};
               }},
          {.name = "what files hold that do not fit",
           .window = "profileImportSheet",
           .from = profiles,
           .field = "mImportCancel",
           .open = [](SheetBench& bench) { openImport(bench, false); },
           .reason = "lkeyImportNothingFits",
           .confirmed = nullptr},
          {.name = "comparison",
           .window = "profileComparisonSheet",
           .from = profiles,
           .field = "mComparedProfile",
           .open = [](SheetBench& bench) { chooseListItem(bench, ProfileListItem::Compare); },
           .confirmed = [](const SheetBench&) { return Sent{}; }}};
}

std::vector<AlertCase> alertsOfProfiles() {
  return {{.name = "deletion of a profile",
           .from = profiles,
           .action = "lkeyDeleteAction",
           .open = [](SheetBench& bench) { chooseProfileItem(bench, ProfileItem::Delete); },
           .confirmed =
               [](const SheetBench&) {
                 return Sent{{{MessageID::DeleteProfile, envelopeWith({{requestKeys::ProfileID, 0}})}}, {}};
               }},
          {.name = "restoring of a profile",
           .from = profiles,
           .action = "lkeyRestoreAction",
           .open = [](SheetBench& bench) { chooseProfileItem(bench, ProfileItem::RestoreDefault); },
           .confirmed =
               [](const SheetBench& bench) {
                 return Sent{{updateOfProfile(0, bench.profile(1).with(keys::ProfileName, "Work"))}, {}};
               }},
          {.name = "replacing of a file",
           .from = profiles,
           .action = "lkeyReplace",
           .open =
               [](SheetBench& bench) {
                 writeTestFile(bench.folder.filePath(QStringLiteral("There.SkarnProfile")), "before");
                 chooseProfileItem(bench, ProfileItem::Export);
                 bench.find<QLineEdit>("fileNameEdit")->setText(bench.folder.filePath(QStringLiteral("There")));
                 bench.key("fileNameEdit", Qt::Key_Return);
               },
           .confirmed = [](const SheetBench&) { return Sent{}; }}};
}

}  // namespace

class MouseMainWindowProfilesSheetsTest : public SheetPromises {
  Q_OBJECT

 public:
  MouseMainWindowProfilesSheetsTest() : SheetPromises(sheetsOfProfiles(), alertsOfProfiles()) {}
};

SKARN_QTEST(MouseMainWindowProfilesSheetsTest)
#include "MouseMainWindow_profiles_sheets_test.moc"
