// What arrives at the engine's port waits here for its turn. The requests of one connection are served in the order of
// their arrival; connections take turns, so that none of them, however much it sends, keeps the others waiting. One
// that sends without awaiting its answers pauses after each of its requests for some times as long as that took, so
// that the engine is free for others most of the time. One thread, the engine's.
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
  // Serves the message and calls done at its end: within the call, or later.
  using Serve = std::function<void(const LocalMessagePort::Message& message, std::function<void()> done)>;

  // Of one connection so many requests wait at most, and so many bytes beside a single larger one.
  static constexpr std::size_t maximumWaiting = 64;
  static constexpr std::size_t maximumWaitingSize = std::size_t{8} * 1024 * 1024;
  // Where this many bytes of all connections wait, a connection that has one request waiting gets no further one in.
  static constexpr std::size_t maximumTotalSize = std::size_t{16} * 1024 * 1024;
  // So many messages may arrive before one is served in between: a flood must not keep what waits from its turn.
  static constexpr std::size_t maximumArrivals = 16;
  // A connection with more requests waiting than this pauses, so many times as long as its last one took.
  static constexpr std::size_t patientWaiting = 16;
  static constexpr int pauseFactor = 4;
  // Refusals are told in the log once in this time.
  static constexpr Scheduler::Duration refusalReportInterval = std::chrono::seconds(1);

  // The log and the scheduler outlive the intake.
  RequestIntake(Log& log, Scheduler& scheduler, Serve serve);
  ~RequestIntake();
  RequestIntake(const RequestIntake&) = delete;
  RequestIntake& operator=(const RequestIntake&) = delete;

  // Is told when serveNext() may find something again: a pause is over, or a request has been served that was not
  // served within the call.
  void setReadyHandler(std::function<void()> handler) { mReadyHandler = std::move(handler); }

  // The callback of the engine's port: keeps the message for its turn. Nothing where it is refused: its body is too
  // large, or its sender has too much waiting.
  std::optional<Bytes> receive(const LocalMessagePort::Message& message);

  // Serves the request whose turn it is, if there is one and none is being served. True when there is another one for
  // which nothing has to be awaited.
  bool serveNext();

  // Whether nothing waits and nothing is being served.
  bool isEmpty() const { return mSenders.empty(); }
  // From now on nobody pauses.
  void endPauses() { mHasPauses = false; }

 private:
  struct Waiting {
    std::int32_t messageID = 0;
    Bytes data;
  };
  struct Sender {
    std::deque<Waiting> requests;
    std::size_t size = 0;  // of their bodies
    Scheduler::Duration pausesUntil{};
  };

  struct Service {
    std::string sender;
    Scheduler::Duration begun{};
  };

  bool pauses(const Sender& sender) const;
  void serve(std::deque<std::string>::iterator turn);
  void noteServed();
  // The first in turn that does not pause.
  std::deque<std::string>::iterator nextTurn();
  void awaitPauses();
  bool hasRoom(const Sender& sender, std::size_t size) const;
  void reportRefusal(std::string_view sender, const std::string& reason);

  Log& mLog;
  Scheduler& mScheduler;
  Serve mServe;
  std::function<void()> mReadyHandler;
  Scheduler::Ticket mPauseTicket = 0;
  bool mHasPauses = true;
  bool mIsBeginning = false;                            // a request may be served within the call
  std::optional<Service> mService;                      // of the request being served
  std::map<std::string, Sender, std::less<>> mSenders;  // those who have requests waiting or one being served
  std::deque<std::string> mTurns;                       // the same without the one being served, the next one first
  std::size_t mTotalSize = 0;
  std::size_t mArrivals = 0;  // since a request was served
  std::size_t mRefusals = 0;  // since they were reported
  std::optional<Scheduler::Duration> mReported;
};

}  // namespace vorn::engine
