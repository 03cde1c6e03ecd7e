// What profile files hold is told before their profiles are added; all profiles as a folder of files.
#include "profiles/ProfileImportSheet.h"

#include <QDir>
#include <QFileDialog>
#include <QLabel>
#include <QTemporaryDir>

#include "model/ProfileFolder.h"
#include "profiles/GroupedTable.h"
#include "profiles/ProfileMenu.h"
#include "profiles/ProfilesTabTest.h"
#include "support/PanelTest.h"
#include "support/QtTests.h"

using namespace skarn;
using namespace skarn::test;

namespace {

constexpr int importAllTag = static_cast<int>(ProfileListItem::ImportAll);
constexpr int exportAllTag = static_cast<int>(ProfileListItem::ExportAll);

PropertyList assigned(int command, int param1) {
  return PropertyList::dictionary({{keys::Command, command}, {keys::Param1, param1}, {keys::Param2, 0}});
}

}  // namespace

class ProfileImportSheetTest : public QObject {
  Q_OBJECT

 private:
  QString inFolder(const char* name) const { return mFolder->filePath(QLatin1String(name)); }
  void writeProfile(const QString& path, const PropertyList& record) {
    QVERIFY(!vorn::writeRecordFile(path.toStdString(), record, vorn::RecordKind::Profile));
  }
  QDialog* sheet() { return mTest->find<QDialog>("profileImportSheet"); }
  QPushButton& ok() { return *sheet()->findChild<QPushButton*>(QStringLiteral("mImportOK")); }
  QString heading() { return sheet()->findChild<QLabel*>(QStringLiteral("mImportTitle"))->text(); }
  QStringList rows() {
    const QAbstractItemModel& model = *sheet()->findChild<GroupedTable*>(QStringLiteral("mImportList"))->model();
    QStringList rows;
    for (int row = 0; row < model.rowCount(); ++row) {
      const QString value = model.index(row, 1).data().toString();
      rows << model.index(row, 0).data().toString() + (value.isEmpty() ? QString() : ": " + value);
    }
    return rows;
  }
  // As the panels end.
  void choose(const QString& path) {
    mTest->tab->openPanelDidEnd(1, path, MouseProfilesController::ProfileFileContext);
  }
  void chooseFolder(const QString& path) {
    mTest->tab->openPanelDidEnd(1, path, MouseProfilesController::ProfileFolderContext);
  }
  void enter(const char* panel, const QString& path) {
    auto* shown = mTest->find<QFileDialog>(panel);
    QVERIFY(shown);
    QVERIFY(QTest::qWaitForWindowExposed(shown));
    auto* name = shown->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    name->setText(path);
    QTest::keyClick(name, Qt::Key_Return);
    QTRY_VERIFY(!mTest->find<QFileDialog>(panel));
  }

  std::unique_ptr<QTemporaryDir> mFolder;
  std::unique_ptr<ProfilesTab> mTest;

 public:
  static void initMain() { useOwnHome(); }

 private slots:
  void initTestCase() { QVERIFY(installTranslations(QStringLiteral("en"))); }
  void init() {
    mFolder = std::make_unique<QTemporaryDir>();
    mTest = std::make_unique<ProfilesTab>();
    mTest->tab->setMMacrosArray(PropertyList::array({PropertyList::dictionary({{keys::MacroName, "Greet"}})}));
    mTest->showProfiles(namedProfiles({"Work", "Play"}), 0);
  }
  void cleanup() {
    mTest.reset();
    mFolder.reset();
  }

  void whatAFileHoldsIsToldBeforeItsProfileIsAdded() {
    const PropertyList keysGroup =
        profile("Work")[keys::Keys].with("43", assigned(10, 0)).with("20", assigned(10, 8)).with("8", assigned(17, 1));
    const PropertyList record = profile("Work")
                                    .with(keys::Keys, keysGroup)
                                    .with(keys::DPIX, 9)
                                    .with(keys::AppInfo, PropertyList::dictionary({{keys::Application, "Editor"}}));
    writeProfile(inFolder("a.SkarnProfile"), record);
    choose(inFolder("a.SkarnProfile"));
    QVERIFY(sheet());
    VERIFY_CALLS(mTest->delegate.calls, {});
    QCOMPARE(heading(), QStringLiteral("Import this profile?"));
    QCOMPARE(rows(),
             (QStringList{"Work(2)", "File: a.SkarnProfile", "Buttons: 3 changed from the factory, in 1 of 8 keymaps",
                          "Plays macro 1: “Greet” on this mouse", "Plays macro 9: Does not exist on this mouse",
                          "Switches to profile 2: “Play” on this mouse", "Application: Editor",
                          "Not usable, as from the factory: Sensitivity X"}));
    QTest::mouseClick(&ok(), Qt::LeftButton);
    QTRY_VERIFY(!sheet());
    VERIFY_CALLS(mTest->delegate.calls, {added(record.with(keys::ProfileName, "Work(2)")), switchedTo(2)});
  }

