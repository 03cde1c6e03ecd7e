// The application chooser: the real sheet with a desktop of the test's own, driven by events.
#include "platform/ApplicationPanel.h"

#include <QAbstractItemView>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <memory>

#include "platform/Localization.h"
#include "support/ApplicationsHome.h"
#include "support/QtTests.h"

using namespace skarn;
using namespace skarn::test;

class ApplicationPanelTest : public QObject {
  Q_OBJECT

 private:
  using Ends = std::vector<std::pair<int, QString>>;

  ApplicationPanel* panel() const { return mWindow->findChild<ApplicationPanel*>(QStringLiteral("applicationPanel")); }
  template <typename Widget>
  Widget* part(const char* name) const {
    return panel()->findChild<Widget*>(QLatin1String(name));
  }
  QLineEdit* search() const { return part<QLineEdit>("mApplicationSearch"); }
  QListView* list() const { return part<QListView>("mApplicationList"); }
  QPushButton* ok() const { return part<QPushButton>("mApplicationOK"); }
  QFileDialog* filePanel() const { return mWindow->findChild<QFileDialog*>(QStringLiteral("mOpenPanel")); }

  void open(const QStringList& types = {QStringLiteral("app")}) {
    ApplicationPanel::open(mWindow.get(), QStringLiteral("mOpenPanel"), types, mHome->inFolder(QString()),
                           mEnds.recorder());
    QVERIFY(QTest::qWaitForWindowActive(panel()));
  }
  QStringList shownNames() const {
    QStringList names;
    for (int row = 0; row < list()->model()->rowCount(); ++row) {
      names << list()->model()->index(row, 0).data().toString();
    }
    return names;
  }
  // Empty where no row is selected.
  QString selectedName() const {
    const QModelIndexList rows = list()->selectionModel()->selectedIndexes();
    return rows.isEmpty() ? QString() : rows.first().data().toString();
  }
  QPoint placeOf(int row) const { return list()->visualRect(list()->model()->index(row, 0)).center(); }
  void type(const QString& text) {
    search()->selectAll();
    QTest::keyClicks(search(), text);
  }
  void verifyEndsWith(int returnCode, const QString& path) {
    QTRY_VERIFY(!panel());
    QCOMPARE(mEnds.ends, (Ends{{returnCode, path}}));
  }

  std::unique_ptr<ApplicationsHome> mHome;
  std::unique_ptr<QWidget> mWindow;
  RecordedEnds mEnds;
  QString mEditor;
  QString mGame;
  QString mPlayer;

 public:
  static void initMain() { useOwnHome(); }

 private slots:
  void initTestCase() { QVERIFY(installTranslations(QStringLiteral("en"))); }
  void init() {
    mHome = std::make_unique<ApplicationsHome>();
    mEditor = mHome->addEntry(QStringLiteral("editor.desktop"), "Name=Editor\nExec=editor\n");
    mGame = mHome->addEntry(QStringLiteral("game.desktop"), "Name=Great Game & more\nExec=game\n");
    mPlayer = mHome->addEntry(QStringLiteral("player.desktop"), "Name=Player\nExec=player\n");
    mWindow = std::make_unique<QWidget>();
    mWindow->resize(800, 700);
    mWindow->show();
    mEnds.ends.clear();
  }
  void cleanup() {
    mWindow.reset();
    mHome.reset();
  }

  void itOpensAsASheetWithTheFocusInTheSearchField() {
    open();
    QCOMPARE(panel()->windowModality(), Qt::WindowModal);
    QVERIFY(search()->hasFocus());
    QCOMPARE(shownNames(),
             (QStringList{QStringLiteral("Editor"), QStringLiteral("Great Game & more"), QStringLiteral("Player")}));
    QCOMPARE(selectedName(), QString());
    QVERIFY(!ok()->isEnabled());
    QCOMPARE(ok()->toolTip(), localized("lkeyNoApplicationSelected"));
    QVERIFY(ok()->isDefault());
    QCOMPARE(mEnds.ends, Ends());
  }

  void aSelectedApplicationIsChosenByTheButton() {
    open();
    QTest::mouseClick(list()->viewport(), Qt::LeftButton, {}, placeOf(2));
    QCOMPARE(selectedName(), QStringLiteral("Player"));
    QVERIFY(ok()->isEnabled());
    QCOMPARE(ok()->toolTip(), QString());
    QTest::mouseClick(ok(), Qt::LeftButton);
    verifyEndsWith(FilePanel::okButton, mPlayer);
  }

