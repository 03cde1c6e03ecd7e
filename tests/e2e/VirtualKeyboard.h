// A keyboard that a Wayland compositor takes from a client: the protocol virtual-keyboard-unstable-v1, whose requests
// carry the time stamps that windows see.
#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <string>

namespace vorn::test {

class VirtualKeyboard {
 public:
  // Plugs it into the first seat of the compositor at the socket, with the layout of the United States. Null when the
  // compositor does not take it.
  static std::unique_ptr<VirtualKeyboard> plug(const std::string& socket);
  ~VirtualKeyboard();  // unplugs it
  VirtualKeyboard(const VirtualKeyboard&) = delete;
  VirtualKeyboard& operator=(const VirtualKeyboard&) = delete;

  // The kernel's number of a key. modifiers: those held afterwards, the bits that XKB gives them.
  void key(std::uint32_t kernelKey, bool isPressed, std::uint32_t modifiers, std::chrono::milliseconds time);
  // Waits until the compositor has taken what was typed. False when it is gone.
  bool flush();

 private:
  struct State;
  explicit VirtualKeyboard(std::unique_ptr<State> state);
  std::unique_ptr<State> mState;
};

}  // namespace vorn::test
