#include "core-engine/requests/RequestIntake.h"

#include <algorithm>
#include <utility>

#include "model/RecordLimits.h"
#include "model/SettingsKeys.h"
#include "protocol/EngineProtocol.h"

namespace vorn::engine {

std::size_t maximumBodySize(std::int32_t messageID) {
  // A record may take some more bytes in a message than it counts.
  constexpr std::size_t oneRecord = 4 * maximumRecordSize;
  constexpr std::size_t allProfiles = keys::maximumProfiles * oneRecord;
  return messageID == static_cast<std::int32_t>(MessageID::ReplaceAllProfiles) ? allProfiles : oneRecord;
}

RequestIntake::RequestIntake(Log& log, Scheduler& scheduler, Serve serve, AskForProcess askForProcess)
    : mLog(log), mScheduler(scheduler), mServe(std::move(serve)), mAskForProcess(std::move(askForProcess)) {}

RequestIntake::~RequestIntake() {
  mScheduler.cancel(mPauseTicket);
}

std::size_t RequestIntake::costOf(std::size_t size) {
  return size > maximumSmallSize ? size : size + overhead;
}

std::size_t& RequestIntake::waitingOf(std::size_t size) {
  return size > maximumSmallSize ? mLargeWaiting : mSmallWaiting;
}

const char* RequestIntake::obstacle(const Sender* sender, std::size_t size, bool isFirst) const {
  if (!isFirst && (sender->requests.size() >= maximumWaiting || sender->size + size > maximumWaitingSize)) {
    return "too many of its requests wait";
  }
  const bool isSmall = size <= maximumSmallSize;
  const std::size_t maximum = isFirst ? maximumSmallWaiting + maximumFirstWaiting : maximumSmallWaiting;
  const bool hasRoom = isSmall ? mSmallWaiting + costOf(size) <= maximum
                               : mLargeWaiting == 0 || mLargeWaiting + size <= maximumLargeWaiting;
  return hasRoom ? nullptr : "too many requests wait";
}

std::optional<Bytes> RequestIntake::receive(const LocalMessagePort::Message& message) {
  const std::size_t size = message.data.size();
  std::optional<Bytes> taken;
  if (size > maximumBodySize(message.messageID)) {
    reportRefusal(message.sender, "a body of " + std::to_string(size) + " bytes");
  } else if (Waiting* waiting = place(std::string(message.sender), size)) {
    *waiting = {message.messageID, Bytes(message.data.begin(), message.data.end())};
    taken.emplace();
  }
  noteArrival();
  return taken;
}

bool RequestIntake::receive(const std::string& connection, Work work) {
  Waiting* waiting = place(connection, 0);
  if (waiting != nullptr) waiting->work = std::move(work);
  noteArrival();
  return waiting != nullptr;
}

RequestIntake::Waiting* RequestIntake::place(const std::string& connection, std::size_t size) {
  auto sender = mSenders.find(connection);
  const Sender* known = sender != mSenders.end() ? &sender->second : nullptr;
  if (const char* reason = obstacle(known, size, known == nullptr || known->requests.empty())) {
    reportRefusal(connection, reason);
    return nullptr;
  }
  if (known == nullptr) sender = add(connection);
  sender->second.size += size;
  waitingOf(size) += costOf(size);
  return &sender->second.requests.emplace_back();
}

void RequestIntake::noteArrival() {
  if (++mArrivals >= maximumArrivals) serveNext();
}

RequestIntake::Senders::iterator RequestIntake::add(std::string_view name) {
  const auto sender = mSenders.try_emplace(std::string(name)).first;
  sender->second.turn = std::make_shared<std::uint64_t>(++mLastTurn);
  mQueue.push_back(sender);
  const auto known = mProcesses.find(name);
  if (known != mProcesses.end()) {
    if (known->second) joinProcess(sender->second, *known->second);
  } else if (mAskForProcess && mSenders.size() > fewConnections) {
    if (mProcesses.size() >= maximumKnownProcesses) mProcesses.clear();
    mProcesses[sender->first];
    mAskForProcess(sender->first, [this, isAlive = std::weak_ptr(mIsAlive),
                                   asked = sender->first](std::optional<std::uint32_t> process) {
      if (!isAlive.expired()) noteProcess(asked, process);
    });
  }
  return sender;
}

void RequestIntake::noteProcess(const std::string& name, std::optional<std::uint32_t> process) {
  const std::uint32_t number = process.value_or(0);
  mProcesses[name] = number;
  if (const auto sender = mSenders.find(name); sender != mSenders.end()) joinProcess(sender->second, number);
}

// The turns of a process that has none are those of its first connection.
void RequestIntake::joinProcess(Sender& sender, std::uint32_t process) {
  const auto known = mTurns.find(process);
  if (const Turn turn = known != mTurns.end() ? known->second.lock() : nullptr) {
    sender.turn = turn;
    return;
  }
  std::erase_if(mTurns, [](const auto& entry) { return entry.second.expired(); });
  mTurns[process] = sender.turn;
}

bool RequestIntake::pauses(const Sender& sender) const {
  return mHasPauses && sender.requests.size() > patientWaiting && mScheduler.now() < sender.pausesUntil;
}

RequestIntake::Queue::iterator RequestIntake::nextTurn() {
  auto next = mQueue.end();
  for (auto each = mQueue.begin(); each != mQueue.end(); ++each) {
    const Sender& sender = (*each)->second;
    if ((next == mQueue.end() || *sender.turn < *(*next)->second.turn) && !pauses(sender)) next = each;
  }
  return next;
}

bool RequestIntake::serveNext() {
  mArrivals = 0;
  if (mService) return false;
  if (const auto turn = nextTurn(); turn != mQueue.end()) serve(turn);
  if (mService) return false;
  const bool hasNext = nextTurn() != mQueue.end();
  if (!hasNext) awaitPauses();
  return hasNext;
}

void RequestIntake::serve(const Queue::iterator& turn) {
  const auto entry = *turn;
  const std::string name = entry->first;
  mQueue.erase(turn);
  Sender& sender = entry->second;
  const Waiting request = std::move(sender.requests.front());
  sender.requests.pop_front();
  sender.size -= request.data.size();
  mService = Service{entry, request.data.size(), mScheduler.now()};
  mIsBeginning = true;
  const auto done = [this] { noteServed(); };
  request.work ? request.work(done) : mServe({request.messageID, request.data, name}, done);
  mIsBeginning = false;
}

void RequestIntake::noteServed() {
  const Service service = *std::exchange(mService, std::nullopt);
  waitingOf(service.size) -= costOf(service.size);
  Sender& sender = service.sender->second;
  *sender.turn = ++mLastTurn;
  if (sender.requests.empty()) {
    mSenders.erase(service.sender);
  } else {
    const Scheduler::Duration ended = mScheduler.now();
    sender.pausesUntil = ended + pauseFactor * (ended - service.begun);
    mQueue.push_back(service.sender);
  }
  if (!mIsBeginning && mReadyHandler) mReadyHandler();
}

void RequestIntake::awaitPauses() {
  if (mQueue.empty() || mPauseTicket != 0) return;
  Scheduler::Duration first = Scheduler::Duration::max();
  for (const auto& [name, sender] : mSenders) first = std::min(first, sender.pausesUntil);
  mPauseTicket = mScheduler.after(first - mScheduler.now(), [this] {
    mPauseTicket = 0;
    if (mReadyHandler) mReadyHandler();
  });
}

void RequestIntake::reportRefusal(std::string_view sender, const std::string& reason) {
  ++mRefusals;
  const Scheduler::Duration now = mScheduler.now();
  if (mReported && now - *mReported < refusalReportInterval) return;
  mReported = now;
  mLog.line("messages refused: " + std::to_string(mRefusals) + ", the last one of client " + std::string(sender) +
            ": " + reason);
  mRefusals = 0;
}

}  // namespace vorn::engine
