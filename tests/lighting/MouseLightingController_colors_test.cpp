// The colour of the light: chosen in the colour panel, kept exactly, and drawn in the preview.
#include <QApplication>
#include <QCheckBox>
#include <QMessageBox>
#include <QSet>
#include <cmath>
#include <limits>

#include "lighting/LightingTab.h"
#include "platform/Localization.h"
#include "support/QtTests.h"
#include "widgets/SkarnStyle.h"

using namespace skarn;
using namespace skarn::test;

class MouseLightingControllerColorsTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() {
    QApplication::setStyle(new SkarnStyle);
    QVERIFY(installTranslations(QStringLiteral("en")));
  }

  // --- Colour

  void anAcceptedColourIsSentOnceAndChangesOnlyTheFirstElement() {
    LightingTab fixture(profile("Work").with(
        keys::LEDColors, PropertyList::array({color(1, 0.5, 0).with("Alpha", 0.25), color(0, 0, 1).with("x", "y"),
                                              PropertyList("odd"), color(0.1, 0.2, 0.3)})));
    QColorDialog* panel = fixture.openPanel("mMainColor");
    QVERIFY(panel != nullptr && panel->isVisible());
    QCOMPARE(panel->windowModality(), Qt::WindowModal);
    QCOMPARE(panel->objectName(), QStringLiteral("mMainColorPanel"));
    QCOMPARE(panel->currentColor(), QColor(255, 128, 0));
    panel->setCurrentColor(QColor(51, 0, 204));
    COMPARE_CALLS(fixture.owner.take(), {});
    panel->accept();
    COMPARE_CALLS(fixture.owner.take(),
                  {update({{keys::LEDColors, PropertyList::array({color(0.2, 0.0, 0.8).with("Alpha", 0.25),
                                                                  color(0, 0, 1).with("x", "y"), PropertyList("odd"),
                                                                  color(0.1, 0.2, 0.3)})}})});
    QCOMPARE(fixture.text("mMainColorHex"), QStringLiteral("#3300CC"));
    QTRY_VERIFY(fixture.panel() == nullptr);
  }

  void aCancelledColourSendsNothingAndRestoresThePreview() {
    LightingTab fixture;
    QColorDialog* panel = fixture.openPanel("mMainColor");
    panel->setCurrentColor(QColor(0, 0, 255));
    QCOMPARE(fixture.preview().light().color, QColor(0, 0, 255));
    QCOMPARE(fixture.text("mMainColorHex"), QStringLiteral("#0000FF"));
    QTest::keyClick(panel, Qt::Key_Escape);
    QCOMPARE(fixture.preview().light().color, QColor(255, 128, 0));
    QCOMPARE(fixture.text("mMainColorHex"), QStringLiteral("#FF8000"));
    QCOMPARE(fixture.text("mMainColorRgb"), QStringLiteral("RGB 255, 128, 0"));
    QCOMPARE(fixture.well().color(), QColor(255, 128, 0));
    COMPARE_CALLS(fixture.owner.take(), {});
  }

  void aColourIsChosenByKeyboardAlone() {
    LightingTab fixture;
    fixture.well().setFocus();
    for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Return}) {
      QTest::keyClick(&fixture.well(), key);
      QColorDialog* panel = fixture.panel();
      QVERIFY(panel != nullptr);
      QTest::keyClick(panel, Qt::Key_Return);
      QTRY_VERIFY(fixture.panel() == nullptr);
    }
    QCOMPARE(fixture.owner.take().size(), std::size_t{2});
  }

  void aColourAcceptedUnchangedIsSentBackExactly_data() {
    QTest::addColumn<double>("component");
    for (const double component : {0.0, 1.0, 0.5, 0.3, 0.123456789, 1.0 / 3, 0.9999999}) {
      QTest::addRow("%.9f", component) << component;
    }
  }
  void aColourAcceptedUnchangedIsSentBackExactly() {
    QFETCH(double, component);
    const PropertyList colors = PropertyList::array({color(component, 1 - component, component / 2), color(0, 1, 0)});
    LightingTab fixture(profile("Work").with(keys::LEDColors, colors));
    fixture.openPanel("mMainColor")->accept();
    COMPARE_CALLS(fixture.owner.take(), {update({{keys::LEDColors, colors}})});
    // A component that was not changed stays exact beside one that was.
    QTRY_VERIFY(fixture.panel() == nullptr);
    QColorDialog* panel = fixture.openPanel("mMainColor");
    QColor changed = panel->currentColor();
    changed.setGreen(changed.green() > 127 ? 0 : 255);
    panel->setCurrentColor(changed);
    panel->accept();
    const PropertyList wanted = colors.replacing(0, colors.at(0).with(keys::Green, changed.green() / 255.0));
    COMPARE_CALLS(fixture.owner.take(), {update({{keys::LEDColors, wanted}})});
  }

  void aColourThatTheSettingsChangeIsSentAsItWasLastShown() {
    LightingTab fixture;
    QColorDialog* panel = fixture.openPanel("mMainColor");
    panel->setCurrentColor(QColor(0, 0, 255));
    fixture.show(profile("Work").with(keys::LEDColors, PropertyList::array({color(0, 1, 0), color(1, 1, 1)})));
    QCOMPARE(fixture.preview().light().color, QColor(0, 0, 255));
    panel->reject();
    QCOMPARE(fixture.preview().light().color, QColor(0, 255, 0));
    COMPARE_CALLS(fixture.owner.take(), {});
  }

  void colouredSettingsOfAnyShapeAreShownAndSentWellFormed_data() {
    QTest::addColumn<int>("shape");
    QTest::addColumn<QString>("shown");
    QTest::newRow("missing") << 0 << "";
    QTest::newRow("empty") << 1 << "";
    QTest::newRow("text") << 2 << "";
    QTest::newRow("an element that is no dictionary") << 3 << "";
    QTest::newRow("outside the range") << 4 << "#00FFFF";
    QTest::newRow("integers") << 5 << "#FF00FF";
    QTest::newRow("not a number") << 6 << "";
    QTest::newRow("a component missing") << 7 << "";
    QTest::newRow("a component as text") << 8 << "";
    QTest::newRow("infinite") << 9 << "#FF0000";
  }
  void colouredSettingsOfAnyShapeAreShownAndSentWellFormed() {
    QFETCH(int, shape);
    QFETCH(QString, shown);
    const double infinity = std::numeric_limits<double>::infinity();
    const PropertyList shapes[] = {
        PropertyList(),
        PropertyList::array(),
        PropertyList("red"),
        PropertyList::array({7, color(0, 1, 0)}),
        PropertyList::array({color(-3, 7, 1e300), color(0, 1, 0)}),
        PropertyList::array({PropertyList::dictionary({{keys::Red, 1}, {keys::Green, 0}, {keys::Blue, 1}})}),
        PropertyList::array({color(std::nan(""), 0, 0)}),
        PropertyList::array({color(1, 1, 1).without(keys::Blue)}),
        PropertyList::array({color(1, 1, 1).with(keys::Blue, "1")}),
        PropertyList::array({color(infinity, -infinity, 0)})};
    const PropertyList& colors = shapes[shape];
    LightingTab fixture(colors.isNone() ? profile("Work").without(keys::LEDColors)
                                        : profile("Work").with(keys::LEDColors, colors));
    QCOMPARE(fixture.text("mMainColorHex"), shown);
    QCOMPARE(fixture.text("mMainColorRgb").isEmpty(), shown.isEmpty());
    QCOMPARE(fixture.well().color().isValid(), !shown.isEmpty());
    QCOMPARE(fixture.preview().accessibleDescription(), shown.isEmpty()
                                                            ? QStringLiteral("Fixed colour, Normal")
                                                            : QStringLiteral("Fixed colour, %1, Normal").arg(shown));
    fixture.tab.grab();
    QColorDialog* panel = fixture.openPanel("mMainColor");
    panel->setCurrentColor(QColor(51, 102, 204));
    panel->accept();
    PropertyList wanted = PropertyList::array({color(0.2, 0.4, 0.8)});
    if (colors.elements().size() > 1) wanted = wanted.appending(colors.at(1));
    COMPARE_CALLS(fixture.owner.take(), {update({{keys::LEDColors, wanted}})});
  }

  void aPanelThatIsOpenWhenTheProfileChangesClosesWithoutAChoiceAndSaysSo() {
    LightingTab fixture;
    fixture.openPanel("mMainColor")->setCurrentColor(QColor(1, 2, 3));
    fixture.show(profile("Work"));
    QVERIFY(fixture.panel() != nullptr);
    fixture.show(profile("Play"));
    QTRY_VERIFY(fixture.panel() == nullptr);
    COMPARE_CALLS(fixture.owner.take(), {});
    const auto* alert = fixture.tab.findChild<QMessageBox*>();
    QVERIFY(alert != nullptr);
    QCOMPARE(alert->text(), QStringLiteral("“Work” is no longer the current profile"));
  }

  void aPanelThatIsOpenWhenTheDeviceGoesClosesWithoutAChoice() {
    LightingTab fixture;
    fixture.openPanel("mMainColor")->setCurrentColor(QColor(1, 2, 3));
    fixture.tab.enableControlsState(false);
    QTRY_VERIFY(fixture.panel() == nullptr);
    QCOMPARE(fixture.preview().light().color, QColor(255, 128, 0));
    COMPARE_CALLS(fixture.owner.take(), {});
  }

  // --- The preview

  void thePreviewFollowsTheControls() {
    using Effect = LightPreview::Effect;
    LightingTab fixture;
    QVERIFY((fixture.preview().light() == LightPreview::Light{Effect::FixedColor, QColor(255, 128, 0), 0.7}));
    QTest::keyClick(&fixture.slider(), Qt::Key_End);
    QCOMPARE(fixture.preview().light().strength, 1.0);
    QTest::keyClick(&fixture.slider(), Qt::Key_Home);
    QCOMPARE(fixture.preview().light().strength, 0.0);
    QCOMPARE(fixture.preview().accessibleDescription(), QStringLiteral("Light off"));
    QTest::keyClick(&fixture.slider(), Qt::Key_End);
    QTest::mouseClick(&fixture.cell(4), Qt::LeftButton, {}, QPoint(8, fixture.cell(4).height() / 2));
    QCOMPARE(fixture.preview().light().effect, Effect::SpectrumCycling);
    QCOMPARE(fixture.preview().accessibleDescription(), QStringLiteral("Spectrum cycling, Bright"));
    QTest::keyClick(&fixture.control<QCheckBox>("mMain"), Qt::Key_Space);
    QCOMPARE(fixture.preview().light().strength, 0.0);
    fixture.show(profile("Work").with(keys::LEDEffects, 3));
    QCOMPARE(fixture.preview().light().effect, Effect::None);
  }

  void thePreviewIsDrawnInTheColourOfTheLight() {
    LightingTab fixture;
    const auto picture = [&](const QColor& color, qreal strength) {
      fixture.preview().setLight({LightPreview::Effect::FixedColor, color, strength});
      return fixture.preview().grab().toImage();
    };
    const QImage dark = picture(Qt::green, 0);
    const QImage green = picture(Qt::green, 1);
    const QImage blue = picture(Qt::blue, 1);
    QVERIFY(dark != green && green != blue && picture(Qt::green, 0.4) != green);
    const auto litPixels = [](const QImage& seen, int hue) {
      int count = 0;
      for (int y = 0; y < seen.height(); ++y) {
        for (int x = 0; x < seen.width(); ++x) {
          const QColor pixel = seen.pixelColor(x, y);
          count += pixel.hsvHue() / 10 == hue / 10 && pixel.hsvSaturation() > 200 ? 1 : 0;
        }
      }
      return count;
    };
    QVERIFY(litPixels(green, 120) > 100 && litPixels(blue, 240) > 100);
    QVERIFY(litPixels(green, 240) == 0 && litPixels(blue, 120) == 0);
    QVERIFY(picture(QColor(), 1) == dark);
  }

  void thePreviewMovesOnlyWhileSomebodyCanSeeTheSpectrumCycle() {
    LightingTab fixture;
    LightPreview& preview = fixture.preview();
    const LightPreview::Light cycling{LightPreview::Effect::SpectrumCycling, Qt::red, 1};
    QVERIFY(!preview.isAnimated());
    preview.setLight(cycling);
    QVERIFY(preview.isAnimated());
    const QImage first = preview.grab().toImage();
    QTRY_VERIFY(preview.grab().toImage() != first);

    preview.setLight({LightPreview::Effect::FixedColor, Qt::red, 1});
    QVERIFY(!preview.isAnimated());
    preview.setLight({LightPreview::Effect::SpectrumCycling, Qt::red, 0});
    QVERIFY(!preview.isAnimated());
    preview.setLight(cycling);
    fixture.tab.hide();
    QVERIFY(!preview.isAnimated());
    fixture.tab.show();
    QVERIFY(preview.isAnimated());
    fixture.tab.setWindowState(Qt::WindowMinimized);
    QTRY_VERIFY(!preview.isAnimated());
    fixture.tab.setWindowState(Qt::WindowNoState);
    QTRY_VERIFY(preview.isAnimated());
    preview.setEnabled(false);
    QVERIFY(!preview.isAnimated());
    preview.setEnabled(true);
    QVERIFY(preview.isAnimated());
  }

  void thePreviewStandsStillWhereTheDesktopAsksForLessMotion() {
    LightingTab fixture;
    LightPreview& preview = fixture.preview();
    preview.setLight({LightPreview::Effect::SpectrumCycling, Qt::red, 1});
    QVERIFY(preview.isAnimated());
    auto* style = qobject_cast<SkarnStyle*>(QApplication::style());
    style->setAnimated(false);
    QVERIFY(!preview.isAnimated());
    // Side by side stand more colours than a step of the cycle has.
    QSet<int> hues;
    const QImage seen = preview.grab().toImage();
    for (int y = 0; y < seen.height(); ++y) {
      for (int x = 0; x < seen.width(); ++x) {
        const QColor pixel = seen.pixelColor(x, y);
        if (pixel.hsvSaturation() > 230 && pixel.value() > 230) hues << pixel.hsvHue() / 60;
      }
    }
    QVERIFY2(hues.size() >= 4, qPrintable(QString::number(hues.size())));
    style->setAnimated(true);
    QVERIFY(preview.isAnimated());
  }
};

SKARN_QTEST(MouseLightingControllerColorsTest)
#include "MouseLightingController_colors_test.moc"
