#include "mice/MouseFinder.h"

#include <libudev.h>
#include <linux/input.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <fstream>
#include <map>
#include <memory>
#include <optional>
#include <tuple>
#include <utility>

#include "mice/MouseIdentity.h"
#include "mice/NodeKind.h"

namespace vorn {

namespace {

struct Unref {
  void operator()(udev* context) const { udev_unref(context); }
  void operator()(udev_enumerate* list) const { udev_enumerate_unref(list); }
  void operator()(udev_device* device) const { udev_device_unref(device); }
};
using Context = std::unique_ptr<udev, Unref>;
using Enumeration = std::unique_ptr<udev_enumerate, Unref>;
using OwnedDevice = std::unique_ptr<udev_device, Unref>;

std::string text(const char* value) {
  return value != nullptr ? value : "";
}
std::string property(udev_device* device, const char* name) {
  return device != nullptr ? text(udev_device_get_property_value(device, name)) : "";
}
std::string attribute(udev_device* device, const char* name) {
  return device != nullptr ? text(udev_device_get_sysattr_value(device, name)) : "";
}
bool is(udev_device* device, const char* name) {
  return property(device, name) == "1";
}

// Of a HID device the kernel tells "0003:000016C0:000027DB".
struct HidId {
  unsigned bus = 0;
  unsigned vendor = 0;
  unsigned product = 0;
};

HidId hidId(udev_device* hid) {
  HidId id;
  if (std::sscanf(property(hid, "HID_ID").c_str(), "%x:%x:%x", &id.bus, &id.vendor, &id.product) != 3) return {};
  return id;
}

unsigned number(const std::string& digits) {
  unsigned value = 0;
  return std::sscanf(digits.c_str(), "%x", &value) == 1 ? value : 0;
}

// What an event node belongs to. The devices above are owned by that of the node.
struct Owner {
  udev_device* device = nullptr;
  HidId id;
  bool isUsb = false;       // the device is a USB device
  bool isReceived = false;  // it stands behind a receiver that the kernel takes apart
};

std::optional<Owner> ownerOf(udev_device* node) {
  udev_device* hid = udev_device_get_parent_with_subsystem_devtype(node, "hid", nullptr);
  udev_device* usb = udev_device_get_parent_with_subsystem_devtype(node, "usb", "usb_device");
  const HidId id = hidId(hid);
  // Above a mouse with Bluetooth there may be a USB device as well: the adapter.
  const bool isBehindAdapter = hid != nullptr && id.bus != BUS_USB;
  // Each device behind such a receiver is a HID device below one of the receiver's own.
  udev_device* above = hid != nullptr ? udev_device_get_parent(hid) : nullptr;
  const bool isReceived = above != nullptr && text(udev_device_get_subsystem(above)) == "hid";
  if (usb != nullptr && !isBehindAdapter && !isReceived)
    return Owner{usb, {BUS_USB, number(attribute(usb, "idVendor")), number(attribute(usb, "idProduct"))}, true, false};
  return hid != nullptr && isBusOfMice(id.bus) ? std::optional(Owner{hid, id, false, isReceived}) : std::nullopt;
}

// The same mouse in the same socket is in the same place.
std::string placeOf(udev_device* node, const Owner& owner) {
  std::string place = property(node, "ID_PATH");
  if (!owner.isUsb) {
    const std::string physical = property(owner.device, "HID_PHYS");
    return !physical.empty() ? physical : !place.empty() ? place : text(udev_device_get_sysname(owner.device));
  }
  // "pci-0000:00:14.0-usb-0:2:1.0" ends in the configuration and the interface.
  if (place.empty()) return text(udev_device_get_sysname(owner.device));
  return place.substr(0, place.rfind(':'));
}

bool isWireless(const Owner& owner, std::string name) {
  std::transform(name.begin(), name.end(), name.begin(), [](unsigned char letter) { return std::tolower(letter); });
  const bool isReceiver = name.find("receiver") != std::string::npos || name.find("dongle") != std::string::npos;
  return owner.id.bus == BUS_BLUETOOTH || owner.isReceived || isReceiver;
}

std::vector<OwnedDevice> devices(udev* context, const char* subsystem, const char* names, udev_device* above) {
  std::vector<OwnedDevice> result;
  const Enumeration list(udev_enumerate_new(context));
  if (!list) return result;
  udev_enumerate_add_match_subsystem(list.get(), subsystem);
  if (names != nullptr) udev_enumerate_add_match_sysname(list.get(), names);
  if (above != nullptr) udev_enumerate_add_match_parent(list.get(), above);
  udev_enumerate_scan_devices(list.get());
  udev_list_entry* entry = nullptr;
  udev_list_entry_foreach(entry, udev_enumerate_get_list_entry(list.get())) {
    OwnedDevice device(udev_device_new_from_syspath(context, udev_list_entry_get_name(entry)));
    if (device) result.push_back(std::move(device));
  }
  return result;
}

// As many bytes of it as tell what it begins with.
std::string beginOfDescriptor(udev_device* hid) {
  if (hid == nullptr) return {};
  std::ifstream file(text(udev_device_get_syspath(hid)) + "/report_descriptor", std::ios::binary);
  char begin[8];
  file.read(begin, sizeof begin);
  return {begin, static_cast<std::size_t>(file.gcount())};
}

NodeKind kindOf(udev_device* node, const Owner& owner) {
  NodeKind kind;
  kind.isMouse = is(node, "ID_INPUT_MOUSE") && !is(node, "ID_INPUT_JOYSTICK");
  kind.isTouched = is(node, "ID_INPUT_TOUCHPAD") || is(node, "ID_INPUT_TABLET");
  kind.isKeyboard = is(node, "ID_INPUT_KEYBOARD");
  udev_device* hid = udev_device_get_parent_with_subsystem_devtype(node, "hid", nullptr);
  kind.isBehindMouse =
      !owner.isReceived && beginsWithMouse(property(node, "ID_USB_INTERFACES"), beginOfDescriptor(hid));
  kind.isNamedAsMouse = is(node, "SKARN_MOUSE");
  return kind;
}

// A mouse while its nodes are gathered.
class Gathering {
 public:
  Gathering(const Owner& owner, udev_device* node) : mOwner(owner) {
    udev_device* hid = udev_device_get_parent_with_subsystem_devtype(node, "hid", nullptr);
    const std::string serial = owner.isUsb ? attribute(owner.device, "serial") : property(owner.device, "HID_UNIQ");
    mPlace = placeOf(node, owner);
    mHardware.systemPath = text(udev_device_get_syspath(owner.device));
    mHardware.id = mouseId(static_cast<std::uint16_t>(owner.id.bus), static_cast<std::uint16_t>(owner.id.vendor),
                           static_cast<std::uint16_t>(owner.id.product), markOf(serial, mPlace));
    mHardware.isMarkedByPlace = !tells(serial);
    mHardware.name = cleanName(property(hid, "HID_NAME"));
    if (owner.isUsb) mHardware.firmwareVersion = firmwareText(attribute(owner.device, "bcdDevice"));
    const std::string product = owner.isUsb ? attribute(owner.device, "product") : mHardware.name;
    mHardware.isWireless = isWireless(owner, product);
    if (mHardware.name.empty()) mHardware.name = cleanName(product);
    if (mHardware.name.empty()) mHardware.name = mHardware.id;
  }

