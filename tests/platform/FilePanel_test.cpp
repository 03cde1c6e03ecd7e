// Open and save panels: the real dialogs, found by name and driven by events, in a folder of the test's own.
#include "platform/FilePanel.h"

#include <QAbstractItemView>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QToolButton>
#include <memory>

#include "platform/Images.h"
#include "platform/Localization.h"
#include "support/PanelTest.h"
#include "support/QtTests.h"

using namespace skarn;
using namespace skarn::test;

namespace {

const QStringList macroTypes{QStringLiteral("SkarnMacro")};
const QStringList applicationTypes{QStringLiteral("app"), QStringLiteral("desktop")};

}  // namespace

class FilePanelTest : public QObject {
  Q_OBJECT

 private:
  using Ends = std::vector<std::pair<int, QString>>;

  QString inFolder(const QString& name) const { return mFolder->filePath(name); }
  QFileDialog* panel() const { return mWindow->findChild<QFileDialog*>(QStringLiteral("mPanel")); }
  QLineEdit* nameEdit() const { return panel()->findChild<QLineEdit*>(QStringLiteral("fileNameEdit")); }
  // The view of the folder that is shown.
  QAbstractItemView* list() const {
    for (const char* name : {"listView", "treeView"}) {
      auto* view = panel()->findChild<QAbstractItemView*>(QLatin1String(name));
      if (view->isVisible()) return view;
    }
    return nullptr;
  }
  QPushButton* button(QDialogButtonBox::StandardButton which) const {
    return panel()->findChild<QDialogButtonBox*>(QStringLiteral("buttonBox"))->button(which);
  }

  void open(const QStringList& types) { openIn(types, mFolder->path()); }
  void openIn(const QStringList& types, const QString& directory) {
    FilePanel::open(mWindow.get(), QStringLiteral("mPanel"), QStringLiteral("Import Macro"),
                    {types, QStringLiteral("Files of the test (%1)")}, directory, mEnds.recorder());
    QVERIFY(QTest::qWaitForWindowExposed(panel()));
  }
  void save(const QString& suggestedName) {
    FilePanel::save(mWindow.get(), QStringLiteral("mPanel"), QStringLiteral("Export Macro"), suggestedName,
                    mFolder->path(), mEnds.recorder());
    QVERIFY(QTest::qWaitForWindowExposed(panel()));
  }
  void typeName(const QString& text) {
    nameEdit()->selectAll();
    QTest::keyClicks(nameEdit(), text);
  }
  void enter(const QString& text) {
    typeName(text);
    QTest::keyClick(nameEdit(), Qt::Key_Return);
  }
  // The row of a name, once the panel has read its folder.
  QModelIndex row(const QString& name) const {
    const QModelIndex root = list()->rootIndex();
    for (int index = 0; index < list()->model()->rowCount(root); ++index) {
      const QModelIndex found = list()->model()->index(index, 0, root);
      if (found.data().toString() == name) return found;
    }
    return {};
  }
  QPoint place(const QString& name) const { return list()->visualRect(row(name)).center(); }
  bool isShown(const QString& name) const {
    return row(name).isValid() && list()->indexAt(place(name)) == row(name) &&
           list()->viewport()->rect().contains(place(name));
  }
  void verifyStaysOpenWith(const QStringList& texts) {
    QCOMPARE(alertTexts(*panel()), texts);
    QTest::keyClick(alertOf(*panel()), Qt::Key_Return);
    QTRY_VERIFY(!alertOf(*panel()));
    QVERIFY(panel()->isVisible());
    QCOMPARE(mEnds.ends, Ends());
  }
  void verifyEndsWith(int returnCode, const QString& path) {
    QTRY_VERIFY(!panel());
    QCOMPARE(mEnds.ends, (Ends{{returnCode, path}}));
  }

  std::unique_ptr<QTemporaryDir> mFolder;
  std::unique_ptr<QWidget> mWindow;
  RecordedEnds mEnds;

 public:
  static void initMain() { useOwnHome(); }

 private slots:

  void initTestCase() { QVERIFY(installTranslations(QStringLiteral("en"))); }

  void init() {
    mFolder = std::make_unique<QTemporaryDir>();
    mWindow = std::make_unique<QWidget>();
    mWindow->resize(800, 600);
    mWindow->show();
    mEnds.ends.clear();
    QVERIFY(writeTestFile(inFolder(QStringLiteral("Fire.SkarnMacro")), "x"));
    QVERIFY(writeTestFile(inFolder(QStringLiteral("notes.txt")), "x"));
    QVERIFY(writeTestFile(inFolder(QStringLiteral("Game.app/Contents/Info.plist")), "x"));
    QVERIFY(writeTestFile(inFolder(QStringLiteral("editor.desktop")), "x"));
    QVERIFY(QDir(mFolder->path()).mkdir(QStringLiteral("deeper")));
  }
  void cleanup() {
    mWindow.reset();
    mFolder.reset();
  }

