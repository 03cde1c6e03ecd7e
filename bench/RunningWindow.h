// What the benches of the window share: the real window over the real engine with given settings, and how times are
// taken.
#pragma once

#include <QApplication>
#include <algorithm>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "app/BusNotifier.h"
#include "app/MouseMainWindow.h"
#include "app/Vorn_ConfiguratorAppDelegate.h"
#include "link/PortEngineLink.h"
#include "model/VrCoreUtility.h"
#include "platform/Localization.h"
#include "ports/DistributedNotificationCenter.h"
#include "support/ChildProcess.h"
#include "support/PrivateBus.h"
#include "widgets/Palettes.h"
#include "widgets/SkarnStyle.h"

namespace skarn::bench {

struct Times {
  double median = 0, worst = 0;  // milliseconds
};

template <typename Work>
Times measure(int rounds, Work work) {
  using Clock = std::chrono::steady_clock;
  std::vector<double> times;
  for (int round = 0; round < rounds; ++round) {
    const auto start = Clock::now();
    work(round);
    times.push_back(std::chrono::duration<double, std::milli>(Clock::now() - start).count());
  }
  std::ranges::sort(times);
  return {times[times.size() / 2], times.back()};
}

// A private bus and an application that looks as the program does.
class BenchApplication {
 public:
  BenchApplication(int& argc, char** argv) : mApplication(argc, argv) {
    QApplication::setStyle(new SkarnStyle);
    QApplication::setPalette(lightPalette());
    QApplication::setQuitOnLastWindowClosed(false);
    installTranslations(QStringLiteral("en"));
  }

 private:
  const vorn::test::PrivateBus mBus;
  QApplication mApplication;
};

// An engine process with these settings, in a folder of its own.
class EngineWithSettings {
 public:
  EngineWithSettings(const char* program, const vorn::PropertyList& bundle)
      : mFolder(folderWith(bundle)), mProcess({"sh", "-c", "exec \"$@\" 2>&1", "sh", program, "--state-dir", mFolder}) {
    mProcess.waitForLine([](const std::string& line) { return line.find("ready") != std::string::npos; });
  }
  ~EngineWithSettings() {
    mProcess.signal(15);
    mProcess.waitForEnd();
    std::filesystem::remove_all(mFolder);
  }
  EngineWithSettings(const EngineWithSettings&) = delete;
  EngineWithSettings& operator=(const EngineWithSettings&) = delete;

 private:
  static std::string folderWith(const vorn::PropertyList& bundle) {
    std::string folder = (std::filesystem::temp_directory_path() / "skarn-bench-XXXXXX").string();
    if (mkdtemp(folder.data()) == nullptr) throw std::runtime_error("no folder for the settings");
    const auto data = vorn::VrCoreUtility::convertDictionaryToData(bundle);
    std::ofstream(folder + "/settings.plist", std::ios::binary)
        .write(reinterpret_cast<const char*>(data->data()), static_cast<std::streamsize>(data->size()));
    return folder;
  }

  std::string mFolder;
  vorn::test::ChildProcess mProcess;
};

// The window, started up.
class RunningWindow {
 public:
  RunningWindow()
      : mNotifier(vorn::BusConnection::forThisThread()),
        mDelegate(window, {.link = mLink,
                           .notifications = vorn::DistributedNotificationCenter::defaultCenter(),
                           .openAddress = [](const QUrl&) { return true; },
                           .report = [](const std::string&) {}}) {
    bool isStarted = false;
    QObject::connect(&mDelegate, &Vorn_ConfiguratorAppDelegate::startUpFinished, [&] { isStarted = true; });
    mDelegate.applicationDidFinishLaunching({});
    while (!isStarted) QApplication::processEvents(QEventLoop::WaitForMoreEvents);
  }

  MouseMainController& hub() { return mDelegate.mMouseMainController(); }
  // As the event loop would: layouts, paints, and what a redraw left to be deleted.
  static void handlePostedEvents() {
    QApplication::sendPostedEvents();
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }

 private:
  BusNotifier mNotifier;
  vorn::PortEngineLink mLink;

 public:
  MouseMainWindow window;

 private:
  Vorn_ConfiguratorAppDelegate mDelegate;
};

}  // namespace skarn::bench
