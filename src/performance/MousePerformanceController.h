// The Performance tab: sensitivity, its stages, polling rate and acceleration of the current profile. It never talks
// to the engine; it keeps copies of the slices that its owner hands it and redraws from them. Main thread. Slices of a
// wrong shape are survived: what cannot be read shows nothing.
#pragma once

#include <QPointer>
#include <QString>
#include <QWidget>
#include <array>
#include <memory>
#include <utility>

#include "model/PropertyList.h"
#include "performance/MousePerformanceDelegate.h"

namespace skarn {

namespace Ui {
class MousePerformanceController;
}

class MousePerformanceController : public QWidget {
  Q_OBJECT

 public:
  explicit MousePerformanceController(QWidget* parent = nullptr);
  ~MousePerformanceController() override;

  // --- What the owner hands over. Delegate and window are not owned.
  const vorn::PropertyList& mPerformanceSettingsDict() const { return performanceSettingsDict; }
  void setMPerformanceSettingsDict(const vorn::PropertyList& profile) { performanceSettingsDict = profile; }
  const vorn::PropertyList& mDeviceSettingsDict() const { return deviceSettingsDict; }
  void setMDeviceSettingsDict(const vorn::PropertyList& deviceSettings) { deviceSettingsDict = deviceSettings; }
  MousePerformanceDelegate* mMousePerformanceDelegate() const { return mousePerformanceDelegate; }
  void setMMousePerformanceDelegate(MousePerformanceDelegate* delegate) { mousePerformanceDelegate = delegate; }
  QWidget* mPerformanceWindow() const { return performanceWindow; }
  void setMPerformanceWindow(QWidget* window) { performanceWindow = window; }

  // --- Drawing
  // Looks up the titles of the polling rates; once, before the first redraw.
  void populateUISettings();
  // Redraws from the slices; without a profile record (none) nothing changes.
  void updateUISettings();
  void enableControlsState(bool enabled);

 private:
  void showSensitivity();
  void showStages();
  void showPointer();

  std::unique_ptr<Ui::MousePerformanceController> mUi;
  vorn::PropertyList performanceSettingsDict = vorn::PropertyList::dictionary();
  vorn::PropertyList deviceSettingsDict = vorn::PropertyList::dictionary();
  std::array<std::pair<int, QString>, 3> mPollingRates;  // Hz and title
  MousePerformanceDelegate* mousePerformanceDelegate = nullptr;
  QPointer<QWidget> performanceWindow;
};

}  // namespace skarn
