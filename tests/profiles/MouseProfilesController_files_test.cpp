// Profile files, and the applications that profiles are tied to: the real panels, driven by events.
#include <QFileDialog>
#include <QListView>

#include "model/PropertyListCodec.h"
#include "profiles/ProfilesTabTest.h"
#include "support/ApplicationsHome.h"
#include "support/PanelTest.h"
#include "support/QtTests.h"

using namespace skarn;
using namespace skarn::test;

namespace {

vorn::PropertyList readFile(const QString& path) {
  return vorn::readPropertyListFile(path.toStdString()).value_or(PropertyList());
}

QByteArray binary(const PropertyList& list) {
  const auto bytes = vorn::encodeBinaryPropertyList(list);
  return {reinterpret_cast<const char*>(bytes->data()), static_cast<qsizetype>(bytes->size())};
}

QByteArray bundleInformation(const QByteArray& entries) {
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?><plist version=\"1.0\"><dict>" + entries + "</dict></plist>";
}

PropertyList appInfo(std::string_view application, std::string_view executable, std::string_view identifier,
                     std::string_view signature) {
  return PropertyList::dictionary({{keys::Application, application},
                                   {keys::Executable, executable},
                                   {keys::Identifier, identifier},
                                   {keys::Signature, signature}});
}

PropertyList autoSwitch(int on) {
  return PropertyList::dictionary({{keys::AutoSwitchOn, on}});
}

}  // namespace

class MouseProfilesControllerFilesTest : public QObject {
  Q_OBJECT

 private:
  QString inFolder(const QString& name) const { return mFolder->filePath(name); }

  QFileDialog* filePanel(const char* name) { return mTest->find<QFileDialog>(name); }
  // Types a path into a file panel and presses Return.
  void enter(const char* panel, const QString& path) {
    QVERIFY(filePanel(panel));
    QVERIFY(QTest::qWaitForWindowExposed(filePanel(panel)));
    auto* name = filePanel(panel)->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    name->selectAll();
    QTest::keyClicks(name, path);
    QTest::keyClick(name, Qt::Key_Return);
    QTRY_VERIFY(!filePanel(panel));
  }
  void importFile(const QString& path) {
    mTest->choose(3);
    enter("mProfileOpenPanel", path);
    if (auto* sheet = mTest->find<QDialog>("profileImportSheet")) {
      QTest::keyClick(sheet, Qt::Key_Return);
      QTRY_VERIFY(!mTest->find<QDialog>("profileImportSheet"));
    }
  }
  void exportTo(const QString& path) {
    mTest->choose(4);
    enter("mProfileSavePanel", path);
  }
  QDialog* chooser() { return mTest->find<QDialog>("applicationPanel"); }
  // Chooses an application by its name.
  void chooseApplication(const QString& name) {
    QVERIFY(chooser());
    QVERIFY(QTest::qWaitForWindowActive(chooser()));
    QTest::keyClicks(chooser()->findChild<QLineEdit*>(QStringLiteral("mApplicationSearch")), name);
    QTest::mouseClick(chooser()->findChild<QPushButton*>(QStringLiteral("mApplicationOK")), Qt::LeftButton);
    QTRY_VERIFY(!chooser());
  }
  void browseFor(const QString& path) {
    QVERIFY(chooser());
    QTest::mouseClick(chooser()->findChild<QPushButton*>(QStringLiteral("mApplicationBrowse")), Qt::LeftButton);
    enter("mProfileOpenPanel", path);
    QTRY_VERIFY(!chooser());
  }
  void cancelChooser() {
    QVERIFY(chooser());
    QTest::keyClick(chooser(), Qt::Key_Escape);
    QTRY_VERIFY(!chooser());
  }
  void verifyRefused(const QString& name) {
    QVERIFY(mTest->alert());
    QCOMPARE(mTest->alert()->text(), localized("lkeyImportFailedTitle").arg(name));
    QVERIFY(!mTest->alert()->informativeText().isEmpty());
    VERIFY_CALLS(mTest->delegate.calls, {});
    QVERIFY(mTest->tab->mProfilesArray() == mTest->delegate.list);
    confirm(mTest->alert());
    QTRY_VERIFY(!mTest->alert());
  }

