// The engine as a whole: its parts, put together and run until it is told to end.
#pragma once

#include "core-engine/ClientRegistry.h"
#include "core-engine/FactoryDefaults.h"
#include "core-engine/Log.h"
#include "core-engine/Options.h"
#include "core-engine/PosixFileSystem.h"
#include "core-engine/ReplyPorts.h"
#include "core-engine/RequestDispatcher.h"
#include "core-engine/SettingsFile.h"
#include "core-engine/SettingsStore.h"
#include "core-engine/VirtualDevice.h"

namespace vorn::engine {

class CoreEngine {
 public:
  // The paths in the options are absolute; an empty defaultsFile is none. The log outlives the engine.
  CoreEngine(const Options& options, Log& log);

  // Takes the engine's port and the settings folder, and serves requests until SIGTERM or SIGINT. Returns the exit
  // status of the program, 1 after a failure, which is in the log. Call it once, while the process has one thread.
  int run();

 private:
  bool claimFolder();
  void logReady();

  Log& mLog;
  PosixFileSystem mFiles;
  BusReplyPorts mReplyPorts;
  SettingsFile mFile;
  SettingsStore mStore;
  FactoryDefaults mDefaults;
  VirtualDevice mDevice;
  ClientRegistry mClients;
  RequestDispatcher mDispatcher;
};

}  // namespace vorn::engine