  void aCancelledSheetAddsNothing() {
    writeProfile(inFolder("a.SkarnProfile"), profile("A"));
    choose(inFolder("a.SkarnProfile"));
    QVERIFY(sheet());
    QCOMPARE(rows(), (QStringList{"A", "File: a.SkarnProfile", "Buttons: All as from the factory"}));
    QTest::keyClick(sheet(), Qt::Key_Escape);
    QTRY_VERIFY(!sheet());
    VERIFY_CALLS(mTest->delegate.calls, {});
    QCOMPARE(mTest->names(), (QStringList{"Work", "Play"}));
  }

  void theSheetFollowsRoomAndNames() {
    writeProfile(inFolder("a.SkarnProfile"), profile("A"));
    choose(inFolder("a.SkarnProfile"));
    QVERIFY(sheet());
    mTest->delegate.list = namedProfiles({"A", "Play"});
    mTest->delegate.reload();
    QCOMPARE(rows().constFirst(), QStringLiteral("A(2)"));
    mTest->delegate.list = namedProfiles({"1", "2", "3", "4", "5"});
    mTest->delegate.reload();
    QCOMPARE(rows(), (QStringList{"Not imported: a.SkarnProfile", "Why: " + localized("lkeyNoRoomForProfile")}));
    QVERIFY(!ok().isEnabled());
    QCOMPARE(ok().toolTip(), localized("lkeyImportNothingFits"));
    QTest::keyClick(sheet(), Qt::Key_Return);
    QVERIFY(sheet());
    mTest->delegate.list = namedProfiles({"1", "2", "3", "4"});
    mTest->delegate.reload();
    QTest::keyClick(sheet(), Qt::Key_Return);
    QTRY_VERIFY(!sheet());
    VERIFY_CALLS(mTest->delegate.calls, {added(profile("A")), switchedTo(4)});
  }

  void ofAFolderWhatFitsIsAddedInItsOrderAndTheSameProfileStaysInForce() {
    const QString folder = inFolder("All.SkarnProfiles");
    QVERIFY(!vorn::writeProfileFolder(folder.toStdString(), namedProfiles({"Work", "Raid", "Race", "More"})));
    writeProfile(folder + "/0 Bad.SkarnProfile", profile("Bad"));
    QFile bad(folder + "/0 Bad.SkarnProfile");
    QVERIFY(bad.open(QIODevice::WriteOnly | QIODevice::Truncate) && bad.write("nothing") > 0);
    bad.close();
    chooseFolder(folder);
    QVERIFY(sheet());
    QCOMPARE(heading(), QStringLiteral("Import 3 profiles?"));
    const QStringList told = rows();
    QCOMPARE(told.filter(QStringLiteral("Not imported")),
             (QStringList{"Not imported: 0 Bad.SkarnProfile", "Not imported: 4 More.SkarnProfile"}));
    QCOMPARE(told.constLast(), "Why: " + localized("lkeyNoRoomForProfile"));
    QTest::keyClick(sheet(), Qt::Key_Return);
    QTRY_VERIFY(!sheet());
    VERIFY_CALLS(mTest->delegate.calls,
                 {added(profile("Work(2)")), addedFurther(profile("Raid")), addedFurther(profile("Race"))});
    QCOMPARE(mTest->selectedRow(), 0);
    QCOMPARE(mTest->find<QLabel>("mProfileNotice")->text(), QStringLiteral("3 profiles were imported."));
  }

