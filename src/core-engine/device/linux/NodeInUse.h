// One event node of the mouse in use: opened only while it is to be read, taken from the desktop only while it has to
// be, and only at moments when nothing on it is down, so that no press is parted from its release. One thread, the
// engine's.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core-engine/Scheduler.h"
#include "core-engine/device/Device.h"
#include "core-engine/device/linux/InputNode.h"
#include "core-engine/device/linux/LongWait.h"
#include "core-engine/device/linux/MadeOutput.h"
#include "core-engine/device/linux/PressListener.h"
#include "core-engine/device/linux/ReportTranslator.h"
#include "mice/MouseFinder.h"
#include "model/KernelKeys.h"
#include "ports/RunLoop.h"

namespace vorn::engine {

class NodeInUse;

// The mouse that the node belongs to.
class NodeOwner {
 public:
  virtual RunLoop& loop() = 0;
  virtual Scheduler& scheduler() = 0;
  virtual const TranslationRules& rules() const = 0;
  virtual bool isListening() const = 0;
  virtual const PressListener::Heard& heard() const = 0;  // empty when nothing is taught
  // Where the keys of nodes go that are nothing but keyboards; nullptr while there is none.
  virtual MadeOutput* keyboard() = 0;
  // A control that is told as pressed is told as released by the same node.
  virtual void tell(const DeviceEvent& event) = 0;
  // Something is there to be read.
  virtual void isReadable(NodeInUse& node) = 0;
  // What was waited for has come, or has been waited for too long; pursue() is to be called again.
  virtual void isReady() = 0;
  virtual void fault(std::string_view kind, const std::string& text) = 0;

 protected:
  ~NodeOwner() = default;
};

// What is wanted of a node.
struct NodeWishes {
  bool isRead = false;  // also while it is not grabbed
  bool isGrabbed = false;
  bool isPassedOn = false;           // what is grabbed and not taken reaches the desktop
  bool isCopiedWithButtons = false;  // with all buttons and wheels that an assignment may use
};

class NodeInUse {
 public:
  // Why it cannot be taken from the desktop, though it is to be: something on it has been held down for long, or
  // another program keeps it for itself.
  enum class Obstacle : std::uint8_t { None, Held, Busy };

  // The owner outlives it.
  NodeInUse(MouseNode node, NodeOwner& owner);
  // Tells nothing any more; what it holds on the desktop is released.
  ~NodeInUse();
  NodeInUse(const NodeInUse&) = delete;
  NodeInUse& operator=(const NodeInUse&) = delete;

  const MouseNode& facts() const { return mFacts; }
  // The same node; who may read it may have changed. A node that this user may no longer read, since somebody else is
  // at the screen, is theirs: it is let go of at once, with the releases of all that is down. Returns whether that was
  // done.
  bool setForbidden(bool isForbidden);
  bool isGrabbed() const { return mNode && mNode->isGrabbed(); }
  // The device that stands for it on the desktop, if there is one.
  MadeOutput* copy() const { return mCopy.get(); }

  // Does what can be done for it now; what cannot is done by a later call.
  void pursue(const NodeWishes& wishes);
  // It waits for what is down to come up.
  bool isWaiting() const { return mIsWaiting; }
  Obstacle obstacle() const;
  // Reads what has come; of a flood the beginning, and the rest when everything else has had its turn. False when the
  // node is gone.
  bool read();
  // Tells of the releases of all that is down on a node that is gone.
  void releaseAll();

 private:
  bool open();
  void close();
  void watch();
  void readRestSoon();
  void readUntil(InputNode::Time end);
  bool hasOutput();
  OutputDevice* output() const;
  void tryGrab();
  void tryLetGo();
  void handle(std::span<const KernelEvent> report, InputNode::Time time);
  void tellKey(const KernelEvent& event, InputNode::Time time);
  void pass(const TranslatedEvents& events, InputNode::Time time);
  PressListener& listener();
  void failToOpen();
  void fail(std::string_view kind, const std::string& what);
  void retryLater();

  MouseNode mFacts;
  NodeOwner& mOwner;
  NodeWishes mWishes;
  std::unique_ptr<InputNode> mNode;
  RunLoop::Watch mWatch = 0;
  Scheduler::Ticket mRest = 0;  // of a flood, which is read then
  std::unique_ptr<MadeOutput> mCopy;
  std::optional<OutputHold> mPassed;
  std::optional<ReportTranslator> mTranslator;
  std::optional<PressListener> mListener;
  // What came before the grab, or comes after its end, the desktop has got by itself.
  InputNode::Time mGrabbedSince{};
  InputNode::Time mGrabbedUntil{};
  std::vector<HidUsage> mToldKeys;  // as pressed
  bool mIsWaiting = false;
  LongWait mLongWait;
  bool mIsBusy = false;     // another program has grabbed it
  bool mHasFailed = false;  // and said so
  Scheduler::Ticket mRetry = 0;
};

}  // namespace vorn::engine
