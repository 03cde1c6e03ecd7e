// A display of a test's own, with what manages its windows, and what a person types on it.
#pragma once

#include <sys/types.h>

#include <chrono>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace vorn::test {

// A key by its keyboard usage, pressed or released so long after the one before.
struct Stroke {
  std::uint16_t usage = 0;
  bool isPressed = false;
  std::chrono::milliseconds gap{40};
};

class Display {
 public:
  virtual ~Display() = default;

  // As Qt names it. What a program needs to find the display is in the environment.
  virtual std::string platform() const = 0;
  enum class Window { Main, Sheet };
  // Waits until this window of the process has the keyboard. False when it has not got it in time.
  virtual bool waitForFocus(pid_t process, Window window) = 0;
  // Closes the process's main window, which has the keyboard, as the button of its frame does, and waits until it is no
  // longer to be seen. False when it stays.
  virtual bool closeWindow(pid_t process) = 0;
  // Types, and returns the time stamps that the display gives the strokes, by which a window sees them. Empty on
  // failure.
  virtual std::vector<std::chrono::milliseconds> type(const std::vector<Stroke>& strokes) = 0;
  // Another window, or an empty screen, takes the keyboard. False when it has not got it in time.
  virtual bool takeFocus() = 0;
};

// With Openbox on Xvfb. Null, with a message on standard error, when that does not start.
std::unique_ptr<Display> startX11Display(const std::string& folder);
// With Sway without a screen, likewise. The folder is empty, and holds its socket.
std::unique_ptr<Display> startWaylandDisplay(const std::string& folder);

}  // namespace vorn::test