  void add(OwnedDevice node) { mNodes.push_back(std::move(node)); }

  // Nothing where it is no mouse; no nodes where all of them may be a keyboard's.
  std::optional<MouseHardware> finish(udev* context) {
    // In the order in which the kernel has made them, so that those that are named alike keep their names.
    std::sort(mNodes.begin(), mNodes.end(), [](const OwnedDevice& one, const OwnedDevice& other) {
      return udev_device_get_devnum(one.get()) < udev_device_get_devnum(other.get());
    });
    std::vector<NodeKind> kinds;
    for (const OwnedDevice& node : mNodes) kinds.push_back(kindOf(node.get(), mOwner));
    if (!isMouse(kinds)) return std::nullopt;
    for (std::size_t index = 0; index < mNodes.size(); ++index) {
      udev_device* node = mNodes[index].get();
      if (isOfMouse(kinds[index]))
        describe(node);
      else
        mHardware.otherNodes.push_back(text(udev_device_get_devnode(node)));
    }
    const OwnedDevice owner(udev_device_new_from_syspath(context, mHardware.systemPath.c_str()));
    if (!owner) return std::nullopt;
    for (const OwnedDevice& raw : devices(context, "hidraw", nullptr, owner.get()))
      mHardware.rawNodes.push_back(text(udev_device_get_devnode(raw.get())));
    for (const OwnedDevice& supply : devices(context, "power_supply", nullptr, owner.get()))
      mHardware.powerSupplies.push_back(text(udev_device_get_sysname(supply.get())));
    return std::move(mHardware);
  }

