// What arrives at the engine's port waits here for its turn. The requests of one connection are served in the order of
// their arrival; connections take turns, so that none of them, however much it sends, keeps the others waiting. Where
// many connections wait, those of one process share its turns, and so do all that have gone since. One that sends
// without awaiting its answers pauses after each of its requests for some times as long as that took, so that the
// engine is free for others most of the time. What a connection that has gone left here is served all the same: who
// asks for a change need not stay for it. One thread, the engine's.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <memory>
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

  // Does something and calls done at its end: within the call, or later.
  using Work = std::function<void(std::function<void()> done)>;

  // Tells the process that has a connection; nothing where the connection has gone. Calls told once, now or later.
  using ToldProcess = std::function<void(std::optional<std::uint32_t> process)>;
  using AskForProcess = std::function<void(const std::string& sender, ToldProcess told)>;

  // Of one connection so many requests wait at most, and so many bytes beside a single larger one.
  static constexpr std::size_t maximumWaiting = 64;
  static constexpr std::size_t maximumWaitingSize = std::size_t{8} * 1024 * 1024;
  // A body up to this size is small. So many bytes of small ones wait at most, each of them counted with what it takes
  // besides, and so many more of those that are their connection's only one; so many of larger ones, or a single
  // one. The request that is being served still counts.
  static constexpr std::size_t maximumSmallSize = std::size_t{64} * 1024;
  static constexpr std::size_t maximumSmallWaiting = std::size_t{8} * 1024 * 1024;
  static constexpr std::size_t maximumFirstWaiting = std::size_t{4} * 1024 * 1024;
  static constexpr std::size_t maximumLargeWaiting = std::size_t{16} * 1024 * 1024;
  static constexpr std::size_t overhead = 1024;
  // Where more connections than this wait, a further one is asked for its process. So many answers are kept.
  static constexpr std::size_t fewConnections = 4;
  static constexpr std::size_t maximumKnownProcesses = 1024;
  // So many messages may arrive before one is served in between: a flood must not keep what waits from its turn.
  static constexpr std::size_t maximumArrivals = 16;
  // A connection with more requests waiting than this pauses, so many times as long as its last one took.
  static constexpr std::size_t patientWaiting = 16;
  static constexpr int pauseFactor = 4;
  // Refusals are told in the log once in this time.
  static constexpr Scheduler::Duration refusalReportInterval = std::chrono::seconds(1);

  // The log and the scheduler outlive the intake. Without askForProcess nothing is known of processes.
  RequestIntake(Log& log, Scheduler& scheduler, Serve serve, AskForProcess askForProcess = {});
  ~RequestIntake();
  RequestIntake(const RequestIntake&) = delete;
  RequestIntake& operator=(const RequestIntake&) = delete;

  // Is told when serveNext() may find something again: a pause is over, or a request has been served that was not
  // served within the call.
  void setReadyHandler(std::function<void()> handler) { mReadyHandler = std::move(handler); }

  // The callback of the engine's port: keeps the message for its turn. Nothing where it is refused: its body is too
  // large, or too much waits of its sender or of all.
  std::optional<Bytes> receive(const LocalMessagePort::Message& message);

  // Something else that the connection asks for, in turn with its requests. False where it is refused.
  bool receive(const std::string& connection, Work work);

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
    Work work{};  // in place of the message
  };
  // Shared by the connections that take turns together: the lower, the sooner.
  using Turn = std::shared_ptr<std::uint64_t>;
  struct Sender {
    std::deque<Waiting> requests;
    std::size_t size = 0;  // of their bodies
    Scheduler::Duration pausesUntil{};
    Turn turn;
  };
  using Senders = std::map<std::string, Sender, std::less<>>;
  using Queue = std::deque<Senders::iterator>;

  struct Service {
    Senders::iterator sender;
    std::size_t size = 0;  // of the body
    Scheduler::Duration begun{};
  };

  bool pauses(const Sender& sender) const;
  void serve(const Queue::iterator& turn);
  void noteServed();
  // The first in turn that does not pause.
  Queue::iterator nextTurn();
  void awaitPauses();
  // Keeps a place in the queue of the connection for so many bytes; null, and told, where there is no room.
  Waiting* place(const std::string& connection, std::size_t size);
  void noteArrival();
  // Why there is no room for the body; null where there is. isFirst: nothing else of the sender waits.
  const char* obstacle(const Sender* sender, std::size_t size, bool isFirst) const;
  // The counter that the body belongs to, and what it adds there.
  std::size_t& waitingOf(std::size_t size);
  static std::size_t costOf(std::size_t size);
  Senders::iterator add(std::string_view name);
  void noteProcess(const std::string& name, std::optional<std::uint32_t> process);
  void joinProcess(Sender& sender, std::uint32_t process);
  void reportRefusal(std::string_view sender, const std::string& reason);

  Log& mLog;
  Scheduler& mScheduler;
  Serve mServe;
  AskForProcess mAskForProcess;
  std::function<void()> mReadyHandler;
  Scheduler::Ticket mPauseTicket = 0;
  bool mHasPauses = true;
  bool mIsBeginning = false;        // a request may be served within the call
  std::optional<Service> mService;  // of the request being served
  Senders mSenders;                 // those who have requests waiting or one being served
  Queue mQueue;                     // the same without the one being served, in their order
  std::uint64_t mLastTurn = 0;
  std::map<std::uint32_t, std::weak_ptr<std::uint64_t>> mTurns;  // of processes
  // Of connections that were asked for theirs; nothing until it is told, 0 of one that has gone.
  std::map<std::string, std::optional<std::uint32_t>, std::less<>> mProcesses;
  std::size_t mSmallWaiting = 0;
  std::size_t mLargeWaiting = 0;
  std::size_t mArrivals = 0;  // since a request was served
  std::size_t mRefusals = 0;  // since they were reported
  std::optional<Scheduler::Duration> mReported;
  std::shared_ptr<bool> mIsAlive = std::make_shared<bool>(true);  // a process may be told when the intake is gone
};

}  // namespace vorn::engine
