#include "ctl/MachineMice.h"

#include <libudev.h>
#include <unistd.h>

#include <filesystem>
#include <map>
#include <memory>
#include <string_view>
#include <system_error>
#include <utility>

namespace vorn::ctl {

namespace {

struct Unref {
  void operator()(udev* context) const { udev_unref(context); }
  void operator()(udev_enumerate* list) const { udev_enumerate_unref(list); }
  void operator()(udev_device* device) const { udev_device_unref(device); }
};
template <typename T>
using Owned = std::unique_ptr<T, Unref>;

constexpr const char* rulesName = "70-skarn.rules";

std::string_view text(const char* value) {
  return value == nullptr ? std::string_view() : std::string_view(value);
}

udev_device* hidOf(udev_device* node) {
  return udev_device_get_parent_with_subsystem_devtype(node, "hid", nullptr);
}

bool isBus(std::string_view hidID, std::string_view number) {
  return hidID.starts_with(number);
}

// linux/input.h
constexpr std::string_view usbBus = "0003:";
constexpr std::string_view bluetoothBus = "0005:";

// What the node belongs to; null for what is plugged in nowhere. It lasts as long as the node.
udev_device* hardwareOf(udev_device* node) {
  udev_device* const hid = hidOf(node);
  udev_device* const usb = udev_device_get_parent_with_subsystem_devtype(node, "usb", "usb_device");
  if (hid == nullptr) return usb;
  // What is above a device with Bluetooth is the adapter.
  const bool isBluetooth = isBus(text(udev_device_get_property_value(hid, "HID_ID")), bluetoothBus);
  udev_device* const above = udev_device_get_parent(hid);
  const bool isReceived = above != nullptr && text(udev_device_get_subsystem(above)) == "hid";
  return usb == nullptr || isBluetooth || isReceived ? hid : usb;
}

std::string nameOf(udev_device* node) {
  udev_device* const input = udev_device_get_parent_with_subsystem_devtype(node, "input", nullptr);
  return std::string(text(input == nullptr ? nullptr : udev_device_get_sysattr_value(input, "name")));
}

bool is(udev_device* node, const char* property) {
  return text(udev_device_get_property_value(node, property)) == "1";
}

}  // namespace

std::vector<MachineMouse> miceOf(const std::vector<MachineNode>& nodes) {
  struct Hardware {
    MachineMouse mouse;
    bool isMouse = false;
    bool isTouched = false;
  };
  std::map<std::string, Hardware> all;
  for (const MachineNode& node : nodes) {
    if (!node.hidID.empty() && !isBus(node.hidID, usbBus) && !isBus(node.hidID, bluetoothBus)) continue;
    Hardware& found = all[node.hardware];
    // The node that moves the pointer gives the name.
    if ((node.isMouse && !found.isMouse) || found.mouse.name.empty()) found.mouse.name = node.name;
    found.isMouse = found.isMouse || node.isMouse;
    found.isTouched = found.isTouched || node.isTouched;
    found.mouse.nodes.push_back(node.path);
    if (node.isForbidden) (node.isMouse ? found.mouse.forbidden : found.mouse.closedKeys).push_back(node.path);
  }
  std::vector<MachineMouse> result;
  for (auto& [place, hardware] : all) {
    if (hardware.isMouse && !hardware.isTouched) result.push_back(std::move(hardware.mouse));
  }
  return result;
}

std::vector<MachineMouse> miceOfMachine() {
  const Owned<udev> context(udev_new());
  const Owned<udev_enumerate> list(context ? udev_enumerate_new(context.get()) : nullptr);
  if (!list) return {};
  udev_enumerate_add_match_subsystem(list.get(), "input");
  udev_enumerate_add_match_sysname(list.get(), "event*");
  udev_enumerate_scan_devices(list.get());
  std::vector<MachineNode> nodes;
  udev_list_entry* entry = nullptr;
  udev_list_entry_foreach(entry, udev_enumerate_get_list_entry(list.get())) {
    const Owned<udev_device> node(udev_device_new_from_syspath(context.get(), udev_list_entry_get_name(entry)));
    udev_device* const hardware = node ? hardwareOf(node.get()) : nullptr;
    const std::string path(text(node ? udev_device_get_devnode(node.get()) : nullptr));
    if (hardware == nullptr || path.empty()) continue;
    udev_device* const hid = hidOf(node.get());
    nodes.push_back({std::string(text(udev_device_get_syspath(hardware))),
                     std::string(text(hid == nullptr ? nullptr : udev_device_get_property_value(hid, "HID_ID"))), path,
                     nameOf(node.get()), is(node.get(), "ID_INPUT_MOUSE") && !is(node.get(), "ID_INPUT_JOYSTICK"),
                     is(node.get(), "ID_INPUT_TOUCHPAD") || is(node.get(), "ID_INPUT_TABLET"),
                     ::access(path.c_str(), R_OK) != 0});
  }
  return miceOf(nodes);
}

FileAccess accessTo(const char* path) {
  if (::access(path, F_OK) != 0) return FileAccess::Missing;
  return ::access(path, R_OK | W_OK) == 0 ? FileAccess::Allowed : FileAccess::Forbidden;
}

std::string installedRules() {
  for (const char* const folder : {"/etc", "/run", "/usr/local/lib", "/usr/lib", "/lib"}) {
    std::string path = std::string(folder) + "/udev/rules.d/" + rulesName;
    if (::access(path.c_str(), R_OK) == 0) return path;
  }
  return {};
}

std::string rulesAtHand() {
  std::error_code error;
  const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", error);
  const std::filesystem::path folder = program.parent_path().parent_path();
  // Of an installation, and of a build folder.
  for (const auto& each : {folder / "lib/udev/rules.d", folder.parent_path().parent_path() / "resources/udev"}) {
    std::string path = (each / rulesName).string();
    if (!error && ::access(path.c_str(), R_OK) == 0) return path;
  }
  return rulesName;
}

}  // namespace vorn::ctl
