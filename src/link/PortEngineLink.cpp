#include "link/PortEngineLink.h"

#include <algorithm>
#include <condition_variable>
#include <cstdio>
#include <future>
#include <initializer_list>
#include <string_view>
#include <utility>

#include "model/VrCoreUtility.h"
#include "protocol/Focus.h"
#include "protocol/History.h"
#include "protocol/Mice.h"
#include "protocol/TypedKeys.h"

namespace vorn {

namespace {

// A message on its way, seen by the thread that sends it and by the one that waits.
struct Delivery {
  std::mutex mutex;
  std::condition_variable changed;
  bool isDone = false;

  void finish() {
    {
      const std::lock_guard lock(mutex);
      isDone = true;
    }
    changed.notify_all();
  }
  bool wait(std::chrono::milliseconds time) {
    std::unique_lock lock(mutex);
    return changed.wait_for(lock, time, [this] { return isDone; });
  }
};

// The error names of an engine that lacks the object are those of the bus for what an object does not have.
bool isUnknown(const std::string& errorName) {
  return errorName.starts_with("org.freedesktop.DBus.Error.Unknown");
}

template <typename Outcome>
using ErrorOutcomes = std::initializer_list<std::pair<std::string_view, Outcome>>;

// unknown: of an engine that lacks the object.
template <typename Outcome>
Outcome outcomeOf(const BusAnswer& answer, Outcome unknown, ErrorOutcomes<Outcome> errors) {
  switch (answer.status) {
    case BusAnswer::Status::Success:
      return Outcome::Done;
    case BusAnswer::Status::NoBus:
    case BusAnswer::Status::NoOwner:
      return Outcome::NoEngine;
    case BusAnswer::Status::Error:
      for (const auto& [name, outcome] : errors) {
        if (answer.errorName == name) return outcome;
      }
      return isUnknown(answer.errorName) ? unknown : Outcome::NoAnswer;
    case BusAnswer::Status::Timeout:
    case BusAnswer::Status::Invalid:
      break;
  }
  return Outcome::NoAnswer;
}

const char* methodOf(HistoryCall call) {
  switch (call) {
    case HistoryCall::Undo:
      return history::methods::Undo;
    case HistoryCall::Redo:
      return history::methods::Redo;
    case HistoryCall::GoTo:
      return history::methods::GoTo;
    case HistoryCall::Entries:
      break;
  }
  return history::methods::Entries;
}

// Values that are missing or of other types read as empty.
HistoryAnswer historyAnswerOf(const BusAnswer& answer) {
  using Outcome = HistoryAnswer::Outcome;
  const PropertyList values = PropertyList::array(answer.values);
  const Outcome outcome = outcomeOf<Outcome>(answer, Outcome::NoHistory,
                                             {{history::errors::NothingLeft, Outcome::NothingLeft},
                                              {history::errors::ChangedSince, Outcome::ChangedSince},
                                              {history::errors::Outdated, Outcome::Outdated},
                                              {history::errors::NotSaved, Outcome::NotSaved}});
  return {outcome, values.at(0), values.at(1).toInt64()};
}

MiceAnswer miceAnswerOf(const BusAnswer& answer) {
  using Outcome = MiceAnswer::Outcome;
  const Outcome outcome = outcomeOf<Outcome>(answer, Outcome::NoMice,
                                             {{mice::errors::NotFound, Outcome::NotFound},
                                              {mice::errors::NotAllowed, Outcome::NotAllowed},
                                              {mice::errors::NotTeachable, Outcome::NotTeachable},
                                              {mice::errors::BadArgument, Outcome::BadArgument},
                                              {mice::errors::Busy, Outcome::Busy},
                                              {mice::errors::NotSaved, Outcome::NotSaved}});
  return {outcome, PropertyList::array(answer.values).at(0)};
}

const char* methodOf(MiceCall call) {
  switch (call) {
    case MiceCall::Choose:
      return mice::methods::Choose;
    case MiceCall::Teach:
      return mice::methods::Teach;
    case MiceCall::Forget:
      return mice::methods::Forget;
    case MiceCall::SetResolution:
      return mice::methods::SetResolution;
    case MiceCall::List:
      break;
  }
  return mice::methods::List;
}

std::vector<BusInput> inputsOf(const MiceRequest& request) {
  if (request.call == MiceCall::List) return {};
  if (request.call == MiceCall::SetResolution) return {{"u", request.resolution}};
  return {{"s", request.name}};
}

}  // namespace

int sendRequest(const PropertyList& request, MessageID messageID) {
  const std::optional<RemoteMessagePort> port = RemoteMessagePort::lookUp(enginePortName);
  const std::optional<Bytes> data = VrCoreUtility::convertDictionaryToData(request);
  if (!port || !data) return sendRequestResult;
  // The engine's word comes to the reply port; what it returns here says nothing.
  port->sendRequest(static_cast<std::int32_t>(messageID), *data, sendTimeout);
  return sendRequestResult;
}

PortEngineLink::PortEngineLink(std::string replyPortName) : mReplyPortName(std::move(replyPortName)) {}

PortEngineLink::~PortEngineLink() {
  // Before it runs, its loop cannot be stopped.
  if (mLocalPortCreated.valid()) mLocalPortCreated.wait();
  {
    const std::lock_guard lock(mReplyLoopMutex);
    if (mReplyLoop != nullptr) mReplyLoop->stop();
  }
  if (mReplyThread.joinable()) mReplyThread.join();
}

void PortEngineLink::setTrace(Trace trace) {
  mTrace = std::move(trace);
}

void PortEngineLink::beginLocalPort() {
  std::promise<bool> created;
  mLocalPortCreated = created.get_future();
  mReplyThread = std::jthread([this, promise = std::move(created)]() mutable { runReplyThread(std::move(promise)); });
}

bool PortEngineLink::createLocalPort() {
  if (!mLocalPortCreated.valid()) {
    if (isReplyLoopRunning()) return true;
    beginLocalPort();
  }
  return mLocalPortCreated.get();
}

void PortEngineLink::runReplyThread(std::promise<bool> created) {
  std::string error;
  // Anybody on the bus can send to the port; only the engine's answers count.
  const PortWatch engine(enginePortName, [] {});
  const auto receive = [this, &engine](const LocalMessagePort::Message& message) {
    return message.sender == engine.owner() ? replyReceived(message) : Bytes();
  };
  const std::unique_ptr<LocalMessagePort> port = LocalMessagePort::create(mReplyPortName, receive, nullptr, &error);
  if (!port) {
    std::fprintf(stderr, "The reply port cannot be created: %s\n", error.c_str());
    created.set_value(false);
    return;
  }
  RunLoop loop;
  publishReplyLoop(&loop);
  created.set_value(true);
  if (!loop.run()) std::fprintf(stderr, "The session bus is gone; no more answers are heard\n");
  publishReplyLoop(nullptr);
}

void PortEngineLink::publishReplyLoop(RunLoop* loop) {
  const std::lock_guard lock(mReplyLoopMutex);
  mReplyLoop = loop;
}

bool PortEngineLink::isReplyLoopRunning() {
  const std::lock_guard lock(mReplyLoopMutex);
  return mReplyLoop != nullptr;
}

bool PortEngineLink::isEngineAvailable() {
  return RemoteMessagePort::lookUp(enginePortName).has_value();
}

bool PortEngineLink::watchEngine(std::function<void(bool isThere)> changed) {
  mEngineWatch.reset();
  if (!changed) return false;
  mEngineWatch.emplace(
      enginePortName, [changed] { changed(false); }, [changed] { changed(true); });
  return mEngineWatch->wasThere();
}

void PortEngineLink::startEngine(std::function<void(const ServiceStart&)> done) {
  startService(engineServiceName, engineStartTimeout, std::move(done));
}

void PortEngineLink::setWhileWaiting(std::function<bool()> whileWaiting) {
  mWhileWaiting = std::move(whileWaiting);
}

bool PortEngineLink::performOnReplyThread(std::function<void()> work) {
  const std::lock_guard lock(mReplyLoopMutex);
  if (mReplyLoop == nullptr) return false;
  mReplyLoop->perform(std::move(work));
  return true;
}

int PortEngineLink::send(const PropertyList& request, MessageID messageID) {
  if (mTrace) mTrace("request", static_cast<std::int32_t>(messageID), request);
  const std::optional<Bytes> data = VrCoreUtility::convertDictionaryToData(request);
  if (!data) return sendRequestResult;
  // The reply thread sends, so that this one can look after the rest meanwhile.
  const auto delivery = std::make_shared<Delivery>();
  // Goes with the last that could end the wait: a thread whose bus has just gone does nothing any more.
  std::shared_ptr<void> end(nullptr, [delivery](void*) { delivery->finish(); });
  const bool isOnItsWay = performOnReplyThread([end = std::move(end), delivery, messageID, data] {
    RemoteMessagePort::sendLater(enginePortName, static_cast<std::int32_t>(messageID), *data, sendTimeout,
                                 [end, delivery](RemoteMessagePort::Status) { delivery->finish(); });
  });
  if (!isOnItsWay) return sendRequest(request, messageID);
  while (!delivery->wait(waitTurn) && goOnWaiting()) {
  }
  return sendRequestResult;
}

void PortEngineLink::post(const PropertyList& request, MessageID messageID) {
  if (mTrace) mTrace("request", static_cast<std::int32_t>(messageID), request);
  const std::optional<RemoteMessagePort> port = RemoteMessagePort::lookUp(enginePortName);
  const std::optional<Bytes> data = VrCoreUtility::convertDictionaryToData(request);
  if (port && data) port->post(static_cast<std::int32_t>(messageID), *data);
}

void PortEngineLink::type(const TypedKey& key) {
  // The engine takes it from the connection of the reply port alone.
  performOnReplyThread([key] {
    postBusMethod({typedKeys::busName, typedKeys::objectPath, typedKeys::interface}, typedKeys::methods::Type,
                  {{"q", key.usagePage},
                   {"q", key.usage},
                   {"b", key.isPressed},
                   {"t", static_cast<std::uint64_t>(key.time.count())}});
  });
}

void PortEngineLink::watchBeside(std::optional<SignalWatch>& watch, const SignalSource& source,
                                 std::function<void(const PropertyList& values)> told) {
  watch.emplace(source, [this, told = std::move(told)](const ReceivedSignal& received) {
    // Anybody on the bus can say so.
    if (mEngineWatch && received.sender == mEngineWatch->owner()) told(PropertyList::array(received.values));
  });
}

void PortEngineLink::askBeside(const BesideCall& call, const std::function<void(const BusAnswer&)>& done) {
  if (!mEngineWatch || mEngineWatch->owner().empty()) {
    BusAnswer nobody;
    nobody.status = BusAnswer::Status::NoOwner;
    return done(nobody);
  }
  // The engine's own connection, whoever has the name of the object.
  callBusMethodLater({mEngineWatch->owner(), call.path, call.interface}, call.method, call.inputs, besideTimeout, done);
}

void PortEngineLink::watchHistory(std::function<void()> changed) {
  mHistoryWatch.reset();
  if (!changed) return;
  watchBeside(mHistoryWatch, {history::objectPath, history::interface, history::signalNames::Changed},
              [changed = std::move(changed)](const PropertyList&) { changed(); });
}

void PortEngineLink::askHistory(const HistoryRequest& request, std::function<void(const HistoryAnswer&)> done) {
  std::vector<BusInput> inputs;
  if (request.call != HistoryCall::Entries) inputs.push_back({"t", request.change});
  askBeside({history::objectPath, history::interface, methodOf(request.call), std::move(inputs)},
            [done = std::move(done)](const BusAnswer& answer) { done(historyAnswerOf(answer)); });
}

void PortEngineLink::watchMice(MiceNews news) {
  mMiceWatch.reset();
  mTaughtWatch.reset();
  if (!news.changed) return;
  watchBeside(mMiceWatch, {mice::objectPath, mice::interface, mice::signalNames::Changed},
              [changed = std::move(news.changed)](const PropertyList&) { changed(); });
  watchBeside(
      mTaughtWatch, {mice::objectPath, mice::interface, mice::signalNames::Taught},
      [taught = std::move(news.taught)](const PropertyList& values) {
        taught({values.at(0).toString(), values.at(1).toBool(), values.at(2).toString(), values.at(3).toString()});
      });
}

void PortEngineLink::askMice(const MiceRequest& request, std::function<void(const MiceAnswer&)> done) {
  askBeside({mice::objectPath, mice::interface, methodOf(request.call), inputsOf(request)},
            [done = std::move(done)](const BusAnswer& answer) { done(miceAnswerOf(answer)); });
}

void PortEngineLink::watchFocus(std::function<void()> changed) {
  mFocusWatch.reset();
  if (!changed) return;
  watchBeside(mFocusWatch, {focus::objectPath, focus::interface, focus::signalNames::Changed},
              [changed = std::move(changed)](const PropertyList&) { changed(); });
}

void PortEngineLink::askFocus(std::function<void(const PropertyList& state)> done) {
  askBeside({focus::objectPath, focus::interface, focus::methods::State, {}},
            [done = std::move(done)](const BusAnswer& answer) { done(PropertyList::array(answer.values).at(0)); });
}

bool PortEngineLink::waitForReply(int polls, std::chrono::milliseconds interval) {
  const int pollsOfTurn = static_cast<int>(waitTurn / std::max(interval, std::chrono::milliseconds(1)));
  while (polls > pollsOfTurn) {
    if (mSlot.wait(pollsOfTurn, interval)) return true;
    if (!goOnWaiting()) return false;
    polls -= pollsOfTurn;
  }
  return mSlot.wait(polls, interval);
}

PropertyList PortEngineLink::reply() const {
  return mSlot.peek();
}

void PortEngineLink::emptySlot() {
  mSlot.empty();
}

Bytes PortEngineLink::replyReceived(const LocalMessagePort::Message& message) {
  if (message.data.empty()) return {};
  PropertyList answer = VrCoreUtility::convertDataToDictionary(message.data).dictionaryOrEmpty();
  if (mTrace) mTrace("answer", message.messageID, answer);
  mSlot.store(std::move(answer));
  return Bytes(message.data.begin(), message.data.end());
}

}  // namespace vorn
