// Drives a fake-engine process; FakeEngine/FakeEngine.h describes its commands.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "model/PropertyList.h"
#include "support/ChildProcess.h"

namespace vorn::test {

class FakeEngineProcess {
 public:
  struct Request {
    std::int32_t messageID = 0;
    PropertyList body;  // none when the request had no data or none that can be decoded
    friend bool operator==(const Request&, const Request&) = default;
  };

  // Starts it on the session bus of this process, obeying the commands beforehand, and waits until its port exists.
  // Aborts the test program with a message when that fails.
  explicit FakeEngineProcess(const std::vector<std::string>& commands = {}, const std::string& portName = {});
  ~FakeEngineProcess();  // ends it
  FakeEngineProcess(const FakeEngineProcess&) = delete;
  FakeEngineProcess& operator=(const FakeEngineProcess&) = delete;

  // Gives one command and waits until it is obeyed; false when it was not understood or the process is gone.
  bool obey(const std::string& command);

  // The next request not yet taken (with this message ID, if one is given); nothing when none came in time.
  std::optional<Request> waitForRequest(std::optional<std::int32_t> messageID = std::nullopt,
                                        std::chrono::milliseconds deadline = ChildProcess::defaultDeadline);
  // Every request that came up to now and was not taken, in order.
  std::vector<Request> takeRequests();
  // Waits until an answer was sent: "success", "no-port", "timeout" or "failed"; nothing when none was in time.
  std::optional<std::string> waitForSent(std::chrono::milliseconds deadline = ChildProcess::defaultDeadline);

  // For killing, stopping and waiting, and for lines of its output.
  ChildProcess& process() { return mProcess; }

 private:
  ChildProcess mProcess;
};

// A file with this property list for the life of the object, as the commands name them.
class PropertyListFile {
 public:
  explicit PropertyListFile(const PropertyList& contents);
  ~PropertyListFile();
  PropertyListFile(const PropertyListFile&) = delete;
  PropertyListFile& operator=(const PropertyListFile&) = delete;

  const std::string& path() const { return mPath; }

 private:
  std::string mPath;
};

}  // namespace vorn::test
