// What a person does to the engine's virtual mouse, from a process of its own.
#pragma once

#include <string>
#include <vector>

#include "protocol/VirtualMouse.h"
#include "support/ChildProcess.h"

namespace vorn::test {

class VirtualMouse {
 public:
  // connection: "wired" or "wireless". Each of these is done when it returns true.
  static bool plug(const std::string& connection) {
    return call(virtualMouse::methods::Plug, {"string:" + connection});
  }
  static bool unplug() { return call(virtualMouse::methods::Unplug); }
  static bool setBattery(int percent) {
    return call(virtualMouse::methods::SetBattery, {"int32:" + std::to_string(percent)});
  }
  // A control by its identifier is pressed and released.
  static bool click(const std::string& control) {
    return call(virtualMouse::methods::Press, {"string:" + control}) &&
           call(virtualMouse::methods::Release, {"string:" + control});
  }
  // A key (usage page 7) or mouse button (page 9) of another device of the desktop is pressed and released.
  static bool type(int usagePage, int usage) {
    return call(virtualMouse::methods::Type, typeArguments(usagePage, usage, true)) &&
           call(virtualMouse::methods::Type, typeArguments(usagePage, usage, false));
  }

 private:
  static std::vector<std::string> typeArguments(int usagePage, int usage, bool isPressed) {
    return {"uint32:" + std::to_string(usagePage), "uint32:" + std::to_string(usage),
            isPressed ? "boolean:true" : "boolean:false"};
  }
  static bool call(const std::string& method, const std::vector<std::string>& arguments = {}) {
    std::vector<std::string> line{"dbus-send",
                                  "--session",
                                  "--print-reply",
                                  std::string("--dest=") + virtualMouse::busName,
                                  virtualMouse::objectPath,
                                  std::string(virtualMouse::interface) + "." + method};
    line.insert(line.end(), arguments.begin(), arguments.end());
    return ChildProcess(line).waitForEnd() == 0;
  }
};

}  // namespace vorn::test
