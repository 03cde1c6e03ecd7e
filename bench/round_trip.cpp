// A change from the call of its control's operation to the redrawn window, with the real engine, beside the bare round
// trip of the bus. Prints medians; run it with QT_QPA_PLATFORM=offscreen where there is no display.
#include <QApplication>
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
#include "model/SettingsKeys.h"
#include "model/VrCoreUtility.h"
#include "platform/Localization.h"
#include "ports/DistributedNotificationCenter.h"
#include "ports/MessagePort.h"
#include "support/ChildProcess.h"
#include "support/PrivateBus.h"
#include "support/StandardBundle.h"
#include "widgets/Palettes.h"
#include "widgets/SkarnStyle.h"

namespace {

using Clock = std::chrono::steady_clock;

constexpr int rounds = 200;

template <typename Work>
double medianMilliseconds(Work work) {
  std::vector<double> times;
  for (int round = 0; round < rounds; ++round) {
    const auto start = Clock::now();
    work(round);
    times.push_back(std::chrono::duration<double, std::milli>(Clock::now() - start).count());
  }
  std::nth_element(times.begin(), times.begin() + rounds / 2, times.end());
  return times[rounds / 2];
}

void measure(const char* name, const vorn::PropertyList& bundle, double budget) {
  namespace keys = vorn::keys;
  std::string folder = (std::filesystem::temp_directory_path() / "skarn-bench-XXXXXX").string();
  if (mkdtemp(folder.data()) == nullptr) return;
  const auto data = vorn::VrCoreUtility::convertDictionaryToData(bundle);
  std::ofstream(folder + "/settings.plist", std::ios::binary)
      .write(reinterpret_cast<const char*>(data->data()), static_cast<std::streamsize>(data->size()));
  vorn::test::ChildProcess engine({"sh", "-c", "exec \"$@\" 2>&1", "sh", ENGINE_PROGRAM, "--state-dir", folder});
  engine.waitForLine([](const std::string& line) { return line.find("ready") != std::string::npos; });
  {
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

    const double bare = medianMilliseconds([](int) { vorn::RemoteMessagePort::lookUp(vorn::enginePortName); });
    auto& hub = delegate.mMouseMainController();
    const double change = medianMilliseconds([&](int round) {
      hub.updateValueForSetting(vorn::PropertyList::dictionary({{keys::DPIX, 400 + round}, {keys::DPIY, 400 + round}}));
      // As the event loop would: layouts, paints, and what the redraw left to be deleted.
      QApplication::sendPostedEvents();
      QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    });
    std::printf("%-9s change to redrawn %6.2f ms (budget %.0f)   bare round trip of the bus %5.3f ms\n", name, change,
                budget, bare);
  }
  engine.signal(15);
  engine.waitForEnd();
  std::filesystem::remove_all(folder);
}

}  // namespace

int main(int argc, char** argv) {
  const vorn::test::PrivateBus bus;
  QApplication application(argc, argv);
  QApplication::setStyle(new skarn::SkarnStyle);
  QApplication::setPalette(skarn::lightPalette());
  QApplication::setQuitOnLastWindowClosed(false);
  skarn::installTranslations(QStringLiteral("en"));
  measure("standard", vorn::test::standardBundle(), 8);
  measure("large", vorn::test::largeBundle(), 40);
  return 0;
}
