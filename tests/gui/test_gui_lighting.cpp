// The Lighting tab: what it shows, and what each of its controls asks for.
#include <QApplication>
#include <QCheckBox>
#include <QColorDialog>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QRadioButton>
#include <QSlider>
#include <QTest>
#include <cmath>

#include "SampleSettings.h"
#include "SliderDrag.h"
#include "lighting/ColorWell.h"
#include "lighting/LightPreview.h"
#include "lighting/MouseLightingController.h"
#include "platform/Localization.h"
#include "widgets/SkarnStyle.h"

using namespace skarn;
using namespace skarn::test;

namespace {

struct Call {
  std::string operation;
  PropertyList argument;
  friend bool operator==(const Call&, const Call&) = default;
};
using Calls = std::vector<Call>;

Call update(std::initializer_list<PropertyList::Pair> settings) {
  return {"updateValueForSetting", PropertyList::dictionary(settings)};
}
Call switchTo(int profileID) {
  return {"switchProfileWithID", profileID};
}

// Empty when they are the same.
QByteArray difference(const Calls& made, const Calls& wanted) {
  if (made == wanted) return {};
  QByteArray text;
  for (const auto& [title, calls] : {std::pair{"made:\n", &made}, std::pair{"wanted:\n", &wanted}}) {
    text += title;
    for (const Call& call : *calls) {
      text += QByteArray::fromStdString(call.operation + " " + call.argument.description() + "\n");
    }
  }
  return text;
}

// Records every call, and answers as an owner with an engine does: it puts the change into the profile and redraws.
struct Owner : MouseLightingDelegate {
  explicit Owner(MouseLightingController& shown) : tab(shown) { tab.setMLightingDelegate(this); }

  void updateValueForSetting(const PropertyList& settings) override {
    calls.push_back({"updateValueForSetting", settings});
    if (!answers) return;
    tab.setMLightingDict(tab.mLightingDict().merging(settings));
    tab.updateUISettings();
  }
  void switchProfileWithID(int profileID) override {
    calls.push_back({"switchProfileWithID", profileID});
    if (!answers) return;
    tab.setMLightingDict(tab.mAllProfiles().at(profileID));
    tab.updateUISettings();
  }
  Calls take() { return std::exchange(calls, {}); }

  MouseLightingController& tab;
  Calls calls;
  bool answers = true;
};

// A tab that shows a profile and has sent what it sends at first.
struct Fixture {
  explicit Fixture(const PropertyList& active = profile("Work")) {
    tab.resize(1024, 476);
    tab.setMAllProfiles(profiles());
    show(active);
    owner.take();
    tab.show();
    tab.activateWindow();
  }
  void show(const PropertyList& active) {
    tab.setMLightingDict(active);
    tab.updateUISettings();
  }
  template <typename Control>
  Control& control(const char* name) {
    return *tab.findChild<Control*>(QLatin1String(name));
  }
  QSlider& slider() { return control<QSlider>("mBrightnessValue"); }
  ColorWell& well() { return control<ColorWell>("mMainColor"); }
  LightPreview& preview() { return control<LightPreview>("mLightPreview"); }
  QString text(const char* label) { return control<QLabel>(label).text(); }
  QRadioButton& cell(int tag) {
    for (QRadioButton* cell : control<QGroupBox>("mLightning").findChildren<QRadioButton*>()) {
      if (cell->property("tag").toInt() == tag) return *cell;
    }
    qFatal("no cell with the tag %d", tag);
  }
  std::vector<int> selectedCells() {
    std::vector<int> tags;
    for (QRadioButton* cell : control<QGroupBox>("mLightning").findChildren<QRadioButton*>()) {
      if (cell->isChecked()) tags.push_back(cell->property("tag").toInt());
    }
    return tags;
  }
  // Clicks a colour well and gives the panel that it opens.
  QColorDialog* openPanel(const char* name) {
    QTest::mouseClick(&control<ColorWell>(name), Qt::LeftButton);
    return panel();
  }
  QColorDialog* panel() { return tab.findChild<QColorDialog*>(); }