  void aPanelIsAWindowModalSheetOfTheToolkitsOwn() {
    open(macroTypes);
    QCOMPARE(panel()->windowModality(), Qt::WindowModal);
    QVERIFY(panel()->testOption(QFileDialog::DontUseNativeDialog));
    QCOMPARE(panel()->windowTitle(), QStringLiteral("Import Macro"));
    QCOMPARE(panel()->acceptMode(), QFileDialog::AcceptOpen);
    QCOMPARE(panel()->nameFilters(), QStringList{QStringLiteral("Files of the test (*.SkarnMacro)")});
    QCOMPARE(QDir(panel()->directory()).canonicalPath(), QDir(mFolder->path()).canonicalPath());
    QCOMPARE(mEnds.ends, Ends());
  }

  void aPanelHasTheApplicationsOwnPictures() {
    open(macroTypes);
    const std::pair<const char*, const char*> tools[] = {
        {"backButton", "panelBack.png"},       {"forwardButton", "panelForward.png"},
        {"toParentButton", "panelParent.png"}, {"newFolderButton", "panelNewFolder.png"},
        {"listModeButton", "panelList.png"},   {"detailModeButton", "panelDetails.png"}};
    const QColor color = panel()->palette().color(QPalette::ButtonText);
    for (const auto& [name, picture] : tools) {
      const auto* tool = panel()->findChild<QToolButton*>(QLatin1String(name));
      QVERIFY2(tool, name);
      const QImage expected = tintedIcon(QLatin1String(picture), color).pixmap(16, 16).toImage();
      QVERIFY2(!expected.isNull(), picture);
      QCOMPARE(tool->icon().pixmap(16, 16).toImage(), expected);
      QVERIFY(!tool->accessibleName().isEmpty());
    }
    for (auto which : {QDialogButtonBox::Open, QDialogButtonBox::Cancel}) QVERIFY(button(which)->icon().isNull());
  }

  void theDisabledButtonSaysWhy() {
    open(macroTypes);
    QVERIFY(!button(QDialogButtonBox::Open)->isEnabled());
    QCOMPARE(button(QDialogButtonBox::Open)->toolTip(), localized("lkeyNoFileNamed"));
    typeName(QStringLiteral("Fire.SkarnMacro"));
    QVERIFY(button(QDialogButtonBox::Open)->isEnabled());
    QCOMPARE(button(QDialogButtonBox::Open)->toolTip(), QString());
    QCOMPARE(button(QDialogButtonBox::Cancel)->toolTip(), QString());
  }

  void withoutTypesAllFilesAreShown() {
    open({});
    QCOMPARE(panel()->nameFilters(), QStringList{QStringLiteral("All files (*)")});
    enter(QStringLiteral("notes.txt"));
    verifyEndsWith(FilePanel::okButton, inFolder(QStringLiteral("notes.txt")));
  }

  void onlyAnOpenPanelSaysWhichFilesItLists_data() {
    QTest::addColumn<bool>("isSave");
    QTest::newRow("open") << false;
    QTest::newRow("save") << true;
  }
  void onlyAnOpenPanelSaysWhichFilesItLists() {
    QFETCH(bool, isSave);
    if (isSave) {
      save(QStringLiteral("Work"));
    } else {
      open(macroTypes);
    }
    for (const char* name : {"fileTypeLabel", "fileTypeCombo"}) {
      const auto* part = panel()->findChild<QWidget*>(QLatin1String(name));
      QVERIFY2(part, name);
      QCOMPARE(part->isVisible(), !isSave);
    }
  }

  void aTypedNameIsChosen() {
    open(macroTypes);
    enter(QStringLiteral("Fire.SkarnMacro"));
    verifyEndsWith(FilePanel::okButton, inFolder(QStringLiteral("Fire.SkarnMacro")));
  }

  void aTypedPathIsChosenFromAnywhere() {
    open(macroTypes);
    panel()->setDirectory(QDir::rootPath());
    enter(inFolder(QStringLiteral("deeper/../Fire.SkarnMacro")));
    verifyEndsWith(FilePanel::okButton, inFolder(QStringLiteral("Fire.SkarnMacro")));
  }

