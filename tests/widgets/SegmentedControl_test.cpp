// The segmented control by hand and by keyboard, as it looks, and as screen readers find it.
#include "widgets/SegmentedControl.h"

#include <QAccessible>
#include <QApplication>
#include <QHelpEvent>
#include <QSignalSpy>
#include <QTest>
#include <QTextDocumentFragment>
#include <QToolTip>

#include "support/QtTests.h"
#include "widgets/Palettes.h"
#include "widgets/SkarnStyle.h"

using namespace skarn;

namespace {

struct Fixture {
  Fixture() : chosen(&control, &SegmentedControl::segmentChosen) {
    control.setSegmentCount(8);
    QStringList names;
    for (int number = 1; number <= 8; ++number) names << QStringLiteral("Keymap %1").arg(number);
    control.setSegmentNames(names);
    control.setAccessibleName(QStringLiteral("Keymap"));
    control.resize(control.sizeHint());
    control.show();
  }

  void click(int segment) { QTest::mouseClick(&control, Qt::LeftButton, {}, control.segmentRect(segment).center()); }
  QList<int> segmentsChosen() const {
    QList<int> segments;
    for (const QList<QVariant>& call : chosen) segments << call.at(0).toInt();
    return segments;
  }
  int pixelsOf(const QColor& color, int segment) {
    const QImage picture = control.grab(control.segmentRect(segment)).toImage();
    int count = 0;
    for (int y = 0; y < picture.height(); ++y) {
      for (int x = 0; x < picture.width(); ++x) count += QColor(picture.pixel(x, y)) == color ? 1 : 0;
    }
    return count;
  }

  SegmentedControl control;
  QSignalSpy chosen;
};

}  // namespace

class SegmentedControlTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() { QApplication::setStyle(new SkarnStyle); }
  void init() { QApplication::setPalette(lightPalette()); }
  void cleanup() { QToolTip::hideText(); }

  void nothingIsSelectedAtFirst() {
    Fixture fixture;
    QCOMPARE(fixture.control.segmentCount(), 8);
    QCOMPARE(fixture.control.selectedSegment(), -1);
  }

  void selectingByCodeIsSilent() {
    Fixture fixture;
    fixture.control.selectSegment(7);
    QCOMPARE(fixture.control.selectedSegment(), 7);
    for (const int outside : {8, -1, 255}) {
      fixture.control.selectSegment(3);
      fixture.control.selectSegment(outside);
      QCOMPARE(fixture.control.selectedSegment(), -1);
    }
    QCOMPARE(fixture.chosen.count(), 0);
  }

  void aClickChoosesASegment() {
    Fixture fixture;
    for (int segment = 0; segment < 8; ++segment) {
      fixture.click(segment);
      QCOMPARE(fixture.control.selectedSegment(), segment);
    }
    QCOMPARE(fixture.segmentsChosen(), (QList<int>{0, 1, 2, 3, 4, 5, 6, 7}));
  }

  void theSelectedSegmentCanBeChosenAgain() {
    Fixture fixture;
    fixture.control.selectSegment(2);
    fixture.click(2);
    QCOMPARE(fixture.segmentsChosen(), QList<int>{2});
  }

  void aPressThatIsDraggedAwayChoosesNothing() {
    Fixture fixture;
    QTest::mousePress(&fixture.control, Qt::LeftButton, {}, fixture.control.segmentRect(1).center());
    QTest::mouseRelease(&fixture.control, Qt::LeftButton, {}, fixture.control.segmentRect(2).center());
    QTest::mouseClick(&fixture.control, Qt::RightButton, {}, fixture.control.segmentRect(2).center());
    QTest::mousePress(&fixture.control, Qt::LeftButton, {}, fixture.control.segmentRect(1).center());
    QTest::mouseRelease(&fixture.control, Qt::LeftButton, {}, QPoint(-5, -5));
    QCOMPARE(fixture.chosen.count(), 0);
    QCOMPARE(fixture.control.selectedSegment(), -1);
  }

  void keysMoveWithoutChoosing_data() {
    QTest::addColumn<QList<int>>("keys");
    QTest::addColumn<int>("segment");
    QTest::newRow("none") << QList<int>{} << 3;
    QTest::newRow("Right") << QList<int>{Qt::Key_Right} << 4;
    QTest::newRow("Left twice") << QList<int>{Qt::Key_Left, Qt::Key_Left} << 1;
    QTest::newRow("Home") << QList<int>{Qt::Key_Home} << 0;
    QTest::newRow("past the first") << QList<int>{Qt::Key_Home, Qt::Key_Left} << 0;
    QTest::newRow("End") << QList<int>{Qt::Key_End} << 7;
    QTest::newRow("past the last") << QList<int>{Qt::Key_End, Qt::Key_Right} << 7;
  }

  void keysMoveWithoutChoosing() {
    QFETCH(QList<int>, keys);
    QFETCH(int, segment);
    for (const Qt::Key chooses : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter}) {
      Fixture fixture;
      fixture.control.selectSegment(3);
      QFocusEvent focus(QEvent::FocusIn, Qt::TabFocusReason);
      QApplication::sendEvent(&fixture.control, &focus);
      for (const int key : keys) QTest::keyClick(&fixture.control, static_cast<Qt::Key>(key));
      QCOMPARE(fixture.chosen.count(), 0);
      QCOMPARE(fixture.control.selectedSegment(), 3);
      QTest::keyClick(&fixture.control, chooses);
      QCOMPARE(fixture.segmentsChosen(), QList<int>{segment});
      QCOMPARE(fixture.control.selectedSegment(), segment);
    }
  }

  void fromRightToLeftTheArrowsAreExchanged() {
    Fixture fixture;
    fixture.control.setLayoutDirection(Qt::RightToLeft);
    QVERIFY(fixture.control.segmentRect(0).left() > fixture.control.segmentRect(7).left());
    QTest::keyClick(&fixture.control, Qt::Key_Left);
    QTest::keyClick(&fixture.control, Qt::Key_Space);
    QCOMPARE(fixture.segmentsChosen(), QList<int>{1});
  }

  void aDisabledControlChoosesNothing() {
    Fixture fixture;
    fixture.control.setEnabled(false);
    fixture.click(2);
    QTest::keyClick(&fixture.control, Qt::Key_Space);
    QCOMPARE(fixture.chosen.count(), 0);
  }

  void segmentsShareTheWidthWithoutGaps() {
    Fixture fixture;
    fixture.control.resize(301, 28);
    int from = 0;
    for (int segment = 0; segment < 8; ++segment) {
      const QRect place = fixture.control.segmentRect(segment);
      QCOMPARE(place.left(), from);
      QVERIFY(qAbs(place.width() - 301 / 8) <= 1);
      from = place.right() + 1;
    }
    QCOMPARE(from, 301);
  }

  void onlyTheSelectedSegmentHasTheAccent_data() {
    QTest::addColumn<bool>("dark");
    QTest::newRow("light") << false;
    QTest::newRow("dark") << true;
  }

  void onlyTheSelectedSegmentHasTheAccent() {
    QFETCH(bool, dark);
    QApplication::setPalette(dark ? darkPalette() : lightPalette());
    Fixture fixture;
    fixture.control.selectSegment(4);
    const QColor accent = accentColor(fixture.control.palette());
    for (int segment = 0; segment < 8; ++segment) QCOMPARE(fixture.pixelsOf(accent, segment) > 100, segment == 4);
    fixture.control.setEnabled(false);
    for (int segment = 0; segment < 8; ++segment) QCOMPARE(fixture.pixelsOf(accent, segment), 0);
  }

  void screenReadersFindARadioButtonPerSegment() {
    Fixture fixture;
    fixture.control.selectSegment(2);
    QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(&fixture.control);
    QCOMPARE(accessible->text(QAccessible::Name), QStringLiteral("Keymap"));
    QCOMPARE(accessible->role(), QAccessible::Grouping);
    QCOMPARE(accessible->childCount(), 8);
    for (int segment = 0; segment < 8; ++segment) {
      QAccessibleInterface* child = accessible->child(segment);
      QCOMPARE(child->role(), QAccessible::RadioButton);
      QCOMPARE(child->text(QAccessible::Name), QStringLiteral("Keymap %1").arg(segment + 1));
      QCOMPARE(child->state().checkable, 1U);
      QCOMPARE(child->state().checked, segment == 2 ? 1U : 0U);
      QCOMPARE(child->state().focusable, 1U);
      QCOMPARE(child->state().focused, 0U);
      QCOMPARE(child->actionInterface()->actionNames(), QStringList{QAccessibleActionInterface::toggleAction()});
      const QPoint place = fixture.control.mapFromGlobal(child->rect().center());
      QVERIFY(fixture.control.segmentRect(segment).contains(place));
    }
    accessible->child(5)->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
    QCOMPARE(fixture.segmentsChosen(), QList<int>{5});
    QCOMPARE(fixture.control.selectedSegment(), 5);
  }

  void screenReadersFollowTheKeyboard() {
    Fixture fixture;
    fixture.control.activateWindow();
    fixture.control.setFocus();
    QTRY_VERIFY(fixture.control.hasFocus());
    QTest::keyClick(&fixture.control, Qt::Key_End);
    QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(&fixture.control);
    for (int segment = 0; segment < 8; ++segment)
      QCOMPARE(accessible->child(segment)->state().focused, segment == 7 ? 1U : 0U);
    fixture.control.setEnabled(false);
    QVERIFY(accessible->child(7)->state().disabled);
    QVERIFY(accessible->child(7)->actionInterface()->actionNames().isEmpty());
    accessible->child(3)->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
    QCOMPARE(fixture.segmentsChosen(), QList<int>());
  }

  void aMarkIsSeenAndSaid() {
    Fixture fixture;
    fixture.control.selectSegment(0);
    const auto pictureOf = [&fixture](int segment) {
      return fixture.control.grab(fixture.control.segmentRect(segment)).toImage();
    };
    const QImage before = pictureOf(6);
    const QImage selectedBefore = pictureOf(0);
    for (const int segment : {-1, 0, 6, 8}) fixture.control.setMark(segment, QStringLiteral("in use"));
    for (int segment = -1; segment <= 8; ++segment)
      QCOMPARE(fixture.control.isMarked(segment), segment == 0 || segment == 6);
    QVERIFY(pictureOf(6) != before);
    QVERIFY(pictureOf(0) != selectedBefore);
    QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(&fixture.control);
    QCOMPARE(accessible->child(6)->text(QAccessible::Name), QStringLiteral("Keymap 7"));
    QCOMPARE(accessible->child(6)->text(QAccessible::Description), QStringLiteral("in use"));
    const QPoint place = fixture.control.segmentRect(6).center();
    QHelpEvent help(QEvent::ToolTip, place, fixture.control.mapToGlobal(place));
    QApplication::sendEvent(&fixture.control, &help);
    QCOMPARE(QTextDocumentFragment::fromHtml(QToolTip::text()).toPlainText(), QStringLiteral("Keymap 7: in use"));
    fixture.control.setMark(6, QString());
    QCOMPARE(pictureOf(6), before);
  }

  void theTooltipNamesTheSegment() {
    Fixture fixture;
    const QPoint place = fixture.control.segmentRect(6).center();
    QHelpEvent help(QEvent::ToolTip, place, fixture.control.mapToGlobal(place));
    QApplication::sendEvent(&fixture.control, &help);
    QCOMPARE(QTextDocumentFragment::fromHtml(QToolTip::text()).toPlainText(), QStringLiteral("Keymap 7"));
  }

  void withoutSegmentsNothingHappens() {
    SegmentedControl control;
    QSignalSpy chosen(&control, &SegmentedControl::segmentChosen);
    control.resize(100, 28);
    control.show();
    QTest::mouseClick(&control, Qt::LeftButton);
    for (const Qt::Key key : {Qt::Key_Right, Qt::Key_End, Qt::Key_Space}) QTest::keyClick(&control, key);
    control.setSegmentCount(-3);
    control.grab();
    QCOMPARE(control.segmentCount(), 0);
    QCOMPARE(chosen.count(), 0);
  }

  void fewerSegmentsForgetASelectionPastTheEnd() {
    Fixture fixture;
    fixture.control.selectSegment(6);
    fixture.control.setSegmentCount(4);
    QCOMPARE(fixture.control.selectedSegment(), -1);
    QCOMPARE(fixture.control.segmentName(3), QStringLiteral("Keymap 4"));
    QCOMPARE(fixture.control.segmentName(4), QString());
  }
};

SKARN_QTEST(SegmentedControlTest)
#include "SegmentedControl_test.moc"
