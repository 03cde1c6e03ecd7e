// What arrives at the engine's port waits here for its turn. The requests of one connection are served in the order of
// their arrival; connections take turns, so that none of them, however much it sends, keeps the others waiting. One
// thread, the engine's.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "core-engine/Log.h"
#include "core-engine/Scheduler.h"
#include "ports/MessagePort.h"

namespace vorn::engine {

// The largest body of a request with this ID, in bytes.
std::size_t maximumBodySize(std::int32_t messageID);

class RequestIntake {
 public:
  using Serve = std::function<void(const LocalMessagePort::Message& message)>;

  // Of one connection so many requests wait at most, and so many bytes beside a single larger one.
  static constexpr std::size_t maximumWaiting = 64;
  static constexpr std::size_t maximumWaitingSize = std::size_t{8} * 1024 * 1024;
  // Where this many bytes of all connections wait, a connection that has one request waiting gets no further one in.
  static constexpr std::size_t maximumTotalSize = std::size_t{16} * 1024 * 1024;
  // So many messages may arrive before one is served in between: a flood must not keep what waits from its turn.
  static constexpr std::size_t maximumArrivals = 64;
  // Refusals are told in the log once in this time.
  static constexpr Scheduler::Duration refusalReportInterval = std::chrono::seconds(1);

  // The log and the scheduler outlive the intake.
  RequestIntake(Log& log, const Scheduler& scheduler, Serve serve)
      : mLog(log), mScheduler(scheduler), mServe(std::move(serve)) {}

  // The callback of the engine's port: keeps the message for its turn. Nothing where it is refused: its body is too
  // large, or its sender has too much waiting.
  std::optional<Bytes> receive(const LocalMessagePort::Message& message);

  // Serves the request whose turn it is, if one waits. True while others wait.
  bool serveNext();

 private:
  struct Waiting {
    std::int32_t messageID = 0;
    Bytes data;
  };
  struct Sender {
    std::deque<Waiting> requests;
    std::size_t size = 0;  // of their bodies
  };

  bool hasRoom(const Sender& sender, std::size_t size) const;
  void reportRefusal(std::string_view sender, const std::string& reason);

  Log& mLog;
  const Scheduler& mScheduler;
  Serve mServe;
  std::map<std::string, Sender, std::less<>> mSenders;  // those who have requests waiting
  std::deque<std::string> mTurns;                       // the same, the next one first
  std::size_t mTotalSize = 0;
  std::size_t mArrivals = 0;  // since a request was served
  std::size_t mRefusals = 0;  // since they were reported
  std::optional<Scheduler::Duration> mReported;
};

}  // namespace vorn::engine
