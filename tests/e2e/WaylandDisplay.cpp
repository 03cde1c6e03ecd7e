#include <cstdio>
#include <cstdlib>
#include <thread>

#include "e2e/Display.h"
#include "e2e/VirtualKeyboard.h"
#include "model/KernelKeys.h"
#include "support/Sway.h"

namespace vorn::test {

namespace {

using std::chrono::milliseconds;

constexpr std::chrono::seconds patience{60};

// Keys repeat as soon as they are held, so that repetitions come between any two strokes.
constexpr const char* swayConfiguration =
    "default_border none\n"
    "focus_follows_mouse no\n"
    "input * {\n"
    "  repeat_delay 1\n"
    "  repeat_rate 100\n"
    "}\n";

// The bit that XKB gives a modifier; 0 for other keys.
std::uint32_t bitOf(std::uint16_t usage) {
  constexpr std::uint32_t bits[] = {4, 1, 8, 64};  // Control, Shift, Alt, Command
  if (usage < hid::firstModifier || usage > hid::lastModifier) return 0;
  return bits[(usage - hid::firstModifier) % 4];
}

class WaylandDisplay : public Display {
 public:
  bool start(const std::string& folder) {
    mSway = Sway::start(folder, swayConfiguration);
    if (!mSway) return false;
    setenv("XDG_RUNTIME_DIR", folder.c_str(), 1);
    setenv("WAYLAND_DISPLAY", mSway->socket().c_str(), 1);
    mKeyboard = VirtualKeyboard::plug(mSway->socket());
    return mKeyboard != nullptr;
  }

  std::string platform() const override { return "wayland"; }

  bool waitForFocus(pid_t process, Window window) override {
    const std::string kind = window == Window::Sheet ? "floating" : "tiling";
    const std::string windowInFront = "[con_id=__focused__ " + kind + " pid=" + std::to_string(process) + "] nop";
    const auto end = std::chrono::steady_clock::now() + patience;
    while (!mSway->obeys(windowInFront)) {
      if (std::chrono::steady_clock::now() > end) return false;
      std::this_thread::sleep_for(milliseconds(20));
    }
    return true;
  }

  std::vector<milliseconds> type(const std::vector<Stroke>& strokes) override {
    std::vector<milliseconds> times;
    for (const Stroke& stroke : strokes) {
      const auto key = kernelKeyOfUsage({hid::keyboardPage, stroke.usage});
      if (!key) return {};
      const std::uint32_t bit = bitOf(stroke.usage);
      mModifiers = stroke.isPressed ? mModifiers | bit : mModifiers & ~bit;
      mTime += stroke.gap;
      mKeyboard->key(*key, stroke.isPressed, mModifiers, mTime);
      times.push_back(mTime);
    }
    return mKeyboard->flush() ? times : std::vector<milliseconds>();
  }

  bool closeWindow(pid_t process) override { return mSway->obeys("[pid=" + std::to_string(process) + "] kill"); }

  bool takeFocus() override { return mSway->obeys("workspace 2"); }

 private:
  std::unique_ptr<Sway> mSway;  // outlives the keyboard
  std::unique_ptr<VirtualKeyboard> mKeyboard;
  std::uint32_t mModifiers = 0;
  milliseconds mTime{1'000'000};
};

}  // namespace

std::unique_ptr<Display> startWaylandDisplay(const std::string& folder) {
  auto display = std::make_unique<WaylandDisplay>();
  if (display->start(folder)) return display;
  std::fputs("No display: its keyboard cannot be plugged\n", stderr);
  return nullptr;
}

}  // namespace vorn::test