  MouseLightingController tab;
  Owner owner{tab};
};

const std::initializer_list<const char*> liveControls = {"mProfileListPopUp", "mMain", "mMainColor", "mLightning",
                                                         "mBrightnessValue"};
const std::initializer_list<const char*> inertControls = {
    "mSidestrips",    "mUnderglow",           "mSidestripsColor",   "mUnderglowColor",
    "mInGameAPMMain", "mInGameAPMSidestrips", "mInGameAPMUnderglow"};

}  // namespace

#define COMPARE_CALLS(...) QCOMPARE(difference(__VA_ARGS__), QByteArray())

class LightingTest : public QObject {
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

  void everyLiveControlSaysWhatItIs() {
    Fixture fixture;
    for (const char* name : liveControls) QVERIFY2(!fixture.control<QWidget>(name).accessibleName().isEmpty(), name);
    QCOMPARE(fixture.cell(0).text(), QStringLiteral("Fixed colour"));
    QCOMPARE(fixture.cell(4).text(), QStringLiteral("Spectrum cycling"));
    QCOMPARE(fixture.slider().accessibleDescription(), QStringLiteral("Normal"));
    QCOMPARE(fixture.well().accessibleDescription(), QStringLiteral("#FF8000"));
    QCOMPARE(fixture.preview().accessibleDescription(), QStringLiteral("Fixed colour, #FF8000, Normal"));
  }

  void theProfilesLightIsShown() {
    Fixture fixture;
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
    Fixture fixture;
    fixture.show(profile("Work").with(keys::LEDEffects, 2));
    QCOMPARE(fixture.selectedCells(), std::vector<int>{});
    fixture.show(profile("Work").with(keys::LEDEffects, 4));
    QCOMPARE(fixture.selectedCells(), std::vector<int>{4});
  }

  void theBrightnessCountsFromOneByItsLabels() {
    Fixture fixture;
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
    Fixture fixture(profile(std::string(300, 'W')));
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
    Owner owner(tab);
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
    Owner owner(tab);
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
    Owner owner(tab);
    owner.answers = false;
    tab.selectSpectrumCycling();
    COMPARE_CALLS(owner.take(), {update({{keys::LEDEffects, 4}})});
    tab.setMLightingDict(profile("Work"));
    tab.updateUISettings();
    COMPARE_CALLS(owner.take(), {});
  }

  void theBrightnessIsSentBackAsTheSliderShowsIt() {
    MouseLightingController tab;
    Owner owner(tab);
    tab.setMLightingDict(profile("Work").with(keys::LEDEffects, 2).with(keys::BrightnessKBNormal, 99));
    tab.updateUISettings();
    COMPARE_CALLS(owner.take(), {update({{keys::BrightnessNormal, 4}})});
  }

  // --- Controls

  void choosingAnEffectSendsItOnce() {
    Fixture fixture;
    QTest::mouseClick(&fixture.cell(4), Qt::LeftButton, {}, QPoint(8, fixture.cell(4).height() / 2));
    COMPARE_CALLS(fixture.owner.take(), {update({{keys::LEDEffects, 4}})});
    QCOMPARE(fixture.selectedCells(), std::vector<int>{4});
    QTest::mouseClick(&fixture.cell(0), Qt::LeftButton, {}, QPoint(8, fixture.cell(0).height() / 2));
    COMPARE_CALLS(fixture.owner.take(), {update({{keys::ScrollLED, 1}, {keys::LEDEffects, 0}})});
    QCOMPARE(fixture.selectedCells(), std::vector<int>{0});
  }

  void anEffectIsChosenByKeyboardAlone() {
    Fixture fixture;
    QVERIFY(QTest::qWaitForWindowActive(&fixture.tab));
    fixture.cell(0).setFocus();
    QTest::keyClick(&fixture.cell(0), Qt::Key_Right);
    COMPARE_CALLS(fixture.owner.take(), {update({{keys::LEDEffects, 4}})});
    QTest::keyClick(&fixture.cell(4), Qt::Key_Left);
    COMPARE_CALLS(fixture.owner.take(), {update({{keys::ScrollLED, 1}, {keys::LEDEffects, 0}})});
  }