  void aDoubleClickedFileIsChosen() {
    open(macroTypes);
    QTRY_VERIFY(isShown(QStringLiteral("Fire.SkarnMacro")));
    // Settled when the other types are gone.
    QTRY_VERIFY(!row(QStringLiteral("notes.txt")).isValid());
    const QPoint point = place(QStringLiteral("Fire.SkarnMacro"));
    QTest::mouseClick(list()->viewport(), Qt::LeftButton, {}, point);
    QCOMPARE(nameEdit()->text(), QStringLiteral("Fire.SkarnMacro"));
    QTest::mouseDClick(list()->viewport(), Qt::LeftButton, {}, point);
    verifyEndsWith(FilePanel::okButton, inFolder(QStringLiteral("Fire.SkarnMacro")));
  }

  void aDoubleClickedApplicationFolderIsChosenAsOneFile() {
    open(applicationTypes);
    QTRY_VERIFY(isShown(QStringLiteral("Game.app")));
    const QPoint point = place(QStringLiteral("Game.app"));
    QTest::mouseClick(list()->viewport(), Qt::LeftButton, {}, point);
    QTest::mouseDClick(list()->viewport(), Qt::LeftButton, {}, point);
    verifyEndsWith(FilePanel::okButton, inFolder(QStringLiteral("Game.app")));
  }

  void aSelectedApplicationFolderIsNamedAndOpened() {
    open(applicationTypes);
    QTRY_VERIFY(isShown(QStringLiteral("Game.app")));
    QTest::mouseClick(list()->viewport(), Qt::LeftButton, {}, place(QStringLiteral("Game.app")));
    QCOMPARE(nameEdit()->text(), QStringLiteral("Game.app"));
    QTest::mouseClick(button(QDialogButtonBox::Open), Qt::LeftButton);
    verifyEndsWith(FilePanel::okButton, inFolder(QStringLiteral("Game.app")));
  }

  void aSelectedFolderIsEnteredByTheButton_data() {
    QTest::addColumn<bool>("isSave");
    QTest::newRow("open") << false;
    QTest::newRow("save") << true;
  }
  void aSelectedFolderIsEnteredByTheButton() {
    QFETCH(bool, isSave);
    if (isSave) {
      save(QString());
    } else {
      open(macroTypes);
    }
    QTRY_VERIFY(isShown(QStringLiteral("deeper")));
    QTest::mouseClick(list()->viewport(), Qt::LeftButton, {}, place(QStringLiteral("deeper")));
    QAbstractButton* enter = button(isSave ? QDialogButtonBox::Save : QDialogButtonBox::Open);
    QVERIFY(enter->isEnabled());
    QCOMPARE(enter->toolTip(), QString());
    QTest::mouseClick(enter, Qt::LeftButton);
    QCOMPARE(panel()->directory().dirName(), QStringLiteral("deeper"));
    QCOMPARE(mEnds.ends, Ends());
  }

  void anApplicationFolderIsChosenByKeys() {
    open(applicationTypes);
    QTRY_VERIFY(isShown(QStringLiteral("Game.app")));
    list()->setFocus();
    list()->setCurrentIndex(row(QStringLiteral("Game.app")));
    QTest::keyClick(list(), Qt::Key_Return);
    verifyEndsWith(FilePanel::okButton, inFolder(QStringLiteral("Game.app")));
  }

  void aDesktopEntryIsChosenAsAFile() {
    open(applicationTypes);
    enter(QStringLiteral("editor.desktop"));
    verifyEndsWith(FilePanel::okButton, inFolder(QStringLiteral("editor.desktop")));
  }

  void anotherFolderIsEntered_data() {
    QTest::addColumn<QString>("typed");
    QTest::newRow("by name") << QStringLiteral("deeper");
    QTest::newRow("by path") << QStringLiteral("%1/deeper/");
  }
  void anotherFolderIsEntered() {
    QFETCH(QString, typed);
    open(applicationTypes);
    enter(typed.startsWith(QLatin1Char('%')) ? typed.arg(mFolder->path()) : typed);
    QCOMPARE(panel()->directory().dirName(), QStringLiteral("deeper"));
    QCOMPARE(nameEdit()->text(), QString());
    QCOMPARE(mEnds.ends, Ends());
  }

  void anApplicationFolderIsAnOrdinaryFolderForOtherTypes() {
    open(macroTypes);
    enter(QStringLiteral("Game.app"));
    QCOMPARE(panel()->directory().dirName(), QStringLiteral("Game.app"));
    QCOMPARE(mEnds.ends, Ends());
  }

