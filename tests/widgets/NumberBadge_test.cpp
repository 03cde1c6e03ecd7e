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
};

SKARN_QTEST(NumberBadgeTest)
#include "NumberBadge_test.moc"