  void valuesThatCannotBeUsedAreToldOfAllProfilesToo() {
    const QString folder = inFolder("All.SkarnProfiles");
    QVERIFY(!vorn::writeProfileFolder(folder.toStdString(), namedProfiles({"A", "B"})));
    chooseFolder(folder);
    mTest->delegate.statusOfAdd = vorn::ReturnStatus::PartlyRefused;
    QTest::keyClick(sheet(), Qt::Key_Return);
    QTRY_VERIFY(!sheet());
    VERIFY_CALLS(mTest->delegate.calls, {added(profile("A")), addedFurther(profile("B"))});
    QCOMPARE(mTest->find<QLabel>("mProfileNotice")->text(),
             QStringLiteral("2 profiles were imported. Values that cannot be used in them are as from the factory."));
  }

  void ofOneProfileTheWordsAreSingular() {
    mTest->showProfiles(namedProfiles({"Work"}), 0);
    mTest->choose(exportAllTag);
    enter("mProfileSavePanel", inFolder("Mine"));
    QCOMPARE(mTest->find<QLabel>("mProfileNotice")->text(), "Exported 1 profile to " + inFolder("Mine.SkarnProfiles"));
    chooseFolder(inFolder("Mine.SkarnProfiles"));
    QVERIFY(sheet());
    QCOMPARE(heading(), QStringLiteral("Import this profile?"));
    QTest::keyClick(sheet(), Qt::Key_Return);
    QTRY_VERIFY(!sheet());
    VERIFY_CALLS(mTest->delegate.calls, {added(profile("Work(2)"))});
    QCOMPARE(mTest->find<QLabel>("mProfileNotice")->text(), QStringLiteral("1 profile was imported."));
  }

  void anImportOfAllEndsAtTheFirstThatTheEngineRefuses() {
    const QString folder = inFolder("All.SkarnProfiles");
    QVERIFY(!vorn::writeProfileFolder(folder.toStdString(), namedProfiles({"A", "B"})));
    chooseFolder(folder);
    QVERIFY(sheet());
    mTest->delegate.statusOfAdd = vorn::ReturnStatus::NotSaved;
    QTest::keyClick(sheet(), Qt::Key_Return);
    QTRY_VERIFY(mTest->alert());
    VERIFY_CALLS(mTest->delegate.calls, {added(profile("A"))});
    QCOMPARE(mTest->names(), (QStringList{"Work", "Play"}));
  }

  void aFolderWithoutProfilesIsToldAtOnce() {
    QVERIFY(QDir().mkpath(inFolder("Empty.SkarnProfiles")));
    chooseFolder(inFolder("Empty.SkarnProfiles"));
    QVERIFY(!sheet());
    QVERIFY(mTest->alert());
    QCOMPARE(mTest->alert()->informativeText(), localized("lkeyFolderHoldsNoProfiles"));
  }

  void allProfilesAreExportedIntoAFolderOfTheirOwn() {
    mTest->choose(exportAllTag);
    enter("mProfileSavePanel", inFolder("Mine"));
    QCOMPARE(QDir(inFolder("Mine.SkarnProfiles")).entryList(QDir::Files),
             (QStringList{"1 Work.SkarnProfile", "2 Play.SkarnProfile"}));
    QCOMPARE(mTest->find<QLabel>("mProfileNotice")->text(), "Exported 2 profiles to " + inFolder("Mine.SkarnProfiles"));
    VERIFY_CALLS(mTest->delegate.calls, {});
    // The folder counts as a file where it is imported.
    mTest->choose(importAllTag);
    enter("mProfileOpenPanel", inFolder("Mine.SkarnProfiles"));
    QVERIFY(sheet());
    QCOMPARE(heading(), QStringLiteral("Import 2 profiles?"));
  }

  void anExportOfAllReplacesNothing() {
    QVERIFY(QDir().mkpath(inFolder("Mine.SkarnProfiles")));
    mTest->choose(exportAllTag);
    enter("mProfileSavePanel", inFolder("Mine"));
    QVERIFY(mTest->alert());
    QCOMPARE(mTest->alert()->informativeText(), localized("lkeyFileExistsAlready"));
    QVERIFY(QDir(inFolder("Mine.SkarnProfiles")).isEmpty());
  }

  void aFullListOffersNoImportOfAll() {
    mTest->showProfiles(namedProfiles({"1", "2", "3", "4", "5"}), 0);
    QCOMPARE(mTest->tab->reasonAgainst(importAllTag), localized("lkeyNoRoomForProfile"));
    mTest->tab->selectListItem(importAllTag);
    QVERIFY(!mTest->find<QFileDialog>("mProfileOpenPanel"));
  }
};

SKARN_QTEST(ProfileImportSheetTest)
#include "ProfileImportSheet_test.moc"
