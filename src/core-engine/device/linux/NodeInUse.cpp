#include "core-engine/device/linux/NodeInUse.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <utility>

#include "model/KernelKeys.h"

namespace vorn::engine {

namespace {

// After so long another program may have let go of the node.
constexpr Scheduler::Duration retryTime = std::chrono::seconds(10);

}  // namespace

NodeInUse::NodeInUse(MouseNode node, NodeOwner& owner)
    : mFacts(std::move(node)), mOwner(owner), mLongWait(owner.scheduler(), [this] {
        mOwner.fault("held", "The mouse's node \"" + mFacts.name + "\" is not used yet (" + mFacts.path +
                                 "), since something on it is held down.");
        mOwner.isReady();
      }) {}

NodeInUse::~NodeInUse() {
  mOwner.scheduler().cancel(mRetry);
  close();
}

bool NodeInUse::open() {
  if (mNode) return true;
  mNode = InputNode::open(mFacts.path);
  if (!mNode) {
    failToOpen();
    return false;
  }
  watch();
  return true;
}

void NodeInUse::watch() {
  mWatch = mOwner.loop().watch(mNode->descriptor(), [this] { mOwner.isReadable(*this); });
}

void NodeInUse::close() {
  mOwner.scheduler().cancel(std::exchange(mRest, 0));
  mOwner.loop().unwatch(std::exchange(mWatch, 0));
  mListener.reset();
  mNode.reset();
}

// The kernel goes on telling whoever has opened it in time.
bool NodeInUse::setForbidden(bool isForbidden) {
  const bool isLost = isForbidden && !mFacts.isForbidden && mNode;
  mFacts.isForbidden = isForbidden;
  if (!isLost) return false;
  releaseAll();
  mTranslator.reset();
  mPassed.reset();
  mCopy.reset();
  mIsWaiting = false;
  mLongWait.set(false);
  close();
  return true;
}

void NodeInUse::pursue(const NodeWishes& wishes) {
  // Who has lost the right to a node could still read it while it is open. The next opening fails, and says so.
  mWishes = mNode && mFacts.isForbidden ? NodeWishes{} : wishes;
  if (isGrabbed()) {
    if (!mWishes.isGrabbed)
      tryLetGo();
    else if (mWishes.isPassedOn && !mPassed && hasOutput())
      mPassed.emplace(*output());
  } else if (!mWishes.isGrabbed) {
    mIsWaiting = false;
    mCopy.reset();
  } else if (hasOutput()) {
    tryGrab();
  }
  if (isGrabbed() || mIsWaiting || mWishes.isRead)
    open();
  else
    close();
  mLongWait.set(mIsWaiting && !isGrabbed());
}

NodeInUse::Obstacle NodeInUse::obstacle() const {
  if (!mWishes.isGrabbed || isGrabbed()) return Obstacle::None;
  if (mIsBusy) return Obstacle::Busy;
  return mLongWait.isLong() ? Obstacle::Held : Obstacle::None;
}

OutputDevice* NodeInUse::output() const {
  if (mFacts.codes.isKeyboard()) return mOwner.keyboard() != nullptr ? &mOwner.keyboard()->device() : nullptr;
  return mCopy ? &mCopy->device() : nullptr;
}

// The device is there that what passes goes to, and the desktop knows it.
bool NodeInUse::hasOutput() {
  if (!mWishes.isPassedOn) return true;
  if (mFacts.codes.isKeyboard()) return mOwner.keyboard() != nullptr && mOwner.keyboard()->isReady();
  if (!mCopy) {
    // Just for a look: a node that waits for its copy need not be read.
    const std::unique_ptr<InputNode> original = InputNode::open(mFacts.path);
    if (!original) {
      failToOpen();
      return false;
    }
    auto device = OutputDevice::copyOf(*original, mWishes.isCopiedWithButtons);
    if (!device) {
      fail("output", std::string("cannot be stood in for (/dev/uinput: ") + std::strerror(errno) + ")");
      return false;
    }
    mCopy = std::make_unique<MadeOutput>(std::move(device), mOwner.scheduler(), [this] { mOwner.isReady(); });
  }
  return mCopy->isReady();
}

void NodeInUse::tryGrab() {
  if (!open()) return;
  // The release of what is down belongs to those who have got the press.
  mIsWaiting = mNode->isAnythingDown();
  if (mIsWaiting) return;
  const InputNode::Time time = InputNode::now();
  mIsBusy = !mNode->grab() && errno == EBUSY;
  if (!mNode->isGrabbed()) {
    fail("grab", "cannot be taken from the desktop (" + mFacts.path + ": " + std::strerror(errno) + ")" +
                     (mIsBusy ? ", another program keeps it for itself" : ""));
    return retryLater();
  }
  // It may have been pressed just now.
  mIsWaiting = mNode->isAnythingDown();
  if (mIsWaiting) return mNode->letGo();
  mHasFailed = false;
  mGrabbedSince = time;
  mGrabbedUntil = InputNode::Time::max();
  mTranslator.emplace(mFacts.name, mNode->highResolutionWheels());
  mListener.reset();
  if (OutputDevice* device = mWishes.isPassedOn ? output() : nullptr) mPassed.emplace(*device);
}

void NodeInUse::tryLetGo() {
  mIsWaiting = !mTranslator->isAtRest() || !listener().isAtRest() || mNode->isAnythingDown();
  if (mIsWaiting) return;
  mGrabbedUntil = InputNode::now();
  mNode->letGo();
  // What has come meanwhile nobody else has got.
  readUntil(mGrabbedUntil);
  releaseAll();
  mTranslator.reset();
  mPassed.reset();
  mCopy.reset();
}

bool NodeInUse::read() {
  if (!mNode) return true;
  const ReportReader::Result result =
      mNode->read([this](std::span<const KernelEvent> report, InputNode::Time time) { handle(report, time); });
  if (result == ReportReader::Result::More) readRestSoon();
  return result != ReportReader::Result::Gone;
}

// What is watched comes before timers and messages, so a device that never rests would keep them away for ever.
void NodeInUse::readRestSoon() {
  if (mRest != 0) return;
  mOwner.loop().unwatch(std::exchange(mWatch, 0));
  mRest = mOwner.scheduler().after(Scheduler::Duration(0), [this] {
    mRest = 0;
    watch();
    mOwner.isReadable(*this);
  });
}

void NodeInUse::readUntil(InputNode::Time end) {
  InputNode::Time latest{};
  const auto take = [&](std::span<const KernelEvent> report, InputNode::Time time) {
    latest = time;
    handle(report, time);
  };
  ReportReader::Result result = ReportReader::Result::More;
  while (result == ReportReader::Result::More && latest < end) result = mNode->read(take);
  if (result == ReportReader::Result::More) readRestSoon();
}

void NodeInUse::handle(std::span<const KernelEvent> report, InputNode::Time time) {
  if (!mOwner.isListening()) mToldKeys.clear();
  // Who hears may end the teaching.
  const PressListener::Heard heard = mOwner.heard();
  const bool isOurs = mTranslator && time >= mGrabbedSince && time < mGrabbedUntil;
  if (!isOurs) {
    for (const KernelEvent& event : report) tellKey(event, time);
    if (heard && !mTranslator) listener().listen(report, heard);
  } else if (heard || !listener().isAtRest()) {
    pass(mTranslator->translate(listener().listen(report, heard), mOwner.rules()), time);
  } else {
    pass(mTranslator->translate(report, mOwner.rules()), time);
  }
}

PressListener& NodeInUse::listener() {
  if (!mListener) mListener.emplace(mFacts.name, mNode->highResolutionWheels());
  return *mListener;
}

void NodeInUse::tellKey(const KernelEvent& event, InputNode::Time time) {
  constexpr std::int32_t repeat = 2;
  if (!mOwner.isListening() || event.type != EV_KEY || event.value == repeat) return;
  const auto key = usageOfKernelKey(event.code);
  if (!key) return;
  const bool isPressed = event.value != 0;
  std::erase(mToldKeys, *key);
  if (isPressed) mToldKeys.push_back(*key);
  mOwner.tell(
      KeyChanged{key->page, key->usage, isPressed, std::chrono::duration_cast<std::chrono::milliseconds>(time)});
}

void NodeInUse::pass(const TranslatedEvents& events, InputNode::Time time) {
  for (const TranslatedEvent& event : events) {
    if (const auto* const control = std::get_if<ControlChanged>(&event)) {
      mOwner.tell(*control);
      continue;
    }
    const auto& passed = std::get<KernelEvent>(event);
    if (mPassed) mPassed->write(passed);
    tellKey(passed, time);
  }
}

void NodeInUse::releaseAll() {
  const InputNode::Time now = InputNode::now();
  if (mTranslator) pass(mTranslator->releaseAll(), now);
  const auto time = std::chrono::duration_cast<std::chrono::milliseconds>(now);
  for (const HidUsage& key : std::exchange(mToldKeys, {}))
    if (mOwner.isListening()) mOwner.tell(KeyChanged{key.page, key.usage, false, time});
}

void NodeInUse::failToOpen() {
  // It goes, and the news of that are on their way.
  if (errno == ENOENT || errno == ENODEV || errno == ENXIO) return;
  fail("open", "cannot be read (" + mFacts.path + ": " + std::strerror(errno) + ")");
}

void NodeInUse::fail(std::string_view kind, const std::string& what) {
  if (!std::exchange(mHasFailed, true)) mOwner.fault(kind, "The mouse's node \"" + mFacts.name + "\" " + what + '.');
}

void NodeInUse::retryLater() {
  mOwner.scheduler().cancel(mRetry);
  mRetry = mOwner.scheduler().after(retryTime, [this] {
    mRetry = 0;
    mOwner.isReady();
  });
}

}  // namespace vorn::engine
