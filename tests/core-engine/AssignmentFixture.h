// A virtual mouse whose controls are carried out on settings in memory, with its output and the time of each event.
#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <cstdint>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "core-engine/TestParts.h"
#include "core-engine/play/AssignmentPlayer.h"

namespace vorn::engine {

inline std::ostream& operator<<(std::ostream& stream, const OutputEvent& event) {
  return stream << event.usagePage << "/" << event.usage << "=" << event.value;
}

namespace test {

struct Output {
  std::int64_t time = 0;  // milliseconds since the start of the test
  OutputEvent event;
  friend bool operator==(const Output&, const Output&) = default;
  friend std::ostream& operator<<(std::ostream& stream, const Output& output) {
    return stream << output.time << ": " << output.event;
  }
};
using Outputs = std::vector<Output>;
using OutputEvents = std::vector<OutputEvent>;

// Keeps the paths instead of starting anything.
class RecordingLauncher : public ProgramLauncher {
 public:
  std::vector<std::string> paths;
  std::string error;  // not empty: nothing can be launched

  void launch(const std::string& path, const Failed& failed) override {
    paths.push_back(path);
    if (!error.empty()) failed(error);
  }
};

inline OutputEvent keyDown(std::uint16_t usage) {
  return {7, usage, 1};
}
inline OutputEvent keyUp(std::uint16_t usage) {
  return {7, usage, 0};
}
inline OutputEvent buttonDown(std::uint16_t button) {
  return {9, button, 1};
}
inline OutputEvent buttonUp(std::uint16_t button) {
  return {9, button, 0};
}

class AssignmentFixture : public testing::Test {
 protected:
  AssignmentFixture() {
    parts.device.setEventHandler([this](const DeviceEvent& event) { player.handle(event); });
    parts.device.setOutputHandler([this](const OutputEvent& event) {
      const auto time = std::chrono::duration_cast<std::chrono::milliseconds>(parts.scheduler.now());
      outputs.push_back({time.count(), event});
    });
  }

  void press(std::string_view control) { EXPECT_TRUE(parts.device.setControl(control, true)); }
  void release(std::string_view control) { EXPECT_TRUE(parts.device.setControl(control, false)); }
  void tap(std::string_view control) {
    press(control);
    release(control);
  }

  // The output since the last call, without and with its times.
  OutputEvents takeEvents() {
    OutputEvents events;
    for (const Output& output : outputs) events.push_back(output.event);
    outputs.clear();
    return events;
  }
  Outputs takeOutputs() { return std::exchange(outputs, {}); }

  const PropertyList& profile(std::int64_t position = 0) { return parts.store.bundle()["Profiles"].at(position); }
  std::int32_t activeProfile() { return parts.store.bundle()["DeviceSettings"]["ActiveProfile"].toInt(); }

  void setProfile(std::int64_t position, const PropertyList& record) {
    EXPECT_EQ(parts.store.apply([&](const PropertyList& bundle) {
      return bundle.with("Profiles", bundle["Profiles"].replacing(position, record));
    }),
              SettingsStore::Outcome::Done);
  }
  // Assigns a control in a keymap of the first profile, and in the groups in force where that is keymap 0.
  void assign(std::string_view control, const PropertyList& assignment, std::int64_t keymap = 0) {
    const bool isButton = control.starts_with('0');
    const std::string_view group = isButton ? "Buttons" : "Keys";
    const auto withIt = [&](const PropertyList& holder) {
      return holder.with(group, holder[group].with(control, assignment));
    };
    PropertyList changed = profile();
    changed = changed.with("Keymap", changed["Keymap"].replacing(keymap, withIt(changed["Keymap"].at(keymap))));
    setProfile(0, keymap == 0 ? withIt(changed) : changed);
  }

  TestParts parts{bundleOf({test::profile("One"), test::profile("Two"), test::profile("Three")})};
  RecordingLauncher launcher;
  AssignmentPlayer player{parts.parts(), launcher};
  Outputs outputs;
};

}  // namespace test
}  // namespace vorn::engine
