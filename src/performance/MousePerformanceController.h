// The Performance tab: sensitivity, its stages, polling rate and acceleration of the current profile. It never talks
// to the engine; it keeps copies of the slices that its owner hands it, redraws from them and asks its delegate for
// every change. Main thread. Slices of a wrong shape are survived: what cannot be read shows nothing.
//
// Only what the user does is sent. A drag of a sensitivity slider shows its values on the way and is sent once, when
// the slider is let go; each step of a key or of the wheel is sent. A redraw shows what the settings say, also under a
// slider that is being dragged: that drag is dropped, and the slider holds nothing of the user's then. A value that was
// let go and waits to be sent outlives a redraw of the same profile and is sent after it. The fields beside the sliders
// take exact values and do as the sliders do; what is being typed outlives a redraw of the same profile too.
//
// The chips are the stages: the current one is lit as long as its values are in force, and a click on another makes
// that one the current stage.
//
// The stages are edited in a sheet, on a working copy of the profile's stages. OK sends the copy and makes the selected
// stage the current one; Cancel drops the copy. A redraw begins a new copy, also while the sheet is open; that of
// another profile closes the sheet and says so. Disabling the
// tab cancels the sheet.
#pragma once

#include <QPointer>
#include <QWidget>
#include <array>
#include <memory>
#include <optional>
#include <string_view>

#include "model/PropertyList.h"
#include "model/SettingsKeys.h"
#include "performance/MousePerformanceDelegate.h"

class QDialog;
class QSlider;

namespace skarn {

namespace Ui {
class MousePerformanceController;
class SensitivityStagesSheet;
}  // namespace Ui

class DragCommit;
class StageChip;
class StagesTableModel;

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
  // The window that the stages sheet lies on; without one it lies on the window that this page is in.
  QWidget* mPerformanceWindow() const { return performanceWindow; }
  void setMPerformanceWindow(QWidget* window) { performanceWindow = window; }

  // --- Drawing
  // Fills the list of polling rates; once, before the first redraw. No rate is selected then.
  void populateUISettings();
  // Redraws from the slices; without a profile record (none) nothing changes.
  void updateUISettings();
  // Shows a sensitivity that the device reports: "DPI Value" (X), "DPIY Value" (Y), "IndependentXYOn". None is ignored.
  void updateDPISliders(const vorn::PropertyList& sensitivity);
  // False without a device. Enabling enables every control; the redraw that follows disables those that have nothing
  // to set.
  void enableControlsState(bool enabled);
  // What the mouse in use cannot do is set all the same, for one that can; the tooltips say so. At first all is
  // offered.
  void setMouseOffers(bool sensitivity, bool pollingRate);

  // The list index of a polling rate in Hz; empty for a rate that is not in the list.
  static std::optional<int> indexForPollingRateValue(int value);

 private:
  void explainMissing();
  QString sensitivityTip() const;
  void awakeFromNib();
  void connectControls();
  void send(const vorn::PropertyList& settings);
  void updateValue(int value, std::string_view forSetting);

  void xDpiSliderValueChange();
  void yDpiSliderValueChange();
  void finishTrackDPIX();
  void finishTrackDPIY();
  void tickIndependentXY();
  void tickOnTheFly();
  void tickAcceleration();
  void accelerationSliderValueChange();
  void selectPollingRateValue(int index);

  // Values of the sliders that the user has chosen and that are not sent yet.
  struct ChosenAxes {
    std::optional<int> x;
    std::optional<int> y;
  };
  // Takes what waits to be sent.
  ChosenAxes takePendingCommits();
  // Lets it wait again, where the sliders do not say the same by now.
  void restorePendingCommits(const ChosenAxes& chosen);
  void trackX();
  void trackY();

  void showAxes(bool isIndependent, std::optional<int> x, std::optional<int> y);
  std::array<StageChip*, vorn::keys::maximumStages> stageChips() const;
  void showStageChips();
  // Shows in the fields what the sliders say, and whether the current stage says the same.
  void showSliderValues();
  void clickStageChip(int index);
  // Asks for these stages, one of which is the current one and gives the sensitivity.
  // What makes one of the stages the current one.
  static vorn::PropertyList currentValues(const vorn::PropertyList& stages, int index);
  // OK of the sheet would change nothing.
  bool areStagesInForce() const;
  void makeCurrent(const vorn::PropertyList& stages, int index);
  void showPointer();

  // --- The stages sheet
  void createStagesSheet();
  void clickSensitivityStages();
  void clickStageAdd();
  void clickStageDelete();
  void xDpiStageSliderValueChange();
  void yDpiStageSliderValueChange();
  void tickStageIndependentXY();
  void clickStageOK();
  void clickStageCancel();
  // The profile whose stages an open sheet shows is no longer the current one: as by Cancel, and says so.
  void giveUpStagesSheet();
  void tableViewSelectionDidChange();

  int selectedStage() const;  // row, or -1
  void selectCurrentStage();
  void loadStagesArray();
  // Shows the working copy; the selected row stays selected as long as there is such a row.
  void reloadStagesTable();
  // To a screen reader, the cells of a closed sheet would be showing.
  void showStageRows(bool shown);
  void replaceSelectedStage(const vorn::PropertyList& stage);
  void showStageEditors();
  void showStageFields();
  // The number of stages. Enables what can be done with as many, and with the selected one.
  int numberOfRowsInTableView();

  std::unique_ptr<Ui::MousePerformanceController> mUi;
  QPointer<QDialog> mSensitivityStagesView;  // lies on a window that may go first
  std::unique_ptr<Ui::SensitivityStagesSheet> mStagesUi;
  StagesTableModel* mStagesModel;
  std::unique_ptr<DragCommit> mXCommit;
  std::unique_ptr<DragCommit> mYCommit;
  bool mIsEnabled = true;
  bool mOffersSensitivity = true;
  bool mOffersPollingRate = true;

  // The values last loaded from the settings, in DPI, and on the way of a drag of X also those last shown. 0: no
  // settings were loaded yet, and the sliders do nothing. Shared by the whole process; a new tab begins at 0.
  static int lastDpiX;
  static int lastDpiY;

  vorn::PropertyList performanceSettingsDict;
  vorn::PropertyList deviceSettingsDict;
  vorn::PropertyList mStagesArray = vorn::PropertyList::array();
  MousePerformanceDelegate* mousePerformanceDelegate = nullptr;
  QPointer<QWidget> performanceWindow;
};

}  // namespace skarn
