#include "widgets/NumberBadge.h"

#include <QApplication>
#include <QTest>

#include "support/QtTests.h"
#include "widgets/Palettes.h"
#include "widgets/SkarnStyle.h"

using namespace skarn;

class NumberBadgeTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() { QApplication::setStyle(new SkarnStyle); }
  void init() { QApplication::setPalette(lightPalette()); }

  void aBadgeIsAsWideForOneDigitAsForTwo() {
    NumberBadge one;
    one.setText(QStringLiteral("1"));
    NumberBadge two;
    two.setText(QStringLiteral("27"));
    QCOMPARE(one.sizeHint(), two.sizeHint());
  }

  void aFilledBadgeStandsOut_data() {
    QTest::addColumn<bool>("dark");
    QTest::newRow("light") << false;
    QTest::newRow("dark") << true;
  }

  void aFilledBadgeStandsOut() {
    QFETCH(bool, dark);
    QApplication::setPalette(dark ? darkPalette() : lightPalette());
    NumberBadge badge;
    badge.setText(QStringLiteral("7"));
    badge.resize(badge.sizeHint());
    const QColor filled = badge.palette().color(QPalette::PlaceholderText);
    const auto ground = [&badge] { return badge.grab().toImage().pixelColor(4, badge.height() / 2); };
    QVERIFY(!badge.isFilled());
    QCOMPARE(ground(), badge.palette().color(QPalette::Midlight));
    badge.setFilled(true);
    QVERIFY(badge.isFilled());
    QCOMPARE(ground(), filled);
  }
};

SKARN_QTEST(NumberBadgeTest)
#include "NumberBadge_test.moc"
