// The engine link over message ports, and the reply thread that owns the configurator's reply port.
#pragma once

#include <functional>
#include <future>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "link/EngineLink.h"
#include "link/ReplySlot.h"
#include "ports/BusMethodCall.h"
#include "ports/MessagePort.h"
#include "ports/PortWatch.h"
#include "ports/RunLoop.h"
#include "ports/SignalWatch.h"

namespace vorn {

// Sends one request to the engine's port from the calling thread. Returns sendRequestResult, whatever happens.
int sendRequest(const PropertyList& request, MessageID messageID);

class PortEngineLink : public EngineLink {
 public:
  // Called for --verbose on the thread that sends or receives: "request" or "answer", the message ID, the body.
  using Trace = std::function<void(const char* direction, std::int32_t messageID, const PropertyList& body)>;

  explicit PortEngineLink(std::string replyPortName = std::string(configuratorReplyPortName));
  // Stops the reply thread and waits for its end.
  ~PortEngineLink() override;

  void setTrace(Trace trace);  // before createLocalPort

  // Starts the reply thread and goes on: createLocalPort then waits for what is left of that.
  void beginLocalPort();
  bool createLocalPort() override;

  bool isEngineAvailable() override;
  bool watchEngine(std::function<void(bool isThere)> changed) override;
  void startEngine(std::function<void(const ServiceStart&)> done) override;
  void setWhileWaiting(std::function<bool()> whileWaiting) override;
  int send(const PropertyList& request, MessageID messageID) override;
  void post(const PropertyList& request, MessageID messageID) override;
  void type(const TypedKey& key) override;
  void watchHistory(std::function<void()> changed) override;
  void askHistory(const HistoryRequest& request, std::function<void(const HistoryAnswer&)> done) override;
  void watchMice(MiceNews news) override;
  void askMice(const MiceRequest& request, std::function<void(const MiceAnswer&)> done) override;
  void watchFocus(std::function<void()> changed) override;
  void askFocus(std::function<void(const PropertyList& state)> done) override;
  bool waitForReply(int polls = maximumPolls, std::chrono::milliseconds interval = pollInterval) override;
  PropertyList reply() const override;
  void emptySlot() override;

  // The reply port's callback: ignores a message without data; stores its dictionary, or an empty one when the data
  // cannot be decoded, in place of the slot's; gives the received data back.
  Bytes replyReceived(const LocalMessagePort::Message& message);

 private:
  // A method of an object that the engine has beside its port.
  struct BesideCall {
    const char* path;
    const char* interface;
    const char* method;
    std::vector<BusInput> inputs{};
  };

  void runReplyThread(std::promise<bool> created);
  void publishReplyLoop(RunLoop* loop);
  bool isReplyLoopRunning();
  // False when the reply thread does not run.
  bool performOnReplyThread(std::function<void()> work);
  // What one of the engine's objects tells; not what anybody else on the bus does.
  void watchBeside(std::optional<SignalWatch>& watch, const SignalSource& source,
                   std::function<void(const PropertyList& values)> told);
  // Asks one of the engine's objects without waiting.
  void askBeside(const BesideCall& call, const std::function<void(const BusAnswer&)>& done);
  bool goOnWaiting() const { return !mWhileWaiting || mWhileWaiting(); }

  std::string mReplyPortName;
  Trace mTrace;
  std::function<bool()> mWhileWaiting;
  std::optional<PortWatch> mEngineWatch;
  std::optional<SignalWatch> mHistoryWatch;
  std::optional<SignalWatch> mMiceWatch;
  std::optional<SignalWatch> mFocusWatch;
  std::optional<SignalWatch> mTaughtWatch;
  ReplySlot mSlot;
  std::mutex mReplyLoopMutex;
  RunLoop* mReplyLoop = nullptr;        // lives on the reply thread's stack; null when the thread does not run
  std::future<bool> mLocalPortCreated;  // valid while nobody has asked how that ended
  std::jthread mReplyThread;
};

}  // namespace vorn
