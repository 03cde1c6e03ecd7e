// The Performance tab in a window, as its owner sets it up, with a delegate that writes down what it is asked for.
#pragma once

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QSlider>
#include <QTableView>
#include <QTest>
#include <QVBoxLayout>
#include <functional>
#include <vector>

#include "performance/MousePerformanceController.h"
#include "performance/StageChip.h"
#include "support/SampleSettings.h"
#include "support/SliderDrag.h"

namespace skarn::test {

struct PerformanceRecorder : MousePerformanceDelegate {
  void updateValueForSetting(const PropertyList& settings) override {
    requests.push_back(settings);
    if (answer) answer(settings);
  }

  std::vector<PropertyList> requests;
  // What an owner does about a request; nothing unless a test says so.
  std::function<void(const PropertyList&)> answer;
};

inline QStringList texts(const std::vector<PropertyList>& requests) {
  QStringList lines;
  for (const PropertyList& request : requests) lines << QString::fromStdString(request.description());
  return lines;
}

inline PropertyList request(std::initializer_list<PropertyList::Pair> entries) {
  return PropertyList::dictionary(entries);
}

inline PropertyList independent(int x, int y) {
  return profile("Work").with(keys::IndependentXYOn, 1).with(keys::DPIX, x).with(keys::DPIY, y);
}

class PerformanceTab {
 public:
  explicit PerformanceTab(const PropertyList& active = profile("Work"), const PropertyList& device = deviceSettings()) {
    auto* layout = new QVBoxLayout(&window);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(&tab);
    window.resize(1180, 560);
    tab.setMMousePerformanceDelegate(&recorder);
    tab.setMPerformanceWindow(&window);
    tab.populateUISettings();
    hand(active, device);
    window.show();
  }
  ~PerformanceTab() { tab.setParent(nullptr); }
  PerformanceTab(const PerformanceTab&) = delete;
  PerformanceTab& operator=(const PerformanceTab&) = delete;

  // Hands over settings and redraws.
  void hand(const PropertyList& active, const PropertyList& device = deviceSettings()) {
    tab.setMPerformanceSettingsDict(active);
    tab.setMDeviceSettingsDict(device);
    tab.updateUISettings();
  }
  // From now on each request changes the profile, and the tab is redrawn from it.
  void answerRequests() {
    recorder.answer = [this](const PropertyList& settings) {
      hand(tab.mPerformanceSettingsDict().merging(settings), tab.mDeviceSettingsDict());
    };
  }

  template <typename Widget>
  Widget* find(const char* name) const {
    auto* found = window.findChild<Widget*>(QLatin1String(name));
    if (found == nullptr) qFatal("there is no %s", name);
    return found;
  }
  QSlider* slider(const char* name) const { return find<QSlider>(name); }
  QAbstractButton* button(const char* name) const { return find<QAbstractButton>(name); }
  int value(const char* name) const { return slider(name)->value(); }
  bool isTicked(const char* name) const { return button(name)->isChecked(); }
  bool isEnabled(const char* name) const { return find<QWidget>(name)->isEnabled(); }
  QString toolTip(const char* name) const { return find<QWidget>(name)->toolTip(); }
  QString readout() const { return find<QLabel>("mDpiValue")->text(); }
  QDialog* sheet() const { return find<QDialog>("mSensitivityStagesView"); }
  QTableView* table() const { return find<QTableView>("mStagesTable"); }

  void click(const char* name) const { QTest::mouseClick(button(name), Qt::LeftButton); }

  // --- A drag, in its parts. Positions are values of the slider.
  void press(const char* name, int position) const { pressSlider(*slider(name), position); }
  void drag(const char* name, int position) const { dragSlider(*slider(name), position); }
  void release(const char* name, int position) const { releaseSlider(*slider(name), position); }

  // The requests so far, when all that was put off is done; the next call begins anew.
  std::vector<PropertyList> takeRequests() {
    QCoreApplication::processEvents();
    return std::exchange(recorder.requests, {});
  }

  QWidget window;
  MousePerformanceController tab;
  PerformanceRecorder recorder;
};

}  // namespace skarn::test

// Exactly these requests were sent since they were last looked at, in this order.
#define COMPARE_REQUESTS(tab, ...)                                       \
  do {                                                                   \
    const std::vector<PropertyList> sentRequests = (tab).takeRequests(); \
    const std::vector<PropertyList> expectedRequests{__VA_ARGS__};       \
    QCOMPARE(texts(sentRequests), texts(expectedRequests));              \
    QVERIFY(sentRequests == expectedRequests);                           \
  } while (false)
