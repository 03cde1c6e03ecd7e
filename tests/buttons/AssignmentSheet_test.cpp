// All sheets of the Buttons tab keep the same promises: Return does what OK says, Escape is Cancel and changes nothing,
// and an OK that would change nothing says why.
#include "buttons/AssignmentSheet.h"

#include <QContextMenuEvent>
#include <QLineEdit>

#include "buttons/ButtonsFixture.h"
#include "support/QtTests.h"
#include "widgets/PullDownButton.h"

using namespace skarn;
using namespace skarn::test;

namespace {

// The tab whose control 4 plays a macro and whose control 5 goes to a keymap.
struct SheetsFixture : ButtonsFixture {
  SheetsFixture() {
    give(control(5), assignment(50, 3, 1));
    give(control(4), assignment(10, 2, 5));
    delegate.calls.clear();
  }
  void chooseByTag(const QMenu& menu, int tag) {
    for (QAction* item : menu.actions()) {
      if (!item->isSeparator() && tagOf(*item) == tag) item->trigger();
    }
  }
};

struct Sheet {
  const char* window;
  const char* ok;
  void (*open)(SheetsFixture&);
  void (*change)(SheetsFixture&);  // makes it something that OK changes
};

const Sheet sheets[] = {
    {"mSingleKey", "mSingleKeyOK",
     [](SheetsFixture& on) { on.choose(SheetsFixture::control(4), AssignmentCategory::SingleKey); },
     [](SheetsFixture& on) {
       on.tab.singleKeyEvents({"", "", PropertyList::dictionary({{"singleKey", 5}, {"singleKeyModif", 2}})});
     }},
    {"mKeymapWindow", "mKeymapOK", [](SheetsFixture& on) { on.openKeymapSheet(SheetsFixture::control(5)); },
     [](SheetsFixture& on) { QTest::keyClick(on.find<QComboBox>("mKeymapValuePopUp"), Qt::Key_End); }},
    {"mMacroRepeatWindow", "mMacroRepeatOK",
     [](SheetsFixture& on) { QTest::mouseClick(on.row(SheetsFixture::control(4)).repeatButton(), Qt::LeftButton); },
     [](SheetsFixture& on) { QTest::keyClick(on.find<QComboBox>("mMacroPlaybackPopUp"), Qt::Key_End); }},
    {"mSwapWindow", "mSwapOK",
     [](SheetsFixture& on) {
       // Both do the same.
       on.give(SheetsFixture::control(1), assignment(10, 2, 5));
       QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(), QPoint());
       QApplication::sendEvent(&on.row(SheetsFixture::control(4)), &event);
       auto* menu = on.tab.findChild<QMenu*>(QStringLiteral("mControlMenu"));
       on.chooseByTag(*menu, 4);
       menu->close();
       QTest::keyClick(on.find<QComboBox>("mSwapPopUp"), Qt::Key_Home);
     },
     [](SheetsFixture& on) { QTest::keyClick(on.find<QComboBox>("mSwapPopUp"), Qt::Key_Down); }},
    {"mKeymapNameWindow", "mKeymapNameOK",
     [](SheetsFixture& on) {
       auto* button = on.find<PullDownButton>("mKeymapMenuButton");
       button->openMenu();
       on.chooseByTag(*button->menu(), 1);
       button->menu()->close();
     },
     [](SheetsFixture& on) { QTest::keyClicks(on.find<QLineEdit>("mKeymapNameField"), QStringLiteral("Build")); }}};

// What changes an assignment or a keymap, and not what begins or ends a capture.
int writes(const SheetsFixture& fixture) {
  return static_cast<int>(std::ranges::count_if(fixture.delegate.calls, [](const PropertyList& call) {
    return call.at(0).toString() == "updateButtonAssignmentWithSettings";
  }));
}

}  // namespace

class AssignmentSheetTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() { QVERIFY(installTranslations(QStringLiteral("en"))); }

  void an_ok_that_would_change_nothing_says_why_data() { addSheets(); }
  void an_ok_that_would_change_nothing_says_why() {
    QFETCH(int, index);
    SheetsFixture fixture;
    const Sheet& sheet = sheets[index];
    sheet.open(fixture);
    QVERIFY(fixture.isOpen(sheet.window));
    const auto* ok = fixture.find<QPushButton>(sheet.ok);
    QVERIFY(!ok->toolTip().isEmpty());
    sheet.change(fixture);
    QVERIFY(ok->isEnabled());
    QCOMPARE(ok->toolTip(), QString());
  }

  void return_does_what_ok_says_data() { addSheets(); }
  void return_does_what_ok_says() {
    QFETCH(int, index);
    SheetsFixture fixture;
    const Sheet& sheet = sheets[index];
    sheet.open(fixture);
    sheet.change(fixture);
    QVERIFY(fixture.find<QPushButton>(sheet.ok)->isDefault());
    auto* dialog = fixture.find<QDialog>(sheet.window);
    QTest::keyClick(dialog, Qt::Key_Return);
    QVERIFY(!fixture.isOpen(sheet.window));
    QCOMPARE(writes(fixture), 1);
  }

  void escape_closes_and_changes_nothing_data() { addSheets(); }
  void escape_closes_and_changes_nothing() {
    QFETCH(int, index);
    SheetsFixture fixture;
    const Sheet& sheet = sheets[index];
    sheet.open(fixture);
    sheet.change(fixture);
    QTest::keyClick(fixture.find<QDialog>(sheet.window), Qt::Key_Escape);
    QVERIFY(!fixture.isOpen(sheet.window));
    QCOMPARE(writes(fixture), 0);
  }

 private:
  static void addSheets() {
    QTest::addColumn<int>("index");
    for (int index = 0; index < static_cast<int>(std::size(sheets)); ++index)
      QTest::newRow(sheets[index].window) << index;
  }
};

SKARN_QTEST(AssignmentSheetTest)
#include "AssignmentSheet_test.moc"
