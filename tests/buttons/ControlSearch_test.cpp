// The field that finds controls by what they do or are called.
#include "buttons/ControlSearch.h"

#include <QAccessible>
#include <QLineEdit>
#include <QShortcut>
#include <map>

#include "buttons/ButtonsFixture.h"
#include "buttons/MouseView.h"
#include "support/ColorContrast.h"
#include "support/QtTests.h"
#include "widgets/Palettes.h"
#include "widgets/SkarnStyle.h"

using namespace skarn;
using namespace skarn::test;

namespace {

using SearchResult = ControlRow::SearchResult;

struct SearchFixture : ButtonsFixture {
  SearchFixture() {
    tab.resize(1180, 560);
    give(control(2), assignment(10, 0, 254));
    give(control(4), assignment(16, 6, 3));
    give(control(20), assignment(46, 0).with(keys::Param1, "/usr/share/Copy Machine.desktop"));
    delegate.calls.clear();
  }
  QLineEdit& field() { return *find<QLineEdit>("mControlSearch"); }
  QString count() { return find<QLabel>("mControlsFound")->text(); }
  QLabel* nameOf(int number) { return find<QLabel>((std::string(control(number).fieldName) + "Label").c_str()); }
  MouseView& picture() { return *find<MouseView>("mMainSkarn"); }
  QList<int> with(SearchResult result) {
    QList<int> numbers;
    for (const ControlDescriptor& control : controlTable) {
      if (row(control).searchResult() == result) numbers << control.number;
    }
    return numbers;
  }
  // The colours of the picture in the middle of each control.
  QList<QRgb> places() {
    const QImage image = picture().grab().toImage();
    QList<QRgb> colors;
    for (const ControlDescriptor& control : controlTable) {
      const QPointF place = picture().placeOf(control) * image.devicePixelRatio() + QPointF(0, 8);
      colors << image.pixel(place.toPoint());
    }
    return colors;
  }
};

// Of the text in a part of a picture: between the colour that most of it has and the one that differs most from it.
double textContrast(const QImage& image, const QRect& part) {
  const qreal ratio = image.devicePixelRatio();
  std::map<QRgb, int> colors;
  for (int y = part.top(); y <= part.bottom(); ++y) {
    for (int x = part.left(); x <= part.right(); ++x) ++colors[image.pixel(QPointF(x * ratio, y * ratio).toPoint())];
  }
  const auto ground = std::ranges::max_element(colors, {}, &std::pair<const QRgb, int>::second);
  double most = 1;
  for (const auto& [color, count] : colors)
    most = std::max(most, contrast(QColor::fromRgb(color), QColor::fromRgb(ground->first)));
  return most;
}

}  // namespace

class ControlSearchTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() {
    QVERIFY(installTranslations(QStringLiteral("en")));
    QApplication::setStyle(new SkarnStyle);
  }

  void a_text_holds_what_is_looked_for_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("wanted");
    QTest::addColumn<bool>("holds");
    QTest::newRow("beginning") << "Macro : Copy and Paste"
                               << "copy" << true;
    QTest::newRow("within a word") << "Macro : Copy and Paste"
                                   << "aste" << true;
    QTest::newRow("all words, in any order") << "Macro : Copy and Paste"
                                             << " paste  macro " << true;
    QTest::newRow("one of two words") << "Macro : Copy and Paste"
                                      << "copy cut" << false;
    QTest::newRow("a letter of a word") << "Macro : Copy and Paste"
                                        << "y" << false;
    QTest::newRow("a letter alone") << "Single Key : Ctrl+C"
                                    << "c" << true;
    QTest::newRow("figures of a number") << "Button 14, C key"
                                         << "4" << false;
    QTest::newRow("a number alone") << "Button 14, C key"
                                    << "14" << true;
    QTest::newRow("a sign") << "Single Key : ="
                            << "=" << true;
    QTest::newRow("nothing") << "Disable"
                             << " " << true;
  }
  void a_text_holds_what_is_looked_for() {
    QFETCH(QString, text);
    QFETCH(QString, wanted);
    QFETCH(bool, holds);
    QCOMPARE(holdsAll(text, wanted), holds);
  }

  void controls_are_found_by_what_they_do_or_are_called_data() {
    QTest::addColumn<QString>("wanted");
    QTest::addColumn<QList<int>>("found");
    QTest::newRow("macro") << "fire" << QList<int>{2};
    QTest::newRow("repeat mode") << "pressed again" << QList<int>{2};
    QTest::newRow("short chord") << "ctrl+shift+c" << QList<int>{4};
    QTest::newRow("long chord") << "left ctrl" << QList<int>{4};
    QTest::newRow("program") << "copy" << QList<int>{20};
    QTest::newRow("number") << "17" << QList<int>{17};
    QTest::newRow("name") << "wheel" << QList<int>{17, 18, 19};
    QTest::newRow("category") << "mouse button" << QList<int>{17, 18, 19};
  }
  void controls_are_found_by_what_they_do_or_are_called() {
    QFETCH(QString, wanted);
    QFETCH(QList<int>, found);
    SearchFixture fixture;
    QTest::keyClicks(&fixture.field(), wanted);
    QCOMPARE(fixture.with(SearchResult::Found), found);
    QCOMPARE(fixture.with(SearchResult::Passed).size(), 27 - found.size());
    QCOMPARE(fixture.count(), QStringLiteral("%1 found").arg(found.size()));
    COMPARE_CALLS(fixture.delegate.calls);
  }

  void controls_are_found_by_what_their_chords_mean_data() {
    QTest::addColumn<int>("usage");
    QTest::addColumn<int>("modifiers");
    QTest::addColumn<QString>("wanted");
    QTest::addColumn<bool>("isFound");
    QTest::newRow("copy") << 6 << 1 << "copy" << true;
    QTest::newRow("copy with the right Ctrl") << 6 << 16 << "Copy" << true;
    QTest::newRow("copy as in old programs") << 73 << 1 << "copy" << true;
    QTest::newRow("no chord") << 6 << 0 << "copy" << false;
    QTest::newRow("another chord") << 6 << 5 << "copy" << false;
    QTest::newRow("paste") << 25 << 1 << "paste" << true;
    QTest::newRow("cut") << 27 << 1 << "cut" << true;
    QTest::newRow("undo") << 29 << 1 << "undo" << true;
    QTest::newRow("redo") << 28 << 1 << "redo" << true;
    QTest::newRow("redo with Shift") << 29 << 3 << "redo" << true;
    QTest::newRow("save") << 22 << 1 << "save" << true;
    QTest::newRow("save as") << 22 << 3 << "save as" << true;
    QTest::newRow("select all") << 4 << 1 << "select all" << true;
    QTest::newRow("find") << 9 << 1 << "search" << true;
    QTest::newRow("print") << 19 << 1 << "print" << true;
    QTest::newRow("new") << 17 << 1 << "new" << true;
    QTest::newRow("open") << 18 << 1 << "open" << true;
    QTest::newRow("close") << 26 << 1 << "close" << true;
    QTest::newRow("close a window") << 61 << 4 << "close" << true;
    QTest::newRow("quit") << 20 << 1 << "exit" << true;
    QTest::newRow("lock") << 15 << 8 << "lock screen" << true;
  }
  void controls_are_found_by_what_their_chords_mean() {
    QFETCH(int, usage);
    QFETCH(int, modifiers);
    QFETCH(QString, wanted);
    QFETCH(bool, isFound);
    SearchFixture fixture;
    fixture.give(ButtonsFixture::control(9), assignment(16, usage, modifiers));
    QTest::keyClicks(&fixture.field(), wanted);
    QCOMPARE(fixture.with(SearchResult::Found).contains(9), isFound);
    // Nothing of the kind is said of a macro that has the same numbers.
    fixture.give(ButtonsFixture::control(9), assignment(10, usage, modifiers));
    QVERIFY(!fixture.with(SearchResult::Found).contains(9));
  }

  void what_a_search_passed_over_can_be_read_data() {
    QTest::addColumn<QPalette>("palette");
    QTest::newRow("light") << lightPalette();
    QTest::newRow("dark") << darkPalette();
  }
  void what_a_search_passed_over_can_be_read() {
    QFETCH(QPalette, palette);
    SearchFixture fixture;
    fixture.tab.setPalette(palette);
    QTest::keyClicks(&fixture.field(), QStringLiteral("fire"));
    for (const int number : {4, 9, 17}) {
      ControlRow& row = fixture.row(ButtonsFixture::control(number));
      QVERIFY(row.searchResult() == SearchResult::Passed);
      QVERIFY(row.popUp()->isMuted());
      const QImage image = row.grab().toImage();
      // Without the frame and the arrow.
      QVERIFY(textContrast(image, row.popUp()->geometry().adjusted(6, 6, -30, -6)) >= 4.5);
      QVERIFY(textContrast(image, fixture.nameOf(number)->geometry()) >= 4.5);
    }
    QVERIFY(!fixture.popUp(2).isMuted());
    fixture.field().clear();
    QVERIFY(!fixture.popUp(4).isMuted());
    QVERIFY(fixture.popUp(9).isMuted());
  }

  void the_places_of_what_was_found_are_lit_in_the_picture_and_all_others_recede() {
    SearchFixture fixture;
    const QList<QRgb> before = fixture.places();
    const QColor ground = fixture.picture().palette().color(QPalette::Window);
    const auto contrast = [&](QRgb color) { return std::abs(qGray(color) - qGray(ground.rgb())); };
    QTest::keyClicks(&fixture.field(), QStringLiteral("fire"));
    const QList<QRgb> after = fixture.places();
    for (int index = 0; index < 27; ++index) {
      if (index == 1) {
        QVERIFY(after[index] != before[index]);
        QVERIFY(contrast(after[index]) > contrast(before[index]) / 2);
      } else {
        QVERIFY(contrast(after[index]) < contrast(before[index]) / 2);
      }
    }
    fixture.field().clear();
    QCOMPARE(fixture.places(), before);
  }

  void nothing_found_is_told() {
    SearchFixture fixture;
    QTest::keyClicks(&fixture.field(), QStringLiteral("no such thing"));
    QCOMPARE(fixture.with(SearchResult::Passed).size(), 27);
    QCOMPARE(fixture.count(), QStringLiteral("No control does this"));
  }

  void escape_ends_the_search() {
    SearchFixture fixture;
    QTest::keyClicks(&fixture.field(), QStringLiteral("fire"));
    QTest::keyClick(&fixture.field(), Qt::Key_Escape);
    QCOMPARE(fixture.field().text(), QString());
    QCOMPARE(fixture.with(SearchResult::NoSearch).size(), 27);
    QCOMPARE(fixture.count(), QString());
  }

  void return_goes_to_the_first_control_that_was_found() {
    SearchFixture fixture;
    fixture.field().setFocus();
    QTest::keyClicks(&fixture.field(), QStringLiteral("wheel"));
    QTest::keyClick(&fixture.field(), Qt::Key_Return);
    QCOMPARE(fixture.tab.focusWidget(), &fixture.popUp(17));
    QTest::keyClicks(&fixture.field(), QStringLiteral("s on fire"));
    fixture.field().setFocus();
    QTest::keyClick(&fixture.field(), Qt::Key_Return);
    QCOMPARE(fixture.tab.focusWidget(), &fixture.field());
  }

  void ctrl_f_goes_to_the_field() {
    SearchFixture fixture;
    fixture.field().setText(QStringLiteral("fire"));
    fixture.popUp(1).setFocus();
    auto* findKey = fixture.tab.findChild<QShortcut*>();
    QCOMPARE(findKey->key(), QKeySequence(QKeySequence::Find));
    emit findKey->activated();
    QCOMPARE(fixture.tab.focusWidget(), &fixture.field());
    QCOMPARE(fixture.field().selectedText(), QStringLiteral("fire"));
    QVERIFY(fixture.field().toolTip().contains(QStringLiteral("Ctrl+F")));
  }

  void a_redraw_looks_again() {
    SearchFixture fixture;
    QTest::keyClicks(&fixture.field(), QStringLiteral("fire"));
    fixture.give(ButtonsFixture::control(5), assignment(10, 0));
    fixture.give(ButtonsFixture::control(2), assignment(45, 20));
    QCOMPARE(fixture.with(SearchResult::Found), QList<int>{5});
    QCOMPARE(fixture.count(), QStringLiteral("1 found"));
  }

  void a_control_that_recedes_can_be_used() {
    SearchFixture fixture;
    QTest::keyClicks(&fixture.field(), QStringLiteral("fire"));
    fixture.choose(ButtonsFixture::control(9), AssignmentCategory::Disable);
    COMPARE_CALLS(fixture.delegate.calls, fixture.request(ButtonsFixture::control(9), assignment(20)));
  }

  void without_the_mouse_nothing_is_looked_for() {
    SearchFixture fixture;
    QTest::keyClicks(&fixture.field(), QStringLiteral("fire"));
    fixture.tab.enableControlsState(false);
    QVERIFY(!fixture.field().isEnabled());
    QCOMPARE(fixture.field().toolTip(), QStringLiteral("No mouse connected"));
    QCOMPARE(fixture.with(SearchResult::NoSearch).size(), 27);
    fixture.tab.enableControlsState(true);
    QVERIFY(fixture.field().isEnabled());
  }
};

SKARN_QTEST(ControlSearchTest)
#include "ControlSearch_test.moc"
