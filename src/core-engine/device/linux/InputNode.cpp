#include "core-engine/device/linux/InputNode.h"

#include <fcntl.h>
#include <libevdev/libevdev.h>
#include <linux/input.h>
#include <sys/ioctl.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <ctime>

namespace vorn::engine {

InputNode::Time InputNode::now() {
  timespec time{};
  ::clock_gettime(CLOCK_MONOTONIC, &time);
  return std::chrono::seconds(time.tv_sec) + std::chrono::duration_cast<Time>(std::chrono::nanoseconds(time.tv_nsec));
}

void InputNode::Free::operator()(libevdev* node) const {
  libevdev_free(node);
}

std::unique_ptr<InputNode> InputNode::open(const std::string& path) {
  const int descriptor = ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
  if (descriptor < 0) return nullptr;
  std::unique_ptr<InputNode> node(new InputNode(descriptor));
  libevdev* opened = nullptr;
  if (const int result = libevdev_new_from_fd(descriptor, &opened); result < 0) {
    errno = -result;
    return nullptr;
  }
  node->mNode.reset(opened);
  libevdev_set_clock_id(opened, CLOCK_MONOTONIC);
  return node;
}

InputNode::~InputNode() = default;

HighResolutionWheels InputNode::highResolutionWheels() const {
  return {libevdev_has_event_code(mNode.get(), EV_REL, REL_WHEEL_HI_RES) != 0,
          libevdev_has_event_code(mNode.get(), EV_REL, REL_HWHEEL_HI_RES) != 0};
}

bool InputNode::grab() {
  const int result = libevdev_grab(mNode.get(), LIBEVDEV_GRAB);
  mIsGrabbed = result == 0;
  errno = -result;
  return mIsGrabbed;
}

void InputNode::letGo() {
  libevdev_grab(mNode.get(), LIBEVDEV_UNGRAB);
  mIsGrabbed = false;
}

bool InputNode::isAnythingDown() const {
  std::array<unsigned char, KEY_CNT / 8> keys{};
  if (::ioctl(descriptor(), EVIOCGKEY(keys.size()), keys.data()) < 0) return false;
  if (std::any_of(keys.begin(), keys.end(), [](unsigned char byte) { return byte != 0; })) return true;
  for (unsigned code = ABS_HAT0X; code <= ABS_HAT3Y; ++code) {
    input_absinfo hat{};
    if (libevdev_has_event_code(mNode.get(), EV_ABS, code) != 0 && ::ioctl(descriptor(), EVIOCGABS(code), &hat) == 0 &&
        hat.value != 0)
      return true;
  }
  return false;
}

ReportReader::Result InputNode::read(const ReportHandler& handler) {
  // What a fast mouse sends in a hundredth of a second.
  constexpr std::size_t maximumEventsInOneGo = 256;
  const auto next = [this](unsigned flags, input_event& event) {
    return libevdev_next_event(mNode.get(), flags, &event);
  };
  return mReader.read(next, handler, maximumEventsInOneGo);
}

libevdev* InputNode::description() const {
  libevdev* description = nullptr;
  return libevdev_new_from_fd(descriptor(), &description) == 0 ? description : nullptr;
}

}  // namespace vorn::engine