  void aDoubleClickChooses() {
    open();
    QTest::mouseClick(list()->viewport(), Qt::LeftButton, {}, placeOf(0));
    QTest::mouseDClick(list()->viewport(), Qt::LeftButton, {}, placeOf(0));
    verifyEndsWith(FilePanel::okButton, mEditor);
  }

  void returnInTheListChoosesOnce() {
    open();
    QTest::keyClick(search(), Qt::Key_Tab);
    QVERIFY(list()->hasFocus());
    QCOMPARE(selectedName(), QString());
    QTest::keyClick(list(), Qt::Key_Down);
    QCOMPARE(selectedName(), QStringLiteral("Editor"));
    QTest::keyClick(list(), Qt::Key_Down);
    QCOMPARE(selectedName(), QStringLiteral("Great Game & more"));
    QTest::keyClick(list(), Qt::Key_Return);
    verifyEndsWith(FilePanel::okButton, mGame);
  }

  void theSelectionMovesFromTheSearchField() {
    open();
    for (const auto& [key, name] :
         std::initializer_list<std::pair<Qt::Key, const char*>>{{Qt::Key_Down, "Editor"},
                                                                {Qt::Key_Down, "Great Game & more"},
                                                                {Qt::Key_Up, "Editor"},
                                                                {Qt::Key_PageDown, "Player"},
                                                                {Qt::Key_PageUp, "Editor"}}) {
      QTest::keyClick(search(), key);
      QCOMPARE(selectedName(), QString::fromLatin1(name));
      QVERIFY(search()->hasFocus());
    }
    QTest::keyClick(search(), Qt::Key_Return);
    verifyEndsWith(FilePanel::okButton, mEditor);
  }

  void typingFiltersWithoutRegardToCaseAndSelectsTheFirstMatch() {
    open();
    type(QStringLiteral("AME"));
    QCOMPARE(shownNames(), QStringList{QStringLiteral("Great Game & more")});
    QCOMPARE(selectedName(), QStringLiteral("Great Game & more"));
    QTest::keyClick(search(), Qt::Key_Return);
    verifyEndsWith(FilePanel::okButton, mGame);
  }

  void aSelectionThatIsStillShownStays() {
    open();
    QTest::mouseClick(list()->viewport(), Qt::LeftButton, {}, placeOf(2));
    search()->setFocus();
    type(QStringLiteral("r"));
    QCOMPARE(shownNames().size(), 3);
    QCOMPARE(selectedName(), QStringLiteral("Player"));
    type(QStringLiteral("edit"));
    QCOMPARE(selectedName(), QStringLiteral("Editor"));
  }

  void theTextIsNoPattern() {
    open();
    type(QStringLiteral("E.*"));
    QCOMPARE(shownNames(), QStringList());
    type(QStringLiteral("&"));
    QCOMPARE(shownNames(), QStringList{QStringLiteral("Great Game & more")});
  }

  void anEmptyResultSaysSo() {
    open();
    auto* note = part<QLabel>("mApplicationNote");
    QVERIFY(!note->isVisible());
    type(QStringLiteral("<b>none"));
    QVERIFY(note->isVisible());
    QVERIFY(!list()->isVisible());
    QCOMPARE(note->text(), QStringLiteral("No application is called “<b>none”."));
    QCOMPARE(note->textFormat(), Qt::PlainText);
    QVERIFY(!ok()->isEnabled());
    QTest::keyClick(search(), Qt::Key_Return);
    QVERIFY(panel()->isVisible());
    QCOMPARE(mEnds.ends, Ends());
    search()->clear();
    QVERIFY(list()->isVisible());
    QCOMPARE(shownNames().size(), 3);
  }

  void aDesktopWithoutApplicationsSaysSo() {
    for (const QString& path : {mEditor, mGame, mPlayer}) QVERIFY(QFile::remove(path));
    open();
    QVERIFY(part<QLabel>("mApplicationNote")->isVisible());
    QCOMPARE(part<QLabel>("mApplicationNote")->text(), localized("lkeyNoApplications"));
    QTest::keyClick(search(), Qt::Key_Down);
    QVERIFY(!ok()->isEnabled());
  }

  void cancelGivesNoPath_data() {
    QTest::addColumn<int>("way");
    QTest::newRow("button") << 0;
    QTest::newRow("Escape") << 1;
    QTest::newRow("window closed") << 2;
  }
  void cancelGivesNoPath() {
    QFETCH(int, way);
    open();
    QTest::keyClick(search(), Qt::Key_Down);
    if (way == 0) QTest::mouseClick(part<QPushButton>("mApplicationCancel"), Qt::LeftButton);
    if (way == 1) QTest::keyClick(search(), Qt::Key_Escape);
    if (way == 2) panel()->close();
    verifyEndsWith(FilePanel::cancelButton, QString());
  }

