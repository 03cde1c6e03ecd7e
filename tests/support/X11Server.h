// Xvfb with Openbox, for tests and benchmarks.
#pragma once

#include <memory>
#include <string>

#include "support/ChildProcess.h"

namespace vorn::test {

class X11Server {
 public:
  X11Server() = default;
  ~X11Server();  // ends both
  X11Server(const X11Server&) = delete;
  X11Server& operator=(const X11Server&) = delete;

  // With this number, or with a free one where it is negative; the variable DISPLAY names it then. False when it does
  // not start.
  bool start(int number = -1);
  // The folder takes its configuration. It is there some time after this returns.
  void startWindowManager(const std::string& folder);
  void stopWindowManager();

  int number() const { return mNumber; }
  ChildProcess& process() { return *mServer; }

 private:
  std::unique_ptr<ChildProcess> mServer;
  std::unique_ptr<ChildProcess> mOpenbox;
  int mNumber = -1;
};

// A number that no other test takes, for a display that is to be named before it is there.
int ownX11Number();

}  // namespace vorn::test
