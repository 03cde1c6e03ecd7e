#include "widgets/BusyIndicator.h"

#include <QImage>
#include <QTest>

#include "support/PaintCounter.h"
#include "support/QtTests.h"

using skarn::BusyIndicator;
using skarn::test::PaintCounter;

namespace {

bool showsAnArc(BusyIndicator& indicator) {
  QImage picture(indicator.size(), QImage::Format_ARGB32);
  picture.fill(Qt::transparent);
  indicator.render(&picture, {}, {}, QWidget::RenderFlags());
  QImage nothing(picture.size(), picture.format());
  nothing.fill(Qt::transparent);
  return picture != nothing;
}

}  // namespace

class BusyIndicatorTest : public QObject {
  Q_OBJECT

 private slots:
  void shows_nothing_while_nothing_is_under_way();
  void turns_without_an_event_loop();
  void is_seen_also_where_it_ran_for_a_moment_only();
};

void BusyIndicatorTest::shows_nothing_while_nothing_is_under_way() {
  BusyIndicator indicator;
  indicator.resize(20, 20);
  QVERIFY(!showsAnArc(indicator));
  indicator.start();
  QVERIFY(indicator.isRunning() && showsAnArc(indicator));
  // Nobody has seen it.
  indicator.stop();
  QVERIFY(!indicator.isRunning() && !showsAnArc(indicator));
}

void BusyIndicatorTest::turns_without_an_event_loop() {
  BusyIndicator indicator;
  indicator.show();
  QVERIFY(QTest::qWaitForWindowExposed(&indicator));
  PaintCounter counter(&indicator);
  indicator.turn();
  QCOMPARE(counter.paints, 0);
  indicator.start();
  const QPixmap before = indicator.grab();
  counter.paints = 0;
  indicator.turn();
  QCOMPARE(counter.paints, 1);
  QVERIFY(indicator.grab().toImage() != before.toImage());
}

void BusyIndicatorTest::is_seen_also_where_it_ran_for_a_moment_only() {
  BusyIndicator indicator;
  indicator.show();
  QVERIFY(QTest::qWaitForWindowExposed(&indicator));
  indicator.start();
  indicator.stop();
  QVERIFY(!indicator.isRunning() && showsAnArc(indicator));
  QTRY_VERIFY(!showsAnArc(indicator));
}

SKARN_QTEST(BusyIndicatorTest)
#include "BusyIndicator_test.moc"
