// The Lighting tab: what it shows, and what each of its controls asks for.
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <limits>

#include "lighting/LightingTab.h"
#include "platform/Localization.h"
#include "support/QtTests.h"
#include "support/SliderDrag.h"
#include "widgets/SkarnStyle.h"

using namespace skarn;
using namespace skarn::test;

namespace {

const std::initializer_list<const char*> liveControls = {"mProfileListPopUp", "mMain", "mMainColor", "mLightning",
                                                         "mBrightnessValue"};
const std::initializer_list<const char*> inertControls = {
    "mSidestrips",    "mUnderglow",           "mSidestripsColor",   "mUnderglowColor",
    "mInGameAPMMain", "mInGameAPMSidestrips", "mInGameAPMUnderglow"};

}  // namespace

class MouseLightingControllerTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() {
    QApplication::setStyle(new SkarnStyle);
    QVERIFY(installTranslations(QStringLiteral("en")));
  }

  // --- Names and what is shown

  void everyControlIsFoundByItsName_data() {
    QTest::addColumn<QString>("name");
    for (const auto& names : {liveControls, inertControls}) {
      for (const char* name : names) QTest::newRow(name) << QString::fromLatin1(name);
    }
    for (const char* name : {"mCurrentProfileLabel", "mBrightnessOffLabel", "mBrightnessDimLabel",
                             "mBrightnessNormalLabel", "mBrightnessBrightLabel", "mBrightnessLabel"}) {
      QTest::newRow(name) << QString::fromLatin1(name);
    }
  }
  void everyControlIsFoundByItsName() {
    QFETCH(QString, name);
    MouseLightingController tab;
    QCOMPARE(tab.objectName(), QStringLiteral("MouseLightingController"));
    QCOMPARE(tab.findChildren<QWidget*>(name).size(), 1);
  }

  void besideAnotherProfileThanTheFirstTheNoteSaysHowToTurnItsLightOff() {
    LightingTab fixture;
    const auto noteOfProfile = [&fixture](int active) {
      fixture.tab.setMDeviceSettingsDict(PropertyList::dictionary({{keys::ActiveProfile, active}}));
      fixture.tab.updateUISettings();
      return fixture.control<QLabel>("mMainNote").text();
    };
    QCOMPARE(noteOfProfile(0), QStringLiteral("Takes effect with Apply, in the first profile"));
    QCOMPARE(noteOfProfile(2), QStringLiteral("Takes effect with Apply, in the first profile.\n"
                                              "For this profile, set the brightness to Off."));
  }

  void everyLiveControlSaysWhatItIs() {
    LightingTab fixture;
    for (const char* name : liveControls) QVERIFY2(!fixture.control<QWidget>(name).accessibleName().isEmpty(), name);
    QCOMPARE(fixture.cell(0).text(), QStringLiteral("Fixed colour"));
    QCOMPARE(fixture.cell(4).text(), QStringLiteral("Spectrum cycling"));
    QCOMPARE(fixture.slider().accessibleDescription(), QStringLiteral("Normal"));
    QCOMPARE(fixture.well().accessibleDescription(), QStringLiteral("#FF8000"));
    QCOMPARE(fixture.preview().accessibleDescription(), QStringLiteral("Fixed colour, #FF8000, Normal"));
  }

  void theProfilesLightIsShown() {
    LightingTab fixture;
    QVERIFY(fixture.control<QCheckBox>("mMain").isChecked());
    QCOMPARE(fixture.selectedCells(), std::vector<int>{0});
    QCOMPARE(fixture.slider().value(), 3);
    QCOMPARE(fixture.well().color(), QColor(0xff, 0x80, 0x00));
    QCOMPARE(fixture.text("mMainColorHex"), QStringLiteral("#FF8000"));
    QCOMPARE(fixture.text("mMainColorRgb"), QStringLiteral("RGB 255, 128, 0"));
    const QImage seen = fixture.well().grab().toImage();
    QCOMPARE(QColor(seen.pixel(seen.rect().center())), QColor(0xff, 0x80, 0x00));
    fixture.show(profile("Work").with(keys::ScrollLED, 0).with(keys::LEDEffects, 4).with(keys::BrightnessKBNormal, 1));
    QVERIFY(!fixture.control<QCheckBox>("mMain").isChecked());
    QCOMPARE(fixture.selectedCells(), std::vector<int>{4});
    QCOMPARE(fixture.slider().value(), 1);
    COMPARE_CALLS(fixture.owner.take(), {});
  }

  void anotherEffectSelectsNoCell() {
    LightingTab fixture;
    fixture.show(profile("Work").with(keys::LEDEffects, 2));
    QCOMPARE(fixture.selectedCells(), std::vector<int>{});
    fixture.show(profile("Work").with(keys::LEDEffects, 4));
    QCOMPARE(fixture.selectedCells(), std::vector<int>{4});
  }

  void theBrightnessCountsFromOneByItsLabels() {
    LightingTab fixture;
    QCOMPARE(fixture.slider().minimum(), 1);
    QCOMPARE(fixture.slider().maximum(), 4);
    const std::pair<const char*, const char*> labels[] = {{"mBrightnessOffLabel", "Off"},
                                                          {"mBrightnessDimLabel", "Dim"},
                                                          {"mBrightnessNormalLabel", "Normal"},
                                                          {"mBrightnessBrightLabel", "Bright"}};
    int position = 0;
    for (const auto& [name, text] : labels) {
      const auto& label = fixture.control<QLabel>(name);
      QCOMPARE(label.text(), QLatin1String(text));
      QCOMPARE(label.property("position").toInt(), ++position);
    }
  }

  void thePageFitsIntoTheSmallestWindow() {
    LightingTab fixture(profile(std::string(300, 'W')));
    fixture.tab.setMAllProfiles(PropertyList::array({profile(std::string(300, 'W'))}));
    fixture.tab.updateUISettings();
    const QSize least = fixture.tab.minimumSizeHint();
    QVERIFY2(least.width() <= 1024 && least.height() <= 476,
             qPrintable(QStringLiteral("%1 x %2").arg(least.width()).arg(least.height())));
  }

  // --- The first redraw

  void theFirstRedrawSendsEffectAndBrightnessBackOnce_data() {
    QTest::addColumn<int>("effect");
    QTest::addColumn<int>("isAnswered");
    for (const int effect : {0, 4, 1, 2, 3, 5, -1, 1000}) {
      for (const int isAnswered : {0, 1}) {
        QTest::addRow("effect %d%s", effect, isAnswered ? ", answered" : "") << effect << isAnswered;
      }
    }
  }
  void theFirstRedrawSendsEffectAndBrightnessBackOnce() {
    QFETCH(int, effect);
    QFETCH(int, isAnswered);
    MouseLightingController tab;
    LightingOwner owner(tab);
    owner.answers = isAnswered != 0;
    QVERIFY(!tab.mShouldUpdateUIOnly() && tab.mShouldUpdateBrightness());
    tab.setMLightingDict(profile("Work").with(keys::LEDEffects, effect).with(keys::ScrollLED, 0));
    tab.updateUISettings();
    Calls wanted;
    if (effect == 0) wanted.push_back(update({{keys::ScrollLED, 1}, {keys::LEDEffects, 0}}));
    if (effect == 4) wanted.push_back(update({{keys::LEDEffects, 4}}));
    wanted.push_back(update({{keys::BrightnessNormal, 3}}));
    COMPARE_CALLS(owner.take(), wanted);
    QVERIFY(tab.mShouldUpdateUIOnly() && !tab.mShouldUpdateBrightness());
    tab.updateUISettings();
    tab.setMLightingDict(profile("Other").with(keys::LEDEffects, 4).with(keys::BrightnessKBNormal, 2));
    tab.updateUISettings();
    COMPARE_CALLS(owner.take(), {});
  }

  void theFirstRedrawWaitsForAProfile() {
    MouseLightingController tab;
    LightingOwner owner(tab);
    tab.setMAllProfiles(profiles());
    tab.setMLightingDict(PropertyList());
    tab.updateUISettings();
    COMPARE_CALLS(owner.take(), {});
    QCOMPARE(tab.findChild<QComboBox*>(QStringLiteral("mProfileListPopUp"))->count(), 4);
    tab.setMLightingDict(profile("Work"));
    tab.updateUISettings();
    QCOMPARE(owner.take().size(), std::size_t{2});
  }

  void anEffectChosenBeforeTheFirstRedrawIsNotSentAgain() {
    MouseLightingController tab;
    LightingOwner owner(tab);
    owner.answers = false;
    tab.selectSpectrumCycling();
    COMPARE_CALLS(owner.take(), {update({{keys::LEDEffects, 4}})});
    tab.setMLightingDict(profile("Work"));
    tab.updateUISettings();
    COMPARE_CALLS(owner.take(), {});
  }

  void theBrightnessIsSentBackAsTheSliderShowsIt() {
    MouseLightingController tab;
    LightingOwner owner(tab);
    tab.setMLightingDict(profile("Work").with(keys::LEDEffects, 2).with(keys::BrightnessKBNormal, 99));
    tab.updateUISettings();
    COMPARE_CALLS(owner.take(), {update({{keys::BrightnessNormal, 4}})});
  }

  // --- Controls

  void choosingAnEffectSendsItOnce() {
    LightingTab fixture;
    QTest::mouseClick(&fixture.cell(4), Qt::LeftButton, {}, QPoint(8, fixture.cell(4).height() / 2));
    COMPARE_CALLS(fixture.owner.take(), {update({{keys::LEDEffects, 4}})});
    QCOMPARE(fixture.selectedCells(), std::vector<int>{4});
    QTest::mouseClick(&fixture.cell(0), Qt::LeftButton, {}, QPoint(8, fixture.cell(0).height() / 2));
    COMPARE_CALLS(fixture.owner.take(), {update({{keys::ScrollLED, 1}, {keys::LEDEffects, 0}})});
    QCOMPARE(fixture.selectedCells(), std::vector<int>{0});
  }

  void anEffectIsChosenByKeyboardAlone() {
    LightingTab fixture;
    QVERIFY(QTest::qWaitForWindowActive(&fixture.tab));
    fixture.cell(0).setFocus();
    QTest::keyClick(&fixture.cell(0), Qt::Key_Right);
    COMPARE_CALLS(fixture.owner.take(), {update({{keys::LEDEffects, 4}})});
    QTest::keyClick(&fixture.cell(4), Qt::Key_Left);
    COMPARE_CALLS(fixture.owner.take(), {update({{keys::ScrollLED, 1}, {keys::LEDEffects, 0}})});
  }

  void theBrightnessSendsOncePerStep() {
    LightingTab fixture;
    QTest::keyClick(&fixture.slider(), Qt::Key_Right);
    COMPARE_CALLS(fixture.owner.take(), {update({{keys::BrightnessKBNormal, 4}})});
    QTest::keyClick(&fixture.slider(), Qt::Key_Right);
    COMPARE_CALLS(fixture.owner.take(), {});
    QTest::keyClick(&fixture.slider(), Qt::Key_Home);
    COMPARE_CALLS(fixture.owner.take(), {update({{keys::BrightnessKBNormal, 1}})});
    QCOMPARE(fixture.slider().accessibleDescription(), QStringLiteral("Off"));
  }

  void aDragOfTheBrightnessSendsEveryValueOnce() {
    LightingTab fixture;
    QSlider& slider = fixture.slider();
    pressSlider(slider, 3);
    for (const int position : {3, 2, 2, 1, 1}) dragSlider(slider, position);
    COMPARE_CALLS(fixture.owner.take(),
                  {update({{keys::BrightnessKBNormal, 2}}), update({{keys::BrightnessKBNormal, 1}})});
    releaseSlider(slider, 1);
    COMPARE_CALLS(fixture.owner.take(), {});
  }

  void tickingTheLightSendsNothingAndIsKeptForApply() {
    LightingTab fixture;
    QVERIFY(fixture.tab.mUserSettingsDict() == PropertyList::dictionary());
    auto& light = fixture.control<QCheckBox>("mMain");
    QTest::mouseClick(&light, Qt::LeftButton, {}, QPoint(8, light.height() / 2));
    QVERIFY(!light.isChecked());
    QVERIFY(fixture.tab.mUserSettingsDict() == PropertyList::dictionary({{keys::ScrollLED, 0}}));
    fixture.tab.updateUISettings();
    QVERIFY(light.isChecked());
    QVERIFY(fixture.tab.mUserSettingsDict() == PropertyList::dictionary({{keys::ScrollLED, 0}}));
    QTest::keyClick(&light, Qt::Key_Space);
    QTest::keyClick(&light, Qt::Key_Space);
    QVERIFY(fixture.tab.mUserSettingsDict() == PropertyList::dictionary({{keys::ScrollLED, 1}}));
    COMPARE_CALLS(fixture.owner.take(), {});
  }

  void choosingAProfileSwitchesToIt() {
    LightingTab fixture;
    auto& list = fixture.control<QComboBox>("mProfileListPopUp");
    QCOMPARE(list.currentIndex(), 1);
    list.setFocus();
    QTest::keyClick(&list, Qt::Key_Down);
    COMPARE_CALLS(fixture.owner.take(), {switchTo(2)});
    QTest::keyClick(&list, Qt::Key_Home);
    COMPARE_CALLS(fixture.owner.take(), {switchTo(0)});
    QCOMPARE(list.currentText(), QStringLiteral("Default"));
  }

  void redrawingTheProfilesSwitchesToNone() {
    LightingTab fixture;
    auto& list = fixture.control<QComboBox>("mProfileListPopUp");
    fixture.tab.setMAllProfiles(PropertyList::array({profile("A & B"), profile("Work"), profile("Work"), 7}));
    fixture.tab.updateUISettings();
    QCOMPARE(list.count(), 4);
    QCOMPARE(list.itemText(0), QStringLiteral("A & B"));
    QCOMPARE(list.itemText(3), QString());
    QCOMPARE(list.currentIndex(), 1);
    fixture.show(profile("work"));
    QCOMPARE(list.currentIndex(), -1);
    fixture.show(profile("Work").without(keys::ProfileName));
    QCOMPARE(list.currentIndex(), -1);
    fixture.tab.setMAllProfiles(PropertyList("none"));
    fixture.tab.updateUISettings();
    QCOMPARE(list.count(), 0);
    COMPARE_CALLS(fixture.owner.take(), {});
  }

  void aRedrawSendsNothing() {
    LightingTab fixture;
    for (const int effect : {0, 4, 2}) {
      for (const int brightness : {1, 2, 3, 4, 9}) {
        fixture.show(profile("Racing")
                         .with(keys::LEDEffects, effect)
                         .with(keys::BrightnessKBNormal, brightness)
                         .with(keys::ScrollLED, effect == 0)
                         .with(keys::LEDColors, PropertyList::array({color(0, 1, 0)})));
      }
    }
    COMPARE_CALLS(fixture.owner.take(), {});
  }

  void withoutADelegateTheControlsMoveAndTheSettingsStay() {
    LightingTab fixture;
    auto& list = fixture.control<QComboBox>("mProfileListPopUp");
    const PropertyList before = fixture.tab.mLightingDict();
    fixture.tab.setMLightingDelegate(nullptr);
    QTest::keyClick(&fixture.slider(), Qt::Key_Home);
    QTest::mouseClick(&fixture.cell(4), Qt::LeftButton, {}, QPoint(8, fixture.cell(4).height() / 2));
    QTest::keyClick(&list, Qt::Key_Down);
    QCOMPARE(fixture.slider().value(), 1);
    QCOMPARE(fixture.selectedCells(), std::vector<int>{4});
    QCOMPARE(list.currentIndex(), 2);
    QVERIFY(fixture.tab.mLightingDict() == before);
    QVERIFY(fixture.tab.mAllProfiles() == profiles());
    // The next redraw shows what is stored, and nothing is sent late.
    fixture.tab.setMLightingDelegate(&fixture.owner);
    fixture.tab.updateUISettings();
    QCOMPARE(fixture.slider().value(), 3);
    QCOMPARE(fixture.selectedCells(), std::vector<int>{0});
    QCOMPARE(list.currentIndex(), 1);
    COMPARE_CALLS(fixture.owner.take(), {});
  }

  void settingsOfAnyShapeAreSurvived() {
    const PropertyList hostile[] = {
        PropertyList("text"), PropertyList::array({1}), PropertyList(7),
        PropertyList::dictionary({{keys::ProfileName, PropertyList::dictionary()},
                                  {keys::ScrollLED, PropertyList::array()},
                                  {keys::LEDEffects, PropertyList::dictionary()},
                                  {keys::LEDColors, 1},
                                  {keys::BrightnessKBNormal, std::numeric_limits<std::int64_t>::min()}})};
    for (const PropertyList& settings : hostile) {
      MouseLightingController first;
      first.setMLightingDict(settings);
      first.updateUISettings();
      LightingTab fixture;
      fixture.show(settings);
      fixture.tab.grab();
      QCOMPARE(fixture.slider().value(), 1);
      QVERIFY(!fixture.control<QCheckBox>("mMain").isChecked());
      COMPARE_CALLS(fixture.owner.take(), {});
    }
  }

  // --- What does nothing

  void theOtherZonesAreNeitherSeenNorLive_data() {
    QTest::addColumn<QString>("name");
    for (const char* name : inertControls) QTest::newRow(name) << QString::fromLatin1(name);
  }
  void theOtherZonesAreNeitherSeenNorLive() {
    QFETCH(QString, name);
    LightingTab fixture;
    auto* control = fixture.tab.findChild<QAbstractButton*>(name);
    QVERIFY(control != nullptr && !control->isVisible());
    control->click();
    QTest::keyClick(control, Qt::Key_Space);
    if (QColorDialog* panel = fixture.panel()) {
      panel->setCurrentColor(QColor(1, 2, 3));
      panel->accept();
    }
    COMPARE_CALLS(fixture.owner.take(), {});
    QVERIFY(fixture.tab.mUserSettingsDict() == PropertyList::dictionary());
    QCOMPARE(fixture.well().color(), QColor(255, 128, 0));
  }

  // --- Without a device

  void withoutADeviceEveryControlIsDisabledAndSaysWhy() {
    LightingTab fixture;
    const auto controls = [] {
      QStringList names;
      for (const auto& part : {liveControls, inertControls}) {
        for (const char* name : part) names << QLatin1String(name);
      }
      return names;
    }();
    for (const bool enabled : {false, true}) {
      fixture.tab.enableControlsState(enabled);
      for (const QString& name : controls) {
        QVERIFY2(fixture.tab.findChild<QWidget*>(name)->isEnabled() == enabled, qPrintable(name));
      }
      QCOMPARE(fixture.cell(0).isEnabled(), enabled);
      for (const char* name : liveControls) {
        QCOMPARE(fixture.control<QWidget>(name).toolTip(), enabled ? QString() : QStringLiteral("No mouse connected"));
      }
      for (const QLabel* label : fixture.tab.findChildren<QLabel*>()) QCOMPARE(label->isEnabled(), enabled);
      QTest::mouseClick(&fixture.cell(4), Qt::LeftButton, {}, QPoint(8, fixture.cell(4).height() / 2));
      QTest::keyClick(&fixture.slider(), Qt::Key_Home);
      QCOMPARE(fixture.owner.take().size(), enabled ? std::size_t{2} : std::size_t{0});
    }
  }
  void everyControlIsReachedByTab() {
    LightingTab fixture;
    QVERIFY(QTest::qWaitForWindowActive(&fixture.tab));
    fixture.control<QComboBox>("mProfileListPopUp").setFocus();
    QStringList reached;
    for (int step = 0; step < 5; ++step) {
      reached << QApplication::focusWidget()->objectName();
      QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    QCOMPARE(reached, (QStringList{"mProfileListPopUp", "mMain", "mFixedColorCell", "mMainColor", "mBrightnessValue"}));
  }
};

SKARN_QTEST(MouseLightingControllerTest)
#include "MouseLightingController_test.moc"
