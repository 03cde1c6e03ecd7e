// A Lighting tab over an owner that records what is asked of it.
#pragma once

#include <QColorDialog>
#include <QGroupBox>
#include <QLabel>
#include <QRadioButton>
#include <QSlider>
#include <QTest>
#include <string>
#include <utility>
#include <vector>

#include "lighting/ColorWell.h"
#include "lighting/LightPreview.h"
#include "lighting/MouseLightingController.h"
#include "support/SampleSettings.h"

namespace skarn::test {

struct Call {
  std::string operation;
  PropertyList argument;
  friend bool operator==(const Call&, const Call&) = default;
};
using Calls = std::vector<Call>;

inline Call update(std::initializer_list<PropertyList::Pair> settings) {
  return {"updateValueForSetting", PropertyList::dictionary(settings)};
}
inline Call switchTo(int profileID) {
  return {"switchProfileWithID", profileID};
}

// Empty when they are the same.
inline QByteArray difference(const Calls& made, const Calls& wanted) {
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
struct LightingOwner : MouseLightingDelegate {
  explicit LightingOwner(MouseLightingController& shown) : tab(shown) { tab.setMLightingDelegate(this); }

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
struct LightingTab {
  explicit LightingTab(const PropertyList& active = profile("Work")) {
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
  LightingOwner owner{tab};
};

}  // namespace skarn::test

#define COMPARE_CALLS(...) QCOMPARE(difference(__VA_ARGS__), QByteArray())
