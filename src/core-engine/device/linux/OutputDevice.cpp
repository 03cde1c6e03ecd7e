#include "core-engine/device/linux/OutputDevice.h"

#include <libevdev/libevdev-uinput.h>
#include <libevdev/libevdev.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <initializer_list>

#include "mice/EventCodes.h"
#include "model/KernelKeys.h"

namespace vorn::engine {

namespace {

void enable(libevdev* description, unsigned type, unsigned code) {
  libevdev_enable_event_code(description, type, code, nullptr);
}

struct Code {
  std::uint16_t type;
  std::uint16_t code;
};

// What assignments may do with a pointer, and what makes one.
std::vector<Code> pointerCodes() {
  std::vector<Code> codes;
  for (hid::Usage button = hid::primaryButton; button <= hid::lastFurtherButton; ++button) {
    if (const auto key = kernelKeyOfUsage({hid::buttonPage, button})) codes.push_back({EV_KEY, *key});
  }
  for (const int code : {REL_X, REL_Y, REL_WHEEL, REL_HWHEEL, REL_WHEEL_HI_RES, REL_HWHEEL_HI_RES})
    codes.push_back({EV_REL, static_cast<std::uint16_t>(code)});
  return codes;
}

void enablePointer(libevdev* description) {
  for (const Code& each : pointerCodes()) enable(description, each.type, each.code);
}

}  // namespace

void OutputDevice::Free::operator()(libevdev* description) const {
  libevdev_free(description);
}
void OutputDevice::Free::operator()(libevdev_uinput* device) const {
  libevdev_uinput_destroy(device);
}

OutputDevice::Description OutputDevice::empty(const char* name) {
  Description description(libevdev_new());
  if (!description) return nullptr;
  libevdev_set_name(description.get(), name);
  libevdev_set_id_bustype(description.get(), BUS_VIRTUAL);
  return description;
}

std::unique_ptr<OutputDevice> OutputDevice::make(Description description) {
  if (!description) return nullptr;
  libevdev_uinput* made = nullptr;
  const int result = libevdev_uinput_create_from_device(description.get(), LIBEVDEV_UINPUT_OPEN_MANAGED, &made);
  errno = -result;
  if (result < 0) return nullptr;
  std::unique_ptr<OutputDevice> device(new OutputDevice);
  device->mDescription = std::move(description);
  device->mDevice.reset(made);
  if (const char* node = libevdev_uinput_get_devnode(made)) device->mNode = node;
  return device;
}

std::unique_ptr<OutputDevice> OutputDevice::keyboard() {
  Description description = empty("Skarn Keyboard");
  if (!description) return nullptr;
  for (std::uint16_t code = 1; code < KEY_MAX; ++code) {
    if (isKeyboardKey(code) && libevdev_event_code_get_name(EV_KEY, code) != nullptr)
      enable(description.get(), EV_KEY, code);
  }
  // A text console leaves the repeating of held keys to the kernel.
  libevdev_enable_event_type(description.get(), EV_REP);
  return make(std::move(description));
}

std::unique_ptr<OutputDevice> OutputDevice::pointer() {
  Description description = empty("Skarn Pointer");
  if (!description) return nullptr;
  enablePointer(description.get());
  return make(std::move(description));
}

std::unique_ptr<OutputDevice> OutputDevice::copyOf(const InputNode& node, bool withButtons) {
  Description description(node.description());
  if (!description) return nullptr;
  // What the desktop would send to the device, it still sends to the real one.
  for (const unsigned type : std::initializer_list<unsigned>{EV_FF, EV_PWR, EV_LED, EV_SND})
    libevdev_disable_event_type(description.get(), type);
  if (withButtons) enablePointer(description.get());
  return make(std::move(description));
}

bool OutputDevice::isAllowed() {
  return ::access("/dev/uinput", R_OK | W_OK) == 0;
}

OutputDevice::~OutputDevice() = default;

bool OutputDevice::has(std::uint16_t type, std::uint16_t code) const {
  return libevdev_has_event_code(mDescription.get(), type, code) != 0;
}

bool OutputDevice::isPointer() const {
  const std::vector<Code> codes = pointerCodes();
  return std::all_of(codes.begin(), codes.end(), [this](const Code& each) { return has(each.type, each.code); });
}

void OutputDevice::write(const KernelEvent& event) {
  input_event written{};
  written.type = event.type;
  written.code = event.code;
  written.value = event.value;
  mReport.push_back(written);
  if (event.type != EV_SYN || event.code != SYN_REPORT) return;
  // The kernel takes a report as a whole, at once.
  [[maybe_unused]] const ssize_t size =
      ::write(libevdev_uinput_get_fd(mDevice.get()), mReport.data(), mReport.size() * sizeof(input_event));
  mReport.clear();
}

bool OutputHold::isHolding(std::uint16_t key) const {
  return std::find(mKeys.begin(), mKeys.end(), key) != mKeys.end();
}

void OutputHold::write(const KernelEvent& event) {
  if (event.type != EV_KEY) {
    const bool isKnown = event.type == EV_SYN || mDevice.has(event.type, event.code);
    return isKnown ? mDevice.write(event) : void();
  }
  const bool isPress = event.value != 0;
  if (!mDevice.has(EV_KEY, event.code) || isPress == isHolding(event.code)) return;
  std::uint8_t& holders = mDevice.mHolders[event.code];
  if (isPress) {
    mKeys.push_back(event.code);
    if (holders++ == 0) mDevice.write({EV_KEY, event.code, 1});
  } else {
    std::erase(mKeys, event.code);
    if (--holders == 0) mDevice.write({EV_KEY, event.code, 0});
  }
}

void OutputHold::writeReport(const KernelEvent& event) {
  write(event);
  mDevice.write({EV_SYN, SYN_REPORT, 0});
}

void OutputHold::releaseAll() {
  if (mKeys.empty()) return;
  while (!mKeys.empty()) write({EV_KEY, mKeys.back(), 0});
  mDevice.write({EV_SYN, SYN_REPORT, 0});
}

}  // namespace vorn::engine