  std::unique_ptr<QTemporaryDir> mFolder;
  std::unique_ptr<ApplicationsHome> mHome;
  std::unique_ptr<ProfilesTab> mTest;

 public:
  static void initMain() { useOwnHome(); }

 private slots:
  void initTestCase() { QVERIFY(installTranslations(QStringLiteral("en"))); }
  void init() {
    mFolder = std::make_unique<QTemporaryDir>();
    mHome = std::make_unique<ApplicationsHome>();
    mTest = std::make_unique<ProfilesTab>();
    mTest->show();
  }
  void cleanup() {
    mTest.reset();
    mHome.reset();
    mFolder.reset();
  }

  // --- Export

  void exportSuggestsTheNameAndWritesTheRecord() {
    mTest->choose(4);
    QFileDialog* panel = filePanel("mProfileSavePanel");
    QCOMPARE(panel->windowTitle(), QStringLiteral("Export Profile"));
    QVERIFY(panel);
    QCOMPARE(panel->windowModality(), Qt::WindowModal);
    auto* name = panel->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    QCOMPARE(name->text(), QStringLiteral("Work"));
    panel->setDirectory(mFolder->path());
    name->setText(QStringLiteral("Work"));
    QTest::keyClick(name, Qt::Key_Return);
    QTRY_VERIFY(!filePanel("mProfileSavePanel"));
    QCOMPARE(QDir(mFolder->path()).entryList(QDir::Files | QDir::Hidden), QStringList{"Work.SkarnProfile"});
    QVERIFY(readFile(inFolder(QStringLiteral("Work.SkarnProfile"))) == profiles().at(1));
    QFile file(inFolder(QStringLiteral("Work.SkarnProfile")));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.read(8), QByteArray("bplist00"));
    VERIFY_CALLS(mTest->delegate.calls, {});
  }

  void theExtensionIsAlwaysAppended() {
    exportTo(inFolder(QStringLiteral("Work.SkarnProfile")));
    QCOMPARE(QDir(mFolder->path()).entryList(QDir::Files), QStringList{"Work.SkarnProfile.SkarnProfile"});
  }

  void anExportSaysWhereItWent() {
    auto* notice = mTest->find<QLabel>("mProfileNotice");
    QVERIFY(!notice->isVisible());
    const QRect boxBefore = mTest->onScreen().geometry();
    QVERIFY(boxBefore.right() > mTest->tab->width() - 40);
    exportTo(inFolder(QStringLiteral("Kept")));
    QVERIFY(notice->isVisible());
    QCOMPARE(mTest->onScreen().geometry(), boxBefore);
    QCOMPARE(notice->text(), QStringLiteral("Exported to %1").arg(inFolder(QStringLiteral("Kept.SkarnProfile"))));
    mTest->tab->enableControlsState(false);
    QVERIFY(!notice->isVisible());
    mTest->tab->enableControlsState(true);
    QVERIFY(QDir().mkpath(inFolder(QStringLiteral("Folder.SkarnProfile"))));
    exportTo(inFolder(QStringLiteral("Folder")));
    QVERIFY(mTest->alert());
    QVERIFY(!notice->isVisible());
  }

  void aCancelledExportWritesNothing() {
    mTest->choose(4);
    filePanel("mProfileSavePanel")->setDirectory(mFolder->path());
    QTest::keyClick(filePanel("mProfileSavePanel"), Qt::Key_Escape);
    QTRY_VERIFY(!filePanel("mProfileSavePanel"));
    QCOMPARE(QDir(mFolder->path()).entryList(QDir::Files | QDir::Hidden), QStringList());
    VERIFY_CALLS(mTest->delegate.calls, {});
  }

  void anExistingFileIsReplacedOnlyOnRequest() {
    const QString path = inFolder(QStringLiteral("Work.SkarnProfile"));
    QVERIFY(writeTestFile(path, "before"));
    exportTo(inFolder(QStringLiteral("Work")));
    QVERIFY(mTest->alert());
    QTest::keyClick(mTest->alert(), Qt::Key_Escape);
    QTRY_VERIFY(!mTest->alert());
    QCOMPARE(QFileInfo(path).size(), 6);
    exportTo(inFolder(QStringLiteral("Work")));
    confirm(mTest->alert());
    QTRY_VERIFY(!mTest->alert());
    QVERIFY(readFile(path) == profiles().at(1));
  }

  void aFailedExportIsTold() {
    QVERIFY(QDir(mFolder->path()).mkdir(QStringLiteral("Work.SkarnProfile")));
    exportTo(inFolder(QStringLiteral("Work")));
    QVERIFY(mTest->alert());
    QCOMPARE(mTest->alert()->text(), localized("lkeyExportFailedTitle").arg(QStringLiteral("Work.SkarnProfile")));
    QVERIFY(QFileInfo(inFolder(QStringLiteral("Work.SkarnProfile"))).isDir());
  }

  // --- Import

  void anImportIsAddedUnderAFreeNameAndSwitchedToOnce() {
    const PropertyList record = profile("Work").with("further", PropertyList::array({1, "x"}));
    QVERIFY(writeTestFile(inFolder(QStringLiteral("Work.SkarnProfile")), binary(record)));
    importFile(inFolder(QStringLiteral("Work.SkarnProfile")));
    VERIFY_CALLS(mTest->delegate.calls, {added(record.with(keys::ProfileName, "Work(2)")), switchedTo(4)});
    QCOMPARE(mTest->selectedRow(), 4);
    QCOMPARE(mTest->names().constLast(), QStringLiteral("Work(2)"));
    QVERIFY(!mTest->alert());
    QVERIFY(!mTest->editor());
  }

  void anImportIntoAnEmptyListKeepsItsName() {
    mTest->showProfiles(PropertyList::array(), -1);
    QVERIFY(writeTestFile(inFolder(QStringLiteral("a.SkarnProfile")), binary(profile("Alone"))));
    importFile(inFolder(QStringLiteral("a.SkarnProfile")));
    QCOMPARE(mTest->delegate.calls.size(), std::size_t{2});
    VERIFY_CALLS(mTest->delegate.calls, {added(profile("Alone")), switchedTo(0)});
    QCOMPARE(mTest->names(), QStringList{"Alone"});
  }

  void anXmlFileIsImportedToo() {
    const QByteArray xml = bundleInformation(
        "<key>ProfileName</key><string>Written &amp; read</string><key>Keys</key><dict/><key>Buttons</key><dict/>");
    QVERIFY(writeTestFile(inFolder(QStringLiteral("x.SkarnProfile")), xml));
    importFile(inFolder(QStringLiteral("x.SkarnProfile")));
    const PropertyList record = PropertyList::dictionary({{keys::ProfileName, "Written & read"},
                                                          {keys::Keys, PropertyList::dictionary()},
                                                          {keys::Buttons, PropertyList::dictionary()}});
    VERIFY_CALLS(mTest->delegate.calls, {added(record), switchedTo(4)});
  }

  void whatWasExportedIsImportedAgain() {
    exportTo(inFolder(QStringLiteral("Kept")));
    importFile(inFolder(QStringLiteral("Kept.SkarnProfile")));
    VERIFY_CALLS(mTest->delegate.calls, {added(profiles().at(1).with(keys::ProfileName, "Work(2)")), switchedTo(4)});
  }

  void badFilesAreRefusedWithTheReason_data() {
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("mentions");
    const PropertyList good = profile("Good");
    QTest::newRow("empty") << QByteArray("") << "is empty";
    QTest::newRow("text") << QByteArray("not a property list") << "not a profile or macro";
    QTest::newRow("cut off") << binary(good).left(100) << "not a profile or macro";
    QTest::newRow("array") << binary(PropertyList::array({good})) << "not a profile or macro";
    QTest::newRow("no name") << binary(good.without(keys::ProfileName)) << "has no name";
    QTest::newRow("empty name") << binary(good.with(keys::ProfileName, "")) << "has no name";
    QTest::newRow("a number as the name") << binary(good.with(keys::ProfileName, 5)) << "has no name";
    QTest::newRow("no keys") << binary(good.without(keys::Keys)) << "Keys";
    QTest::newRow("no buttons") << binary(good.without(keys::Buttons)) << "Buttons";
    QTest::newRow("a macro") << binary(macro("Fire", {macroEvent(1, 9)})) << "has no name";
  }
  void badFilesAreRefusedWithTheReason() {
    QFETCH(QByteArray, bytes);
    QFETCH(QString, mentions);
    QVERIFY(writeTestFile(inFolder(QStringLiteral("bad.SkarnProfile")), bytes));
    importFile(inFolder(QStringLiteral("bad.SkarnProfile")));
    QVERIFY(mTest->alert());
    QVERIFY(mTest->alert()->informativeText().contains(mentions));
    verifyRefused(QStringLiteral("bad.SkarnProfile"));
  }

  void aCancelledImportSendsNothing() {
    mTest->choose(3);
    QCOMPARE(filePanel("mProfileOpenPanel")->windowModality(), Qt::WindowModal);
    QCOMPARE(filePanel("mProfileOpenPanel")->windowTitle(), QStringLiteral("Import Profile"));
    QCOMPARE(filePanel("mProfileOpenPanel")->nameFilters(),
             QStringList{QStringLiteral("Skarn profiles (*.SkarnProfile)")});
    QTest::keyClick(filePanel("mProfileOpenPanel"), Qt::Key_Escape);
    QTRY_VERIFY(!filePanel("mProfileOpenPanel"));
    VERIFY_CALLS(mTest->delegate.calls, {});
  }

  void anImportThatTheEngineRefusesIsToldAndLeavesNoRow_data() {
    QTest::addColumn<int>("status");
    QTest::addColumn<bool>("tellsTheList");
    QTest::addColumn<QString>("mentions");
    QTest::newRow("full") << 3 << true << "five profiles";
    QTest::newRow("not saved") << 4 << true << "disk";
    QTest::newRow("no mouse") << 8 << false << "refused";
    QTest::newRow("no answer") << -1 << false << "did not answer";
  }
  void anImportThatTheEngineRefusesIsToldAndLeavesNoRow() {
    QFETCH(int, status);
    QFETCH(bool, tellsTheList);
    QFETCH(QString, mentions);
    const QStringList before = mTest->names();
    QVERIFY(writeTestFile(inFolder(QStringLiteral("a.SkarnProfile")), binary(profile("A"))));
    if (status < 0) {
      mTest->delegate.doesAnswer = false;
    } else {
      mTest->delegate.statusOfAdd = static_cast<vorn::ReturnStatus>(status);
    }
    mTest->delegate.doesRefusalTellTheList = tellsTheList;
    importFile(inFolder(QStringLiteral("a.SkarnProfile")));
    VERIFY_CALLS(mTest->delegate.calls, {added(profile("A"))});
    mTest->delegate.calls.clear();
    QVERIFY(mTest->alert() && mTest->alert()->informativeText().contains(mentions));
    verifyRefused(QStringLiteral("a.SkarnProfile"));
    QCOMPARE(mTest->names(), before);
    QCOMPARE(mTest->selectedRow(), 1);
  }

  void anImportWithValuesThatCannotBeUsedIsToldBesideTheButtons() {
    QVERIFY(writeTestFile(inFolder(QStringLiteral("a.SkarnProfile")), binary(profile("A"))));
    mTest->delegate.statusOfAdd = vorn::ReturnStatus::PartlyRefused;
    importFile(inFolder(QStringLiteral("a.SkarnProfile")));
    QVERIFY(!mTest->alert());
    QCOMPARE(mTest->find<QLabel>("mProfileNotice")->text(),
             QStringLiteral("Imported. Values that cannot be used are as from the factory."));
    VERIFY_CALLS(mTest->delegate.calls, {added(profile("A")), switchedTo(4)});
  }

  void aListThatIsFullByNowTakesNoImport() {
    QVERIFY(writeTestFile(inFolder(QStringLiteral("a.SkarnProfile")), binary(profile("A"))));
    mTest->choose(3);
    mTest->delegate.list = mTest->delegate.list.appending(profile("Fifth"));
    mTest->delegate.reload();
    enter("mProfileOpenPanel", inFolder(QStringLiteral("a.SkarnProfile")));
    verifyRefused(QStringLiteral("a.SkarnProfile"));
  }

  void anUnknownPanelLeadsNowhere() {
    mTest->tab->loadPanelForIdentifier(7);
    QVERIFY(writeTestFile(inFolder(QStringLiteral("any.txt")), "x"));
    enter("mProfileOpenPanel", inFolder(QStringLiteral("any.txt")));
    VERIFY_CALLS(mTest->delegate.calls, {});
    QVERIFY(!mTest->alert());
  }

  void openingAPanelReplacesTheLastOne() {
    mTest->tab->loadPanelForIdentifier(1);
    mTest->tab->loadPanelForIdentifier(2);
    QVERIFY(!chooser());
    QCOMPARE(mTest->window.findChildren<QFileDialog*>().size(), 1);
    // The one that was replaced was not cancelled.
    VERIFY_CALLS(mTest->delegate.calls, {});
  }

  // --- Applications

  void anApplicationIsAssignedAndSwitchesAutomatically() {
    mHome->addEntry(QStringLiteral("org.example.Editor.desktop"), "Name=Great Editor\nExec=great-editor %F\n");
    mTest->delegate.list = profiles().replacing(
        1, profiles().at(1).with(keys::AppInfo, appInfo("Old", "old", "old", "OLD!").with("name", "kept")));
    mTest->delegate.reload();
    mTest->choose(7);
    QVERIFY(chooser());
    QCOMPARE(chooser()->windowModality(), Qt::WindowModal);
    chooseApplication(QStringLiteral("Great"));
    VERIFY_CALLS(
        mTest->delegate.calls,
        {updated(autoSwitch(1).with(
            keys::AppInfo,
            appInfo("Great Editor", "great-editor", "org.example.Editor.desktop", "????").with("name", "kept")))});
    QCOMPARE(mTest->rows().at(1), QStringLiteral("2 | Work | Great Editor | [x]"));
  }

  void aBundleIsRead_data() {
    QTest::addColumn<QByteArray>("information");
    QTest::addColumn<QStringList>("values");
    QTest::newRow("whole") << bundleInformation(
                                  "<key>CFBundleName</key><string>Game</string><key>CFBundleExecutable</key>"
                                  "<string>game-bin</string><key>CFBundleIdentifier</key><string>org.example.game"
                                  "</string><key>CFBundleSignature</key><string>GAME</string>")
                           << QStringList{"Game", "game-bin", "org.example.game", "GAME"};
    QTest::newRow("without a name") << bundleInformation(
                                           "<key>CFBundleExecutable</key><string>game-bin</string>"
                                           "<key>CFBundleIdentifier</key><string>org.example.game</string>")
                                    << QStringList{"game-bin", "game-bin", "org.example.game", ""};
    QTest::newRow("of wrong types") << bundleInformation(
                                           "<key>CFBundleName</key><integer>1</integer><key>CFBundleExecutable</key>"
                                           "<array/><key>CFBundleSignature</key><true/>")
                                    << QStringList{"", "", "", ""};
    QTest::newRow("unreadable") << QByteArray("garbage") << QStringList{"", "", "", ""};
    QTest::newRow("without information") << QByteArray() << QStringList{"", "", "", ""};
  }
  void aBundleIsRead() {
    QFETCH(QByteArray, information);
    QFETCH(QStringList, values);
    QVERIFY(QDir(mFolder->path()).mkpath(QStringLiteral("Game.app/Contents")));
    if (!information.isEmpty())
      QVERIFY(writeTestFile(inFolder(QStringLiteral("Game.app/Contents/Info.plist")), information));
    mTest->choose(7);
    browseFor(inFolder(QStringLiteral("Game.app")));
    VERIFY_CALLS(
        mTest->delegate.calls,
        {updated(autoSwitch(1).with(keys::AppInfo, appInfo(values[0].toStdString(), values[1].toStdString(),
                                                           values[2].toStdString(), values[3].toStdString())))});
  }

  void anApplicationThatIsGoneGivesEmptyValues() {
    mTest->tab->openPanelDidEnd(1, inFolder(QStringLiteral("gone.app")), 1);
    VERIFY_CALLS(mTest->delegate.calls, {updated(autoSwitch(1).with(keys::AppInfo, appInfo("", "", "", "")))});
  }

  void aCancelledChooserTurnsAutoSwitchOff() {
    mTest->choose(7);
    cancelChooser();
    VERIFY_CALLS(mTest->delegate.calls, {updated(autoSwitch(0))});
  }

  void reloadsAfterAnAssignmentSelectTheActiveRowAlone() {
    mTest->tab->openPanelDidEnd(1, inFolder(QStringLiteral("gone.app")), 1);
    for (const int active : {3, 0, 2}) {
      mTest->delegate.active = active;
      mTest->delegate.reload();
      QCOMPARE(mTest->selectedRow(), active);
    }
    mTest->click(1, 1);
    QCOMPARE(mTest->selectedRow(), 1);
    QCOMPARE(mTest->delegate.calls.size(), std::size_t{2});
    QVERIFY(mTest->delegate.calls.at(1) == switchedTo(1));
  }

  void anAssignmentBeforeTheFirstSelectionLeavesItToTheUser() {
    ProfilesTab test;
    test.tab->setMProfilesArray(profiles());
    test.tab->setMDeviceSettingsDict(deviceSettings());
    test.tab->refreshTableDisplay();
    test.delegate.doesAnswer = false;
    test.tab->openPanelDidEnd(1, inFolder(QStringLiteral("gone.app")), 1);
    test.appear();
    // The flag of a delete is still set: the first selection is not moved to the active row.
    test.click(3, 1);
    QCOMPARE(test.selectedRow(), 3);
    VERIFY_CALLS(test.delegate.calls, {updated(autoSwitch(1).with(keys::AppInfo, appInfo("", "", "", "")))});
  }

  void theApplicationIsRemoved() {
    mTest->delegate.list = profiles().replacing(
        1, profiles().at(1).with(keys::AppInfo, appInfo("Old", "old", "old.id", "OLD!").with("name", "kept")));
    mTest->delegate.reload();
    mTest->choose(8);
    VERIFY_CALLS(mTest->delegate.calls,
                 {updated(PropertyList::dictionary(
                     {{keys::AutoSwitchOn, false}, {keys::AppInfo, appInfo("", "", "", "").with("name", "kept")}}))});
    QCOMPARE(mTest->rows().at(1), QStringLiteral("2 | Work |  | [ ]"));
  }

  void tickingABoxWithoutAnApplicationOpensTheChooser() {
    mTest->click(3, 3);
    VERIFY_CALLS(mTest->delegate.calls, {switchedTo(3)});
    QVERIFY(chooser());
    QCOMPARE(mTest->rows().at(3), QStringLiteral("4 | Racing |  | [ ]"));
    cancelChooser();
    VERIFY_CALLS(mTest->delegate.calls, {switchedTo(3), updated(autoSwitch(0))});
    QCOMPARE(mTest->rows().at(3), QStringLiteral("4 | Racing |  | [ ]"));
  }

  void severalProfilesMayNameOneApplication() {
    const QString path = inFolder(QStringLiteral("Game.app"));
    QVERIFY(writeTestFile(path + QStringLiteral("/Contents/Info.plist"),
                          bundleInformation("<key>CFBundleName</key><string>Game</string>")));
    for (const int row : {0, 3}) {
      mTest->click(row, 3);
      browseFor(path);
      QCOMPARE(mTest->rows().at(row).section(QStringLiteral(" | "), 2), QStringLiteral("Game | [x]"));
    }
    const ProfileCall assigned = updated(autoSwitch(1).with(keys::AppInfo, appInfo("Game", "", "", "")));
    VERIFY_CALLS(mTest->delegate.calls, {switchedTo(0), assigned, switchedTo(3), assigned});
  }

  void theApplicationsIconIsShown() {
    QVERIFY(mHome->addThemeIcon(QStringLiteral("great"), Qt::red));
    const QString entry =
        mHome->addEntry(QStringLiteral("great.desktop"), "Name=Great Editor\nExec=great\nIcon=great\n");
    mTest->tab->openPanelDidEnd(1, entry, 1);
    const QAbstractItemModel& model = *mTest->table().model();
    QCOMPARE(model.index(1, 2).data().toString(), QStringLiteral("Great Editor"));
    QCOMPARE(colorOf(model.index(1, 2).data(Qt::DecorationRole).value<QIcon>()), QColor(Qt::red));
    QVERIFY(!model.index(0, 2).data(Qt::DecorationRole).isValid());
    const QImage seen = mTest->table().viewport()->grab(mTest->table().visualRect(model.index(1, 2))).toImage();
    QCOMPARE(seen.pixelColor(18, seen.height() / 2), QColor(Qt::red));
  }
};

SKARN_QTEST(MouseProfilesControllerFilesTest)
#include "MouseProfilesController_files_test.moc"
