// The real engine on a folder that outlives it, for programs that kill it. ENGINE_PROGRAM and BUILT_DEFAULTS name it
// and its default settings.
#pragma once

#include <charconv>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "core-engine/rules/BundleRules.h"
#include "model/PropertyListCodec.h"
#include "support/ChildProcess.h"
#include "support/TemporaryFolder.h"

namespace vorn::test {

class KillableEngine {
 public:
  // Returns when it is ready; null where it does not start.
  std::unique_ptr<ChildProcess> start() {
    auto engine = std::make_unique<ChildProcess>(std::vector<std::string>{
        "sh", "-c", "exec \"$@\" 2>&1", "sh", ENGINE_PROGRAM, "--state-dir", folder(), "--defaults", BUILT_DEFAULTS});
    const auto line = engine->waitForLine([this](const std::string& each) {
      if (each.find("damaged") != std::string::npos) ++mDamaged;
      return each.find("ready, ") != std::string::npos;
    });
    return line ? std::move(engine) : nullptr;
  }

  // How often it told of damaged settings.
  int damaged() const { return mDamaged; }

  // Where it keeps the settings.
  std::string folder() const { return mFolder.path("state"); }

  // The settings on the disk: the file in force, or the one before it where a kill came between the two renames of a
  // save. None where they are not whole.
  std::optional<PropertyList> settingsOnDisk() const {
    for (const char* name : {"state/settings.plist", "state/settings.last-good.plist"}) {
      auto contents = readPropertyListFile(mFolder.path(name));
      if (!contents) continue;
      return engine::isCompleteBundle(*contents) ? std::optional(*std::move(contents)) : std::nullopt;
    }
    return std::nullopt;
  }

 private:
  engine::test::TemporaryFolder mFolder;
  int mDamaged = 0;
};

// An argument of such a program.
inline std::optional<std::uint32_t> numberIn(std::string_view text) {
  std::uint32_t value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return value;
}

}  // namespace vorn::test