  void theBrightnessSendsOncePerStep() {
    Fixture fixture;
    QTest::keyClick(&fixture.slider(), Qt::Key_Right);
    COMPARE_CALLS(fixture.owner.take(), {update({{keys::BrightnessKBNormal, 4}})});
    QTest::keyClick(&fixture.slider(), Qt::Key_Right);
    COMPARE_CALLS(fixture.owner.take(), {});
    QTest::keyClick(&fixture.slider(), Qt::Key_Home);
    COMPARE_CALLS(fixture.owner.take(), {update({{keys::BrightnessKBNormal, 1}})});
    QCOMPARE(fixture.slider().accessibleDescription(), QStringLiteral("Off"));
  }

  void aDragOfTheBrightnessSendsEveryValueOnce() {
    Fixture fixture;
    QSlider& slider = fixture.slider();
    pressSlider(slider, 3);
    for (const int position : {3, 2, 2, 1, 1}) dragSlider(slider, position);
    COMPARE_CALLS(fixture.owner.take(),
                  {update({{keys::BrightnessKBNormal, 2}}), update({{keys::BrightnessKBNormal, 1}})});
    releaseSlider(slider, 1);
    COMPARE_CALLS(fixture.owner.take(), {});
  }

  void tickingTheLightSendsNothingAndIsKeptForApply() {
    Fixture fixture;
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
    Fixture fixture;
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
    Fixture fixture;
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
    Fixture fixture;
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

  void withoutADelegateNothingHappens() {
    Fixture fixture;
    fixture.tab.setMLightingDelegate(nullptr);
    QTest::keyClick(&fixture.slider(), Qt::Key_Home);
    QTest::mouseClick(&fixture.cell(4), Qt::LeftButton, {}, QPoint(8, fixture.cell(4).height() / 2));
    QTest::keyClick(&fixture.control<QComboBox>("mProfileListPopUp"), Qt::Key_Down);
    COMPARE_CALLS(fixture.owner.take(), {});
  }

  // --- Colour

  void anAcceptedColourIsSentOnceAndChangesOnlyTheFirstElement() {
    Fixture fixture(profile("Work").with(
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
    Fixture fixture;
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
    Fixture fixture;
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
    Fixture fixture(profile("Work").with(keys::LEDColors, colors));
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
    Fixture fixture;
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
    Fixture fixture(colors.isNone() ? profile("Work").without(keys::LEDColors)
                                    : profile("Work").with(keys::LEDColors, colors));
    QCOMPARE(fixture.text("mMainColorHex"), shown);
    QCOMPARE(fixture.text("mMainColorRgb").isEmpty(), shown.isEmpty());
    QCOMPARE(fixture.well().color().isValid(), !shown.isEmpty());
    fixture.tab.grab();
    QColorDialog* panel = fixture.openPanel("mMainColor");
    panel->setCurrentColor(QColor(51, 102, 204));
    panel->accept();
    PropertyList wanted = PropertyList::array({color(0.2, 0.4, 0.8)});
    if (colors.elements().size() > 1) wanted = wanted.appending(colors.at(1));
    COMPARE_CALLS(fixture.owner.take(), {update({{keys::LEDColors, wanted}})});
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
      Fixture fixture;
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
    Fixture fixture;
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
    Fixture fixture;
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

  void aPanelThatIsOpenWhenTheDeviceGoesClosesWithoutAChoice() {
    Fixture fixture;
    fixture.openPanel("mMainColor")->setCurrentColor(QColor(1, 2, 3));
    fixture.tab.enableControlsState(false);
    QTRY_VERIFY(fixture.panel() == nullptr);
    QCOMPARE(fixture.preview().light().color, QColor(255, 128, 0));
    COMPARE_CALLS(fixture.owner.take(), {});
  }

  // --- The preview

  void thePreviewFollowsTheControls() {
    using Effect = LightPreview::Effect;
    Fixture fixture;
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
    Fixture fixture;
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
    Fixture fixture;
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
    Fixture fixture;
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

QTEST_MAIN(LightingTest)
#include "test_gui_lighting.moc"
