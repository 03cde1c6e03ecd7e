// Takes the application through its life: creates the hub, starts it up and ends it.
#pragma once

#include <QObject>
#include <optional>
#include <stop_token>
#include <thread>

#include "app/MouseMainController.h"

namespace skarn {

// How the application was launched.
struct LaunchInformation {
  // Whether this is a default launch ("NSApplicationLaunchIsDefaultLaunchKey"): a person started it. False for the
  // start at login, which waits for the engine however long it takes. Nothing when the launch does not say.
  std::optional<bool> isDefaultLaunch = true;
};

class Vorn_ConfiguratorAppDelegate : public QObject {
  Q_OBJECT

 public:
  // The window outlives the delegate.
  Vorn_ConfiguratorAppDelegate(MouseMainWindow& window, HubServices services);
  // Ends the background wait, if it is still going on.
  ~Vorn_ConfiguratorAppDelegate() override;

  MouseMainController& mMouseMainController() { return mHub; }

  void applicationWillFinishLaunching() {}  // nothing is to be done so early
  // Shows the window and returns; the start-up goes on from the event loop when the window has been painted. Where no
  // engine runs, the bus is asked to start it first, and the start-up waits until that has succeeded or failed.
  void applicationDidFinishLaunching(const LaunchInformation& launch);
  void applicationWillResignActive();
  void applicationWillTerminate();
  bool applicationShouldTerminateAfterLastWindowClosed() const { return true; }

 signals:
  // The window shows settings, the engine's or the default ones.
  void startUpFinished();

 private:
  void initializeDevice();
  void initializeDeviceAfterEngineStart();
  // Runs on the start-up wait thread: looks for the engine once a second, hands over to the main thread when it is
  // there and waits until that has initialised the device.
  void doLoopInBackground(const std::stop_token& stop);

  MouseMainWindow& window;
  vorn::EngineLink& mLink;
  StoppableSleep mSleep;
  MouseMainController mHub;
  std::jthread mStartUpThread;
};

}  // namespace skarn
