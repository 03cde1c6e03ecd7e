// A device that the engine makes, with which it types, clicks and moves the pointer, and who holds what down on it.
// Made through uinput; it and all that it holds goes with the process, however that ends. One thread at a time.
#pragma once

#include <linux/input.h>

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "core-engine/device/linux/InputNode.h"
#include "core-engine/device/linux/KernelEvent.h"

struct libevdev_uinput;

namespace vorn::engine {

class OutputDevice {
 public:
  // Each of these gives nothing, with the reason in errno, where this user may make no devices.
  //
  // "Skarn Keyboard", with every key of a keyboard.
  static std::unique_ptr<OutputDevice> keyboard();
  // "Skarn Pointer", with the buttons of page 9, both wheels and motion.
  static std::unique_ptr<OutputDevice> pointer();
  // A device that is to the desktop what the node is, so that what was set for that one holds for this: its name,
  // numbers, codes and properties. withButtons: what the pointer above has, too.
  static std::unique_ptr<OutputDevice> copyOf(const InputNode& node, bool withButtons);
  // Whether this user may make any.
  static bool isAllowed();

  ~OutputDevice();
  OutputDevice(const OutputDevice&) = delete;
  OutputDevice& operator=(const OutputDevice&) = delete;

  const std::string& node() const { return mNode; }  // /dev/input/event9
  bool has(std::uint16_t type, std::uint16_t code) const;
  // It can do all that the pointer above can.
  bool isPointer() const;

 private:
  friend class OutputHold;
  struct Free {
    void operator()(libevdev* description) const;
    void operator()(libevdev_uinput* device) const;
  };
  using Description = std::unique_ptr<libevdev, Free>;

  static Description empty(const char* name);
  static std::unique_ptr<OutputDevice> make(Description description);

  OutputDevice() = default;
  void write(const KernelEvent& event);

  Description mDescription;
  std::unique_ptr<libevdev_uinput, Free> mDevice;
  std::string mNode;
  std::vector<input_event> mReport;  // what has been written since its last SYN_REPORT
  std::array<std::uint8_t, KEY_CNT> mHolders{};
};

// One of those who hold keys and buttons of a device. A key goes down with the first of them and up with the last.
class OutputHold {
 public:
  explicit OutputHold(OutputDevice& device) : mDevice(device) {}
  ~OutputHold() { releaseAll(); }
  OutputHold(const OutputHold&) = delete;
  OutputHold& operator=(const OutputHold&) = delete;

  OutputDevice& device() const { return mDevice; }
  // The device's readers get it with the next SYN_REPORT. A release of what this holder has not down, a press of what
  // it has down and what the device has not become nothing.
  void write(const KernelEvent& event);
  void writeReport(const KernelEvent& event);
  bool isHolding(std::uint16_t key) const;
  bool isHoldingAnything() const { return !mKeys.empty(); }
  void releaseAll();  // the last press first

 private:
  OutputDevice& mDevice;
  std::vector<std::uint16_t> mKeys;
};

}  // namespace vorn::engine