  const std::string& place() const { return mPlace; }

 private:
  void describe(udev_device* device) {
    udev_device* input = udev_device_get_parent_with_subsystem_devtype(device, "input", nullptr);
    udev_device* interface = udev_device_get_parent_with_subsystem_devtype(device, "usb", "usb_interface");
    MouseNode node;
    node.path = text(udev_device_get_devnode(device));
    const std::string number = mOwner.isUsb ? attribute(interface, "bInterfaceNumber") : "";
    node.name = nodeName(number, attribute(input, "name"), mNames);
    node.codes.keys = codesOf<KEY_CNT>(attribute(input, "capabilities/key"));
    node.codes.relative = codesOf<REL_CNT>(attribute(input, "capabilities/rel"));
    node.codes.absolute = codesOf<ABS_CNT>(attribute(input, "capabilities/abs"));
    node.isForbidden = ::access(node.path.c_str(), R_OK) != 0;
    mNames.push_back(node.name);
    if (mHardware.resolution == 0) mHardware.resolution = resolutionOf(property(device, "MOUSE_DPI"));
    mHardware.nodes.push_back(std::move(node));
  }

  Owner mOwner;  // its device lives as long as the first node
  std::string mPlace;
  std::vector<OwnedDevice> mNodes;
  std::vector<std::string> mNames;
  MouseHardware mHardware;
};

// Each mouse has an ID of its own, also where a maker has given all of them one serial number: there the place is added
// for all but the first, by the places.
void makeUnique(std::vector<std::pair<MouseHardware, std::string>>& mice) {
  std::sort(mice.begin(), mice.end(), [](const auto& one, const auto& other) {
    return std::tie(one.first.id, one.second) < std::tie(other.first.id, other.second);
  });
  for (std::size_t index = mice.size(); index > 1; --index) {
    MouseHardware& mouse = mice[index - 1].first;
    if (mouse.id == mice[index - 2].first.id) mouse.id += '-' + plainMark(mice[index - 1].second);
  }
}

}  // namespace

Found findMice() {
  // What programs make stands here.
  constexpr std::string_view virtualDevices = "/sys/devices/virtual/input/";
  Found found;
  const Context context(udev_new());
  if (!context) return found;
  std::map<std::string, Gathering> gathered;
  for (OwnedDevice& node : devices(context.get(), "input", "event*", nullptr)) {
    found.isComplete = found.isComplete && udev_device_get_is_initialized(node.get()) != 0;
    const std::string path = text(udev_device_get_syspath(node.get()));
    if (path.starts_with(virtualDevices) || udev_device_get_is_initialized(node.get()) == 0) continue;
    const std::optional<Owner> owner = ownerOf(node.get());
    if (!owner) continue;
    const std::string key = text(udev_device_get_syspath(owner->device));
    gathered.try_emplace(key, *owner, node.get()).first->second.add(std::move(node));
  }
  std::vector<std::pair<MouseHardware, std::string>> mice;
  for (auto& [path, gathering] : gathered) {
    auto mouse = gathering.finish(context.get());
    if (mouse && mouse->nodes.empty())
      found.leftAlone.push_back(std::move(*mouse));
    else if (mouse)
      mice.emplace_back(std::move(*mouse), gathering.place());
  }
  makeUnique(mice);
  for (auto& [mouse, place] : mice) found.mice.push_back(std::move(mouse));
  std::sort(found.mice.begin(), found.mice.end(), [](const MouseHardware& one, const MouseHardware& other) {
    return std::tie(one.name, one.id) < std::tie(other.name, other.id);
  });
  return found;
}

bool isKnownToUdev(const std::string& node) {
  struct stat status {};
  if (::stat(node.c_str(), &status) != 0) return false;
  const Context context(udev_new());
  if (!context) return false;
  const OwnedDevice device(udev_device_new_from_devnum(context.get(), 'c', status.st_rdev));
  return device && udev_device_get_is_initialized(device.get()) != 0;
}

}  // namespace vorn
