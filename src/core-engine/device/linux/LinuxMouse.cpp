#include "core-engine/device/linux/LinuxMouse.h"

#include <sys/prctl.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <utility>

#include "core-engine/device/linux/NodeChoice.h"
#include "model/Controls.h"
#include "model/KernelKeys.h"

namespace vorn::engine {

namespace {

constexpr std::int32_t usualResolution = 800;

// How late the kernel may wake this thread, in nanoseconds; 0 for the usual 50 microseconds, which a macro with its
// many delays would gather.
void setTimerSlack(unsigned long nanoseconds) {
  ::prctl(PR_SET_TIMERSLACK, nanoseconds);
}

}  // namespace

// While one is there, what is asked of the mouse is only noted.
class LinuxMouse::Turn {
 public:
  explicit Turn(LinuxMouse& mouse) : mMouse(mouse) { mMouse.mIsBusy = true; }
  ~Turn() { mMouse.mIsBusy = false; }
  Turn(const Turn&) = delete;
  Turn& operator=(const Turn&) = delete;

 private:
  LinuxMouse& mMouse;
};

LinuxMouse::LinuxMouse(std::string id, Surroundings surroundings)
    : mId(std::move(id)),
      mSurroundings(std::move(surroundings)),
      mServices(mSurroundings.scheduler, {[this] { hardwareChanged(); }, [this] { batteryChanged(); },
                                          [this] { goToSleep(); }, [this] { mSurroundings.lookSoon(); }}) {}

LinuxMouse::~LinuxMouse() {
  if (mSurroundings.isLeaving) mSurroundings.isLeaving(*this);
  if (isInUse()) setTimerSlack(0);
}

bool LinuxMouse::isInUse() const {
  return mValues != DeviceValues{};
}

Device::Connection LinuxMouse::connection() const {
  if (!mHardware) return Connection::Absent;
  return mHardware->isWireless ? Connection::Wireless : Connection::Wired;
}

std::string LinuxMouse::firmwareVersion() const {
  if (!mHardware) return {};
  const std::string known = mServices.firmwareVersion();
  return known.empty() ? mHardware->firmwareVersion : known;
}

std::int32_t LinuxMouse::resolution() const {
  if (mRecord.resolution != 0) return mRecord.resolution;
  return mHardware && mHardware->resolution != 0 ? mHardware->resolution : usualResolution;
}

DeviceAbilities LinuxMouse::abilities() const {
  if (!mHardware) return {};
  DeviceAbilities abilities = mServices.abilities();
  const bool isForbidden = std::any_of(mHardware->nodes.begin(), mHardware->nodes.end(), [](const MouseNode& node) {
    return node.isForbidden && node.codes.isPointer();
  });
  if (abilities.sensitivity == DeviceAbilities::Way::Missing && !isForbidden && OutputDevice::isAllowed())
    abilities.sensitivity = DeviceAbilities::Way::Scaled;
  abilities.reachesDesktop = true;
  for (const auto& node : mNodes) {
    const NodeInUse::Obstacle obstacle = node->obstacle();
    if (obstacle == NodeInUse::Obstacle::Held) abilities.held.push_back(node->facts().path);
    if (obstacle == NodeInUse::Obstacle::Busy) abilities.busy.push_back(node->facts().path);
  }
  return abilities;
}

void LinuxMouse::update(std::optional<MouseHardware> hardware) {
  const Connection before = connection();
  mHardware = std::move(hardware);
  mServices.update(mHardware);
  if (!mHardware) releaseEmitted();
  for (MadeOutput* output : outputs()) output->look();
  updateRules();
  pursue();
  mToldFirmware = firmwareVersion();
  // What plays on would do so at somebody else's screen.
  if (connection() != before || std::exchange(mHasLostNode, false)) notify(ConnectionChanged{});
}

void LinuxMouse::hardwareChanged() {
  updateRules();
  pursue();
  const std::string firmware = firmwareVersion();
  if (std::exchange(mToldFirmware, firmware) != firmware) notify(FirmwareChanged{});
}

void LinuxMouse::batteryChanged() {
  notify(BatteryChanged{});
  tellAbilities();
}

// What is down now comes up while nobody is there to see it.
void LinuxMouse::goToSleep() {
  {
    const Turn busy(*this);
    for (const auto& node : mNodes) node->releaseAll();
  }
  releaseEmitted();
  pursue();
}

void LinuxMouse::apply(const DeviceValues& values) {
  const bool wasInUse = isInUse();
  mValues = values;
  mServices.apply(values);
  if (isInUse() != wasInUse) setTimerSlack(isInUse() ? 1 : 0);
  if (!isInUse()) releaseEmitted();
  updateRules();
  pursue();
}

void LinuxMouse::setListening(bool isListening) {
  mIsListening = isListening;
  pursue();
}

void LinuxMouse::setRecord(const MouseRecord& record) {
  mRecord = record;
  updateRules();
  pursue();
}

void LinuxMouse::teach(Heard heard) {
  mHeard = std::move(heard);
  mListener = nullptr;
  // It may end the teaching, and so itself.
  if (mHeard) {
    mListener = [this](const EventSource& source) {
      const Heard listener = mHeard;
      if (listener) listener(source);
    };
  }
  pursue();
}

void LinuxMouse::updateRules() {
  mKept.clear();
  mRules.taken.clear();
  mRules.map = mRecord.controls;
  mRules.scale = {};
  if (!isInUse()) return;
  mKept = taughtControls(mRules.map);
  mRules.taken = mKept;
  mRules.taken.insert(mValues.assigned.begin(), mValues.assigned.end());
  mKept.insert(mValues.assignedInAnyKeymap.begin(), mValues.assignedInAnyKeymap.end());
  const Sensitivity own = mServices.sensitivity().value_or(Sensitivity{resolution(), resolution()});
  mRules.scale = {{mValues.sensitivity.x, own.x}, {mValues.sensitivity.y, own.y}};
}

NodeWishes LinuxMouse::wishesFor(const MouseNode& node) const {
  NodeWishes wishes;
  const bool isSoonScaled = mValues.changesSensitivity && node.codes.relative[REL_X];
  wishes.isPassedOn = isInUse() && (isSoonScaled || isToBeTaken(node, mRules.map, mKept, mRules.scale));
  // Not the pointer: a person needs it to work the window that teaches.
  wishes.isGrabbed = wishes.isPassedOn || (mHeard && !node.codes.isPointer());
  wishes.isCopiedWithButtons = mValues.needsPointer;
  wishes.isRead = mIsListening || mHeard;
  return wishes;
}

void LinuxMouse::pursue() {
  if (mIsBusy) {
    mHasChanged = true;
    return;
  }
  // What is told in a turn may change what is asked for; a handler that answers each turn with a change is not followed
  // for ever.
  constexpr int maximumTurns = 16;
  int turn = 0;
  do {
    mHasChanged = false;
    const Turn busy(*this);
    pursueOnce();
  } while (mHasChanged && ++turn < maximumTurns);
  tellAbilities();
}

void LinuxMouse::pursueOnce() {
  updateNodes();
  if (needsKeyboard()) make(mKeyboard, OutputDevice::keyboard);
  for (const auto& node : mNodes) node->pursue(wishesFor(node->facts()));
  const bool isKeyboardInUse = std::any_of(mNodes.begin(), mNodes.end(), [](const auto& node) {
    return node->isGrabbed() && node->facts().codes.isKeyboard();
  });
  // Another person may sit at the screen by now.
  const bool isAllowed = OutputDevice::isAllowed();
  if (!(needsKeyboard() && isAllowed) && !isKeyboardInUse) mKeyboard.reset();
  if (needsPointer()) make(mPointer, OutputDevice::pointer);
  if (!(needsPointer() && isAllowed)) mPointer.reset();
}

void LinuxMouse::updateNodes() {
  const std::vector<MouseNode> none;
  const std::vector<MouseNode>& facts = mHardware ? mHardware->nodes : none;
  const auto isOf = [](const MouseNode& one, const MouseNode& other) {
    return one.path == other.path && one.name == other.name && one.codes == other.codes;
  };
  for (std::size_t index = 0; index < mNodes.size();) {
    const auto found = std::find_if(facts.begin(), facts.end(),
                                    [&](const MouseNode& each) { return isOf(each, mNodes[index]->facts()); });
    if (found != facts.end()) {
      if (mNodes[index++]->setForbidden(found->isForbidden)) mHasLostNode = true;
      continue;
    }
    const std::unique_ptr<NodeInUse> gone = std::move(mNodes[index]);
    mNodes.erase(mNodes.begin() + static_cast<std::ptrdiff_t>(index));
    gone->releaseAll();
  }
  NodeOwner& self = *this;
  for (const MouseNode& each : facts) {
    const bool isNew =
        std::none_of(mNodes.begin(), mNodes.end(), [&](const auto& node) { return isOf(each, node->facts()); });
    if (isNew) mNodes.push_back(std::make_unique<NodeInUse>(each, self));
  }
}

// Also while the mouse is not plugged in, so that the desktop knows the keyboard when it comes back.
bool LinuxMouse::needsKeyboard() const {
  return !mKept.empty() && (mHardware || mKeyboard);
}

// Where no copy of a node of the mouse can click and turn the wheel.
bool LinuxMouse::needsPointer() const {
  if (!mValues.needsPointer || !(mHardware || mPointer)) return false;
  if (mPointer && mPointer->emitted().isHoldingAnything()) return true;
  return std::none_of(mNodes.begin(), mNodes.end(),
                      [](const auto& node) { return node->copy() != nullptr && node->copy()->device().isPointer(); });
}

void LinuxMouse::make(std::unique_ptr<MadeOutput>& output, std::unique_ptr<OutputDevice> (*kind)()) {
  if (output) return;
  auto device = kind();
  if (!device) {
    const std::string reason = std::strerror(errno);
    if (!std::exchange(mHasOutputFailed, true))
      fault("output", "No keyboard and no pointer can be made for the mouse (/dev/uinput: " + reason + ").");
    return;
  }
  mHasOutputFailed = false;
  output = std::make_unique<MadeOutput>(std::move(device), mSurroundings.scheduler, [this] { pursue(); });
}

void LinuxMouse::tell(const DeviceEvent& event) {
  if (const auto* const control = std::get_if<ControlChanged>(&event)) {
    if (!mHeld.take(*control)) return;
    mServices.noteControl(control->isPressed);
  }
  notify(event);
}

void LinuxMouse::isReadable(NodeInUse& node) {
  bool isThere = false;
  {
    const Turn busy(*this);
    isThere = node.read();
  }
  if (!isThere) drop(node);
  if (!isThere || node.isWaiting() || mHasChanged) pursue();
}

void LinuxMouse::drop(const NodeInUse& node) {
  const std::string path = node.facts().path;
  if (mHardware) std::erase_if(mHardware->nodes, [&path](const MouseNode& each) { return each.path == path; });
  mSurroundings.lookSoon();
}

void LinuxMouse::fault(std::string_view kind, const std::string& text) {
  mSurroundings.log.fault(mHardware ? mHardware->name : mId, kind, text);
}

void LinuxMouse::tellAbilities() {
  const DeviceAbilities now = abilities();
  if (now == std::exchange(mToldAbilities, now)) return;
  notify(AbilitiesChanged{});
}

std::vector<MadeOutput*> LinuxMouse::outputs() {
  std::vector<MadeOutput*> outputs;
  if (mKeyboard) outputs.push_back(mKeyboard.get());
  for (const auto& node : mNodes)
    if (node->copy() != nullptr) outputs.push_back(node->copy());
  if (mPointer) outputs.push_back(mPointer.get());
  return outputs;
}

void LinuxMouse::releaseEmitted() {
  for (MadeOutput* output : outputs()) output->emitted().releaseAll();
}

MadeOutput* LinuxMouse::outputFor(std::uint16_t type, std::uint16_t code) {
  for (MadeOutput* output : outputs())
    if (output->device().has(type, code)) return output;
  return nullptr;
}

void LinuxMouse::emit(const OutputEvent& event) {
  if (!mHardware) return;
  if (event.usagePage == hid::genericDesktopPage && event.usage == hid::wheel) {
    MadeOutput* const output = outputFor(EV_REL, REL_WHEEL);
    if (output == nullptr) return;
    output->emitted().write({EV_REL, REL_WHEEL_HI_RES, event.value * highResolutionStep});
    return output->emitted().writeReport({EV_REL, REL_WHEEL, event.value});
  }
  const auto key = kernelKeyOfUsage({event.usagePage, event.usage});
  if (!key) return;
  // A release goes where the press went.
  for (MadeOutput* output : outputs())
    if (event.value == 0 && output->emitted().isHolding(*key)) return output->emitted().writeReport({EV_KEY, *key, 0});
  MadeOutput* const output = event.value != 0 ? outputFor(EV_KEY, *key) : nullptr;
  if (output != nullptr) output->emitted().writeReport({EV_KEY, *key, 1});
}

}  // namespace vorn::engine
