#include "widgets/Palettes.h"

#include <QTest>
#include <cmath>

#include "support/QtTests.h"

using namespace skarn;

namespace {

double luminance(const QColor& color) {
  const auto linear = [](double share) {
    return share <= 0.04045 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(static_cast<double>(color.redF())) + 0.7152 * linear(static_cast<double>(color.greenF())) +
         0.0722 * linear(static_cast<double>(color.blueF()));
}

// As the accessibility guidelines of the web define it: 1 to 21.
double contrast(const QColor& one, const QColor& other) {
  const double a = luminance(one);
  const double b = luminance(other);
  return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

}  // namespace

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
