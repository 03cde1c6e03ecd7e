// What the sheets of the Performance, Lighting and Maintenance tabs and of the window itself promise.
#include <QColorDialog>
#include <QTableView>

#include "app/SheetPromises.h"
#include "support/QtTests.h"

using namespace skarn;
using namespace skarn::test;

namespace {

Sent stages(const SheetBench& bench, int row) {
  const PropertyList all = bench.profile()[keys::Stages];
  const PropertyList& stage = all.at(row);
  return {{updateOfProfile(
              0, PropertyList::dictionary({{keys::Stages, all},
                                           {keys::StageValue, row},
                                           {keys::DPIX, stage[keys::StageDpiX].toInt()},
                                           {keys::DPIY, stage[keys::StageDpiY].toInt()},
                                           {keys::IndependentXYOn, stage[keys::StageIndependentXY].toInt()}}))},
          {}};
}
Sent colored(const SheetBench& bench) {
  const PropertyList present = bench.profile()[keys::LEDColors];
  const PropertyList color =
      present.at(0).merging(PropertyList::dictionary({{keys::Red, 0.2}, {keys::Green, 0.0}, {keys::Blue, 0.8}}));
  return {{updateOfProfile(0, PropertyList::dictionary({{keys::LEDColors, present.replacing(0, color)}}))}, {}};
}

std::vector<SheetCase> sheetsOfWindow() {
  return {
      {.name = "stages",
       .window = "mSensitivityStagesView",
       .from = "mSensitivityStages",
       .field = "mStagesTable",
       .open =
           [](SheetBench& bench) {
             bench.showTab("MousePerformanceController");
             bench.press("mSensitivityStages");
           },
       .reason = "lkeyStagesUnchanged",
       .change = [](SheetBench& bench) { bench.find<QTableView>("mStagesTable")->selectRow(0); },
       .confirmed = [](const SheetBench& bench) { return stages(bench, 0); },
       .staysEnabled = true},
      {.name = "colour",
       .window = "mMainColorPanel",
       .from = "mMainColor",
       .field = nullptr,
       .open =
           [](SheetBench& bench) {
             bench.showTab("MouseLightingController");
             bench.press("mMainColor");
           },
       .reason = "lkeyColorIsSo",
       .change =
           [](SheetBench& bench) { bench.find<QColorDialog>("mMainColorPanel")->setCurrentColor(QColor(51, 0, 204)); },
       .confirmed = colored,
       .staysEnabled = true,
       .isToolkits = true},
      {.name = "history",
       .window = "mHistorySheet",
       .from = "mHistoryButton",
       .field = "mHistoryTable",
       .open = [](SheetBench& bench) { bench.press("mHistoryButton"); },
       .reason = "lkeyHistoryIsHere",
       .change = [](SheetBench& bench) { bench.key("mHistoryTable", Qt::Key_Down); },
       .confirmed =
           [](const SheetBench&) {
             return Sent{{}, {{vorn::HistoryCall::GoTo, 0}}};
           },
       .staysOpen = true},
      {.name = "mice",
       .window = "mMouseSheet",
       .from = "mChooseMouse",
       .field = "mMouseTable",
       .open = [](SheetBench& bench) { bench.press("mChooseMouse"); },
       .reason = "lkeyMiceIsInUse",
       .change = [](SheetBench& bench) { bench.key("mMouseTable", Qt::Key_Up); },
       .confirmed =
           [](const SheetBench&) {
             return Sent{{}, {}, {{vorn::MiceCall::Choose, "usb-1"}}};
           },
       .staysOpen = true},
      {.name = "no mouse",
       .window = "mDeviceConnectionWindow",
       .from = "mHelpButton",
       .field = "mDeviceConnectionOK",
       .open = [](SheetBench& bench) { bench.hub().showErrorDialog(); },
       .confirmed = [](const SheetBench&) { return Sent{}; }}};
}

std::vector<AlertCase> alertsOfWindow() {
  return {{.name = "restoring on the Maintenance tab",
           .from = "mRestoreSettings",
           .action = "lkeyRestoreAction",
           .open =
               [](SheetBench& bench) {
                 bench.showTab("MouseMaintenanceController");
                 bench.press("mRestoreSettings");
               },
           .confirmed =
               [](const SheetBench& bench) {
                 const PropertyList power = PropertyList::dictionary({{keys::BrightnessNormal, 4},
                                                                      {keys::ProfileOSDOn, true},
                                                                      {keys::PowerSaver, 3},
                                                                      {keys::BatteryCriticalLevel, 1},
                                                                      {keys::BrightnessBattery, 2}});
                 return Sent{{updateOfProfile(0, bench.profile(1).with(keys::ProfileName, "Work").merging(power))}, {}};
               }}};
}

}  // namespace

class MouseMainWindowSheetsTest : public SheetPromises {
  Q_OBJECT

 public:
  MouseMainWindowSheetsTest() : SheetPromises(sheetsOfWindow(), alertsOfWindow()) {}
};

SKARN_QTEST(MouseMainWindowSheetsTest)
#include "MouseMainWindow_sheets_test.moc"