  void aMissingFileIsToldAndThePanelStaysOpen() {
    open(macroTypes);
    enter(QStringLiteral("Ice.SkarnMacro"));
    verifyStaysOpenWith({QStringLiteral("“Ice.SkarnMacro” was not found"), localized("lkeyFileNotFoundDesc")});
    enter(QStringLiteral("Fire.SkarnMacro"));
    verifyEndsWith(FilePanel::okButton, inFolder(QStringLiteral("Fire.SkarnMacro")));
  }

  void aLongNameIsToldWithoutItsMiddle() {
    open(macroTypes);
    nameEdit()->setText(QString(200, QLatin1Char('n')));
    QTest::keyClick(nameEdit(), Qt::Key_Return);
    const QString half(30, QLatin1Char('n'));
    verifyStaysOpenWith({QStringLiteral("“%1…%1” was not found").arg(half), localized("lkeyFileNotFoundDesc")});
  }

  void aPathMayBeginAtHome() {
    const QString path = QDir::homePath() + QStringLiteral("/Home.SkarnMacro");
    QVERIFY(writeTestFile(path, "x"));
    open(macroTypes);
    enter(QStringLiteral("~/Home.SkarnMacro"));
    verifyEndsWith(FilePanel::okButton, path);
  }

  void nothingIsDeletedInAPanel_data() {
    QTest::addColumn<bool>("isSave");
    QTest::newRow("open") << false;
    QTest::newRow("save") << true;
  }
  void nothingIsDeletedInAPanel() {
    QFETCH(bool, isSave);
    if (isSave) {
      save(QStringLiteral("Work"));
    } else {
      open(macroTypes);
    }
    QTRY_VERIFY(isShown(QStringLiteral("Fire.SkarnMacro")));
    list()->setFocus();
    list()->setCurrentIndex(row(QStringLiteral("Fire.SkarnMacro")));
    QTest::keyClick(list(), Qt::Key_Delete);
    QVERIFY(panel()->findChildren<QMessageBox*>().isEmpty());
    QVERIFY(QFile::exists(inFolder(QStringLiteral("Fire.SkarnMacro"))));
    QVERIFY(!panel()->findChild<QAction*>(QStringLiteral("qt_delete_action"))->isVisible());
    QCOMPARE(panel()->findChild<QToolButton*>(QStringLiteral("newFolderButton"))->isVisible(), isSave);
    QCOMPARE(panel()->testOption(QFileDialog::ReadOnly), !isSave);
  }

  void aFileOfAnotherTypeIsRefused() {
    open(macroTypes);
    enter(QStringLiteral("notes.txt"));
    verifyStaysOpenWith({QStringLiteral("“notes.txt” cannot be chosen here"), localized("lkeyFileTypeDesc")});
  }

  void returnWithoutANameDoesNothing() {
    open(macroTypes);
    nameEdit()->clear();
    QTest::keyClick(nameEdit(), Qt::Key_Return);
    QVERIFY(panel()->isVisible());
    QVERIFY(!alertOf(*panel()));
    QCOMPARE(mEnds.ends, Ends());
  }

  void cancelGivesNoPath_data() {
    QTest::addColumn<bool>("isSave");
    QTest::addColumn<int>("way");
    for (const bool isSave : {false, true}) {
      const QByteArray panelName = isSave ? "save, " : "open, ";
      QTest::newRow(panelName + "button") << isSave << 0;
      QTest::newRow(panelName + "Escape") << isSave << 1;
      QTest::newRow(panelName + "window closed") << isSave << 2;
    }
  }
  void cancelGivesNoPath() {
    QFETCH(bool, isSave);
    QFETCH(int, way);
    if (isSave) {
      save(QStringLiteral("Work"));
    } else {
      open(macroTypes);
      typeName(QStringLiteral("Fire.SkarnMacro"));
    }
    if (way == 0) QTest::mouseClick(button(QDialogButtonBox::Cancel), Qt::LeftButton);
    if (way == 1) QTest::keyClick(panel(), Qt::Key_Escape);
    if (way == 2) panel()->close();
    verifyEndsWith(FilePanel::cancelButton, QString());
  }

  void nothingIsToldWhenTheWindowGoesFirst() {
    open(macroTypes);
    mWindow.reset();
    QCOMPARE(mEnds.ends, Ends());
  }

