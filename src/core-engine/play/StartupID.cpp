#include "core-engine/play/StartupID.h"

#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <chrono>
#include <cstdint>

#include "core-engine/play/ProgramSearch.h"

namespace vorn::engine {

namespace {

bool isLocalX11() {
  const std::string display = environmentValue("DISPLAY");
  const bool isWayland =
      !environmentValue("WAYLAND_DISPLAY").empty() || environmentValue("XDG_SESSION_TYPE") == "wayland";
  return !isWayland && (display.starts_with(':') || display.starts_with("unix:"));
}

}  // namespace

std::string startupID(std::string_view application) {
  if (!isLocalX11()) return {};
  static unsigned count = 0;
  std::string name(application);
  std::ranges::replace_if(
      name, [](char character) { return std::isalnum(static_cast<unsigned char>(character)) == 0; }, '_');
  // Times of the X server are milliseconds of the monotonic clock in 32 bits; 0 would mean now, whenever that is read.
  const auto now =
      std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now().time_since_epoch());
  const auto time = std::max<std::uint32_t>(static_cast<std::uint32_t>(now.count()), 1);
  return "vorn-core-engine/" + name + "/" + std::to_string(::getpid()) + "-" + std::to_string(++count) + "_TIME" +
         std::to_string(time);
}

}  // namespace vorn::engine
