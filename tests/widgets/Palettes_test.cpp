#include "widgets/Palettes.h"

#include <QTest>

#include "support/ColorContrast.h"
#include "support/QtTests.h"

using namespace skarn;
using skarn::test::contrast;

class PalettesTest : public QObject {
  Q_OBJECT

 private slots:
  void textIsReadableInBothPalettes() {
    for (const QPalette& palette : {lightPalette(), darkPalette()}) {
      const QColor window = palette.color(QPalette::Window);
      QVERIFY(contrast(palette.color(QPalette::WindowText), window) >= 7);
      QVERIFY(contrast(palette.color(QPalette::PlaceholderText), window) >= 4.5);
      QVERIFY(contrast(palette.color(QPalette::Text), palette.color(QPalette::Base)) >= 7);
      QVERIFY(contrast(palette.color(QPalette::HighlightedText), palette.color(QPalette::Highlight)) >= 4.5);
      QVERIFY(contrast(palette.color(QPalette::Link), window) >= 4.5);
      QVERIFY(contrast(accentColor(palette), window) >= 3);
      QVERIFY(palette.color(QPalette::Disabled, QPalette::WindowText) != palette.color(QPalette::WindowText));
    }
  }

  void theAccentFollowsThePalette() {
    QVERIFY(!isDark(lightPalette()));
    QVERIFY(isDark(darkPalette()));
    QCOMPARE(accentColor(lightPalette()).name(), QStringLiteral("#e4572e"));
    QCOMPARE(accentColor(darkPalette()).name(), QStringLiteral("#ff7a52"));
  }
};

SKARN_QTEST(PalettesTest)
#include "Palettes_test.moc"