  void browseFindsABundleAndEndsBothPanels() {
    const QString bundle = mHome->inFolder(QStringLiteral("Some.app"));
    QVERIFY(QDir().mkpath(bundle));
    open();
    QTest::mouseClick(part<QPushButton>("mApplicationBrowse"), Qt::LeftButton);
    QVERIFY(QTest::qWaitForWindowExposed(filePanel()));
    QCOMPARE(filePanel()->windowTitle(), QStringLiteral("Choose Application"));
    QCOMPARE(filePanel()->nameFilters(), QStringList{QStringLiteral("Applications (*.app *.desktop)")});
    QTest::keyClicks(filePanel()->findChild<QLineEdit*>(QStringLiteral("fileNameEdit")), bundle);
    QTest::keyClick(filePanel(), Qt::Key_Return);
    verifyEndsWith(FilePanel::okButton, bundle);
  }

  void browseKeepsOtherTypesAsTheyAre() {
    open({QStringLiteral("exe")});
    QTest::mouseClick(part<QPushButton>("mApplicationBrowse"), Qt::LeftButton);
    QCOMPARE(filePanel()->nameFilters(), QStringList{QStringLiteral("Applications (*.exe)")});
  }

  void cancellingBrowseReturnsToTheChooser() {
    open();
    QTest::keyClick(search(), Qt::Key_Down);
    QTest::mouseClick(part<QPushButton>("mApplicationBrowse"), Qt::LeftButton);
    QVERIFY(QTest::qWaitForWindowExposed(filePanel()));
    QTest::keyClick(filePanel(), Qt::Key_Escape);
    QTRY_VERIFY(!filePanel());
    QVERIFY(panel()->isVisible());
    QCOMPARE(selectedName(), QStringLiteral("Editor"));
    QCOMPARE(mEnds.ends, Ends());
    QTest::mouseClick(ok(), Qt::LeftButton);
    verifyEndsWith(FilePanel::okButton, mEditor);
  }

  void nothingIsToldWhenTheWindowGoesFirst() {
    open();
    mWindow.reset();
    QCOMPARE(mEnds.ends, Ends());
  }

  void everyPartCanBeReachedByTabAndHasAName() {
    open();
    QStringList reached;
    for (int step = 0; step < 5; ++step) {
      reached << QApplication::focusWidget()->objectName();
      QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
      if (step == 0) QTest::keyClick(list(), Qt::Key_Down);
    }
    QCOMPARE(reached, (QStringList{QStringLiteral("mApplicationSearch"), QStringLiteral("mApplicationList"),
                                   QStringLiteral("mApplicationBrowse"), QStringLiteral("mApplicationCancel"),
                                   QStringLiteral("mApplicationOK")}));
    QCOMPARE(search()->accessibleName(), localized("lkeySearchApplications"));
    QCOMPARE(list()->accessibleName(), localized("lkeyInstalledApplications"));
  }

  void rowsAreThirtySixPixelsHighAndShowAnIcon() {
    QVERIFY(mHome->addThemeIcon(QStringLiteral("pen"), Qt::red));
    mHome->addEntry(QStringLiteral("editor.desktop"), "Name=Editor\nExec=editor\nIcon=pen\n");
    open();
    QCOMPARE(list()->visualRect(list()->model()->index(0, 0)).height(), 36);
    QCOMPARE(colorOf(list()->model()->index(0, 0).data(Qt::DecorationRole).value<QIcon>()), QColor(Qt::red));
    QVERIFY(!list()->model()->index(1, 0).data(Qt::DecorationRole).value<QIcon>().isNull());
    const QImage picture = list()->viewport()->grab().toImage();
    const QRect row = list()->visualRect(list()->model()->index(0, 0));
    QCOMPARE(picture.pixelColor(row.left() + 8 + 12, row.center().y()), QColor(Qt::red));
  }

  void manyApplicationsAreListed() {
    for (int number = 0; number < 500; ++number) {
      mHome->addEntry(QStringLiteral("many%1.desktop").arg(number),
                      "Name=Many " + QByteArray::number(number) + "\nExec=a\nIcon=pen\n");
    }
    open();
    QCOMPARE(list()->model()->rowCount(), 503);
    type(QStringLiteral("many 499"));
    QTest::keyClick(search(), Qt::Key_Return);
    verifyEndsWith(FilePanel::okButton, mHome->inFolder(QStringLiteral("data/applications/many499.desktop")));
  }
};

SKARN_QTEST(ApplicationPanelTest)
#include "ApplicationPanel_test.moc"
