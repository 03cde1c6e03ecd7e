// A macro of 10,000 events in the real window, with the real engine: how long it takes from its selection to its drawn
// lines, and how long each step of scrolling through them draws. Run it with QT_QPA_PLATFORM=offscreen where there is
// no display.
#include <QApplication>
#include <QScrollBar>
#include <QTabWidget>
#include <QTableView>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <vector>

#include "app/BusNotifier.h"
#include "app/MouseMainWindow.h"
#include "app/Vorn_ConfiguratorAppDelegate.h"
#include "engine/PortEngineLink.h"
#include "macros/MouseMacrosController.h"
#include "model/SettingsKeys.h"
#include "model/VrCoreUtility.h"
#include "platform/Localization.h"
#include "ports/DistributedNotificationCenter.h"
#include "support/ChildProcess.h"
#include "support/PrivateBus.h"
#include "support/StandardBundle.h"
#include "widgets/Palettes.h"
#include "widgets/SkarnStyle.h"

namespace {

using Clock = std::chrono::steady_clock;
namespace keys = vorn::keys;

constexpr int eventCount = 10'000;
constexpr int selections = 20;
constexpr int scrollSteps = 500;

struct Times {
  double median = 0, worst = 0;  // milliseconds
};

template <typename Work>
Times measure(int rounds, Work work) {
  std::vector<double> times;
  for (int round = 0; round < rounds; ++round) {
    const auto start = Clock::now();
    work(round);
    times.push_back(std::chrono::duration<double, std::milli>(Clock::now() - start).count());
  }
  std::ranges::sort(times);
  return {times[times.size() / 2], times.back()};
}

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

void measureWindow() {
  skarn::BusNotifier notifier(vorn::BusConnection::forThisThread());
  vorn::PortEngineLink link;
  skarn::MouseMainWindow window;
  skarn::Vorn_ConfiguratorAppDelegate delegate(window,
                                               {.link = link,
                                                .notifications = vorn::DistributedNotificationCenter::defaultCenter(),
                                                .openAddress = [](const QUrl&) {},
                                                .report = [](const std::string&) {}});
  bool isStarted = false;
  QObject::connect(&delegate, &skarn::Vorn_ConfiguratorAppDelegate::startUpFinished, [&] { isStarted = true; });
  delegate.applicationDidFinishLaunching({});
  while (!isStarted) QApplication::processEvents(QEventLoop::WaitForMoreEvents);

  auto* tab = window.findChild<skarn::MouseMacrosController*>();
  window.findChild<QTabWidget*>(QStringLiteral("mMouseTabView"))->setCurrentWidget(tab);
  window.repaint();
  QTableView& lines = *tab->mMacroDetailsTableView();
  const Times shown = measure(selections, [&](int) {
    tab->mMacroTableView()->clearSelection();
    tab->mMacroTableView()->selectRow(0);
    QApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
    window.repaint();
  });
  if (lines.model()->rowCount() != 2 * eventCount - 1) {
    std::printf("the lines did not come: %d\n", lines.model()->rowCount());
    return;
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
}

}  // namespace

int main(int argc, char** argv) {
  const vorn::test::PrivateBus bus;
  QApplication application(argc, argv);
  QApplication::setStyle(new skarn::SkarnStyle);
  QApplication::setPalette(skarn::lightPalette());
  QApplication::setQuitOnLastWindowClosed(false);
  skarn::installTranslations(QStringLiteral("en"));
  std::string folder = (std::filesystem::temp_directory_path() / "skarn-bench-XXXXXX").string();
  if (mkdtemp(folder.data()) == nullptr) return 1;
  const auto data = vorn::VrCoreUtility::convertDictionaryToData(bundleWithLongMacro());
  std::ofstream(folder + "/settings.plist", std::ios::binary)
      .write(reinterpret_cast<const char*>(data->data()), static_cast<std::streamsize>(data->size()));
  vorn::test::ChildProcess engine({"sh", "-c", "exec \"$@\" 2>&1", "sh", ENGINE_PROGRAM, "--state-dir", folder});
  engine.waitForLine([](const std::string& line) { return line.find("ready") != std::string::npos; });
  measureWindow();
  engine.signal(15);
  engine.waitForEnd();
  std::filesystem::remove_all(folder);
  return 0;
}