  void theSavePanelSuggestsTheName() {
    save(QStringLiteral("Work"));
    QCOMPARE(panel()->windowTitle(), QStringLiteral("Export Macro"));
    QCOMPARE(panel()->acceptMode(), QFileDialog::AcceptSave);
    QVERIFY(panel()->testOption(QFileDialog::DontConfirmOverwrite));
    QCOMPARE(nameEdit()->text(), QStringLiteral("Work"));
    QTest::mouseClick(button(QDialogButtonBox::Save), Qt::LeftButton);
    verifyEndsWith(FilePanel::okButton, inFolder(QStringLiteral("Work")));
    QVERIFY(!QFile::exists(inFolder(QStringLiteral("Work"))));
  }

  void aSuggestedNameStaysAName_data() {
    QTest::addColumn<QString>("suggested");
    QTest::addColumn<QString>("shown");
    QTest::newRow("slash") << QStringLiteral("a/b") << QStringLiteral("a-b");
    QTest::newRow("path") << QStringLiteral("/etc/passwd") << QStringLiteral("-etc-passwd");
    QTest::newRow("line break") << QStringLiteral("a\nb") << QStringLiteral("a-b");
    QTest::newRow("quotes") << QStringLiteral("My \"best\"") << QStringLiteral("My \"best\"");
    QTest::newRow("other script") << QStringLiteral("Übung 日本") << QStringLiteral("Übung 日本");
  }
  void aSuggestedNameStaysAName() {
    QFETCH(QString, suggested);
    QFETCH(QString, shown);
    save(suggested);
    QCOMPARE(nameEdit()->text(), shown);
    QTest::keyClick(nameEdit(), Qt::Key_Return);
    verifyEndsWith(FilePanel::okButton, inFolder(shown));
  }

  void nobodyIsAskedAboutAnExistingFile() {
    save(QStringLiteral("notes.txt"));
    QTest::keyClick(nameEdit(), Qt::Key_Return);
    verifyEndsWith(FilePanel::okButton, inFolder(QStringLiteral("notes.txt")));
  }

  void savingIntoAMissingFolderIsRefused() {
    save(QStringLiteral("Work"));
    enter(inFolder(QStringLiteral("none/Work")));
    verifyStaysOpenWith({QStringLiteral("There is no folder “%1”").arg(inFolder(QStringLiteral("none"))),
                         localized("lkeyFolderNotFoundDesc")});
  }

  void aFolderIsEnteredWhenSaving() {
    save(QStringLiteral("Work"));
    enter(QStringLiteral("Game.app"));
    QCOMPARE(panel()->directory().dirName(), QStringLiteral("Game.app"));
    QCOMPARE(mEnds.ends, Ends());
  }

  void aPanelBeginsWhereItIsTold_data() {
    QTest::addColumn<QString>("before");
    QTest::newRow("path") << QString();
    QTest::newRow("file URL") << QStringLiteral("file://");
    QTest::newRow("file URL of this computer") << QStringLiteral("file://localhost");
  }
  void aPanelBeginsWhereItIsTold() {
    QFETCH(QString, before);
    openIn(macroTypes, before + mFolder->path() + QStringLiteral("/deeper/"));
    QCOMPARE(QFileInfo(panel()->directory().path()), QFileInfo(inFolder(QStringLiteral("deeper"))));
  }

  void aPanelBeginsInTheDocumentsWhereThereIsNoSuchFolder_data() {
    QTest::addColumn<QString>("directory");
    QTest::newRow("file URL") << QStringLiteral("file://localhost/No/Such/Folder/");
    QTest::newRow("path") << QStringLiteral("/No/Such/Folder/");
    QTest::newRow("another computer") << QStringLiteral("file://elsewhere.invalid/Documents/");
    QTest::newRow("none") << QString();
  }
  void aPanelBeginsInTheDocumentsWhereThereIsNoSuchFolder() {
    QFETCH(QString, directory);
    const QString documents = QDir::homePath() + QStringLiteral("/Documents");
    QVERIFY(QDir().mkpath(documents));
    openIn(macroTypes, directory);
    QCOMPARE(QFileInfo(panel()->directory().path()), QFileInfo(documents));
  }

  void aPanelBeginsAtHomeWhereThereAreNoDocuments() {
    QDir(QDir::homePath() + QStringLiteral("/Documents")).removeRecursively();
    openIn(macroTypes, QStringLiteral("file://localhost/No/Such/Folder/"));
    QCOMPARE(QFileInfo(panel()->directory().path()), QFileInfo(QDir::homePath()));
  }
};

SKARN_QTEST(FilePanelTest)
#include "FilePanel_test.moc"
