// A macro of 10,000 events in the real window, with the real engine: how long it takes from its selection to its drawn
// lines, and how long each step of scrolling through them draws. Run it with QT_QPA_PLATFORM=offscreen where there is
// no display.
#include <QScrollBar>
#include <QTabWidget>
#include <QTableView>
#include <cstdio>

#include "RunningWindow.h"
#include "macros/MouseMacrosController.h"
#include "model/SettingsKeys.h"
#include "support/StandardBundle.h"

namespace {

namespace keys = vorn::keys;
using namespace skarn::bench;

constexpr int eventCount = 10'000;
constexpr int selections = 20;
constexpr int scrollSteps = 500;

// The standard bundle with one macro of many events in front.
vorn::PropertyList bundleWithLongMacro() {
  std::vector<vorn::PropertyList> events;
  for (int event = 0; event < eventCount; ++event) {
    events.push_back(vorn::PropertyList::dictionary({{keys::Command, 1 - event % 2},
                                                     {keys::Delay, event % 1000},
                                                     {keys::Page, 7},
                                                     {keys::Argument, 4 + event / 2 % 26}}));
  }
  const auto sequence = vorn::PropertyList::dictionary({{keys::Events, vorn::PropertyList::array(std::move(events))}});
  const auto macro = vorn::PropertyList::dictionary({{keys::MacroName, "Long"}, {keys::Sequence, sequence}});
  const vorn::PropertyList bundle = vorn::test::standardBundle();
  return bundle.with(keys::Macros, bundle[keys::Macros].replacing(0, macro));
}

}  // namespace

int main(int argc, char** argv) {
  const BenchApplication application(argc, argv);
  const EngineWithSettings engine(ENGINE_PROGRAM, bundleWithLongMacro());
  RunningWindow running;
  auto* tab = running.window.findChild<skarn::MouseMacrosController*>();
  running.window.findChild<QTabWidget*>(QStringLiteral("mMouseTabView"))->setCurrentWidget(tab);
  running.window.repaint();
  QTableView& lines = *tab->mMacroDetailsTableView();
  const Times shown = measure(selections, [&](int) {
    tab->mMacroTableView()->clearSelection();
    tab->mMacroTableView()->selectRow(0);
    RunningWindow::handlePostedEvents();
  });
  if (lines.model()->rowCount() != 2 * eventCount - 1) {
    std::printf("the lines did not come: %d\n", lines.model()->rowCount());
    return 1;
  }
  QScrollBar& bar = *lines.verticalScrollBar();
  const Times scrolled = measure(scrollSteps, [&](int step) {
    bar.setValue(bar.maximum() / scrollSteps * step);
    lines.viewport()->repaint();
  });
  std::printf(
      "%d events: selected to drawn %.1f ms, at worst %.1f (budget 100); a step of scrolling %.2f ms, at worst "
      "%.2f (a frame is 16.7)\n",
      eventCount, shown.median, shown.worst, scrolled.median, scrolled.worst);
  return 0;
}
