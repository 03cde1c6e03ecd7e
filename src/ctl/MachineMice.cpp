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

// What the node belongs to; null for what is plugged in nowhere. It lasts as long as the node.
udev_device* hardwareOf(udev_device* node) {
  udev_device* const hid = udev_device_get_parent_with_subsystem_devtype(node, "hid", nullptr);
  udev_device* const usb = udev_device_get_parent_with_subsystem_devtype(node, "usb", "usb_device");
  // "0005:..." is Bluetooth (linux/input.h); what is above such a one is the adapter.
  const bool isBluetooth = hid != nullptr && text(udev_device_get_property_value(hid, "HID_ID")).starts_with("0005:");
  return usb == nullptr || isBluetooth ? hid : usb;
}

std::string nameOf(udev_device* node) {
  udev_device* const input = udev_device_get_parent_with_subsystem_devtype(node, "input", nullptr);
  return std::string(text(input == nullptr ? nullptr : udev_device_get_sysattr_value(input, "name")));
}

}  // namespace

std::vector<MachineMouse> miceOfMachine() {
  const Owned<udev> context(udev_new());
  const Owned<udev_enumerate> list(context ? udev_enumerate_new(context.get()) : nullptr);
  if (!list) return {};
  udev_enumerate_add_match_subsystem(list.get(), "input");
  udev_enumerate_add_match_sysname(list.get(), "event*");
  udev_enumerate_scan_devices(list.get());
  struct Hardware {
    MachineMouse mouse;
    bool isMouse = false;
  };
  std::map<std::string, Hardware> all;
  udev_list_entry* entry = nullptr;
  udev_list_entry_foreach(entry, udev_enumerate_get_list_entry(list.get())) {
    const Owned<udev_device> node(udev_device_new_from_syspath(context.get(), udev_list_entry_get_name(entry)));
    udev_device* const hardware = node ? hardwareOf(node.get()) : nullptr;
    const std::string path(text(node ? udev_device_get_devnode(node.get()) : nullptr));
    if (hardware == nullptr || path.empty()) continue;
    Hardware& found = all[std::string(text(udev_device_get_syspath(hardware)))];
    const bool isMouse = text(udev_device_get_property_value(node.get(), "ID_INPUT_MOUSE")) == "1";
    // The node that moves the pointer gives the name.
    if (isMouse || found.mouse.name.empty()) found.mouse.name = nameOf(node.get());
    found.isMouse = found.isMouse || isMouse;
    found.mouse.nodes.push_back(path);
    if (::access(path.c_str(), R_OK) != 0) (isMouse ? found.mouse.forbidden : found.mouse.closedKeys).push_back(path);
  }
  std::vector<MachineMouse> result;
  for (auto& [place, hardware] : all) {
    if (hardware.isMouse) result.push_back(std::move(hardware.mouse));
  }
  return result;
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
