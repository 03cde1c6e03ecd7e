// The field that finds controls by what they do or are called.
#include "buttons/ControlSearch.h"

#include <QAccessible>
#include <QLineEdit>
#include <QShortcut>

#include "buttons/ButtonsFixture.h"
#include "buttons/MouseView.h"
#include "support/QtTests.h"

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

}  // namespace

class ControlSearchTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() { QVERIFY(installTranslations(QStringLiteral("en"))); }

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
