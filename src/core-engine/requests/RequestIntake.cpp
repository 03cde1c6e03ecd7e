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

RequestIntake::RequestIntake(Log& log, Scheduler& scheduler, Serve serve)
    : mLog(log), mScheduler(scheduler), mServe(std::move(serve)) {}

RequestIntake::~RequestIntake() {
  mScheduler.cancel(mPauseTicket);
}

bool RequestIntake::hasRoom(const Sender& sender, std::size_t size) const {
  return sender.requests.size() < maximumWaiting && sender.size + size <= maximumWaitingSize &&
         mTotalSize + size <= maximumTotalSize;
}

std::optional<Bytes> RequestIntake::receive(const LocalMessagePort::Message& message) {
  const std::size_t size = message.data.size();
  const auto known = mSenders.find(message.sender);
  std::optional<Bytes> taken = Bytes();
  if (size > maximumBodySize(message.messageID)) {
    reportRefusal(message.sender, "a body of " + std::to_string(size) + " bytes");
    taken.reset();
  } else if (known != mSenders.end() && !hasRoom(known->second, size)) {
    reportRefusal(message.sender, "too many of its requests wait");
    taken.reset();
  } else {
    if (known == mSenders.end()) mTurns.emplace_back(message.sender);
    Sender& sender = known != mSenders.end() ? known->second : mSenders[std::string(message.sender)];
    sender.requests.push_back({message.messageID, Bytes(message.data.begin(), message.data.end())});
    sender.size += size;
    mTotalSize += size;
  }
  if (++mArrivals >= maximumArrivals) serveNext();
  return taken;
}

bool RequestIntake::pauses(const Sender& sender) const {
  return mHasPauses && sender.requests.size() > patientWaiting && mScheduler.now() < sender.pausesUntil;
}

std::deque<std::string>::iterator RequestIntake::nextTurn() {
  return std::ranges::find_if(mTurns, [this](const std::string& name) { return !pauses(mSenders.find(name)->second); });
}

bool RequestIntake::serveNext() {
  mArrivals = 0;
  if (mService) return false;
  if (const auto turn = nextTurn(); turn != mTurns.end()) serve(turn);
  if (mService) return false;
  const bool hasNext = nextTurn() != mTurns.end();
  if (!hasNext) awaitPauses();
  return hasNext;
}

void RequestIntake::serve(std::deque<std::string>::iterator turn) {
  const std::string name = std::move(*turn);
  mTurns.erase(turn);
  Sender& sender = mSenders.find(name)->second;
  const Waiting request = std::move(sender.requests.front());
  sender.requests.pop_front();
  sender.size -= request.data.size();
  mTotalSize -= request.data.size();
  mService = Service{name, mScheduler.now()};
  mIsBeginning = true;
  mServe({request.messageID, request.data, name}, [this] { noteServed(); });
  mIsBeginning = false;
}

void RequestIntake::noteServed() {
  const Service service = std::move(*std::exchange(mService, std::nullopt));
  const auto sender = mSenders.find(service.sender);
  if (sender->second.requests.empty()) {
    mSenders.erase(sender);
  } else {
    const Scheduler::Duration ended = mScheduler.now();
    sender->second.pausesUntil = ended + pauseFactor * (ended - service.begun);
    mTurns.push_back(service.sender);
  }
  if (!mIsBeginning && mReadyHandler) mReadyHandler();
}

void RequestIntake::awaitPauses() {
  if (mTurns.empty() || mPauseTicket != 0) return;
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
