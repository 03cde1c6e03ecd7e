// The program itself beside a desktop's notification service.
#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "core-engine/TestBundle.h"
#include "model/PropertyListCodec.h"
#include "ports/BusMethodCall.h"
#include "protocol/VirtualMouse.h"
#include "support/BusPump.h"
#include "support/ChildProcess.h"
#include "support/FakeNotifications.h"
#include "support/PrivateBus.h"
#include "support/TemporaryFolder.h"

namespace vorn::engine::test {
namespace {

using vorn::test::ChildProcess;
using vorn::test::FakeNotifications;
using vorn::test::serveBusUntil;
using Calls = std::vector<std::string>;
using namespace std::chrono_literals;

PropertyList stage(int dpi) {
  return PropertyList::dictionary({{"dpix", dpi}, {"dpiy", dpi}, {"independentxy", 0}});
}

// A profile of two stages whose key 8 switches to the second profile.
PropertyList switching(std::string_view name, bool isTold) {
  const PropertyList command = PropertyList::dictionary({{"command", 17}, {"param1", 1}, {"param2", 0}});
  const PropertyList usual = profile(name);
  const PropertyList keymap = usual["Keymap"].at(0);
  return usual.with("Keys", usual["Keys"].with("8", command))
      .with("Keymap", usual["Keymap"].replacing(0, keymap.with("Keys", keymap["Keys"].with("8", command))))
      .with("Stages", PropertyList::array({stage(400), stage(1800)}))
      .with("StageValue", 0)
      .with("DPIX", 400)
      .with("DPIY", 400)
      .with("SensitivityOSDOn", isTold ? 1 : 0);
}

std::string told(const std::string& title, const std::string& text, int replaced) {
  return "Notify 'Skarn' u" + std::to_string(replaced) + " 'org.vorn.SkarnConfigurator' '" + title + "' '" + text +
         "' [] [['category' <s 'device'>] ['desktop-entry' <s 'org.vorn.SkarnConfigurator'>] "
         "['transient' <b b1>] ['urgency' <y y1>]] i2000";
}
const std::string lowBattery =
    "Notify 'Skarn' u0 'battery-caution' 'The battery of the mouse is low' '5% left' [] [['category' <s 'device'>] "
    "['desktop-entry' <s 'org.vorn.SkarnConfigurator'>] ['transient' <b b0>] ['urgency' <y y2>]] i15000";

class CoreEngineMessagesTest : public testing::Test {
 protected:
  std::unique_ptr<ChildProcess> startEngine(bool isTold) const {
    const PropertyList settings =
        bundleOf({switching("<One>", isTold), switching("<Two> & more", isTold)})
            .with("DeviceSettings",
                  PropertyList::dictionary(
                      {{"ActiveProfile", 0}, {"ProfileOSDOn", isTold ? 1 : 0}, {"BatteryCriticalLevel", 1}}));
    std::filesystem::create_directory(folder.path("state"));
    folder.write("state/settings.plist", encodeBinaryPropertyList(settings).value());
    auto engine = std::make_unique<ChildProcess>(
        std::vector<std::string>{"env", "LC_ALL=C", "/bin/sh", "-c", "exec \"$0\" \"$@\" 2>&1", CORE_ENGINE_PROGRAM,
                                 "--device", "wireless", "--state-dir", folder.path("state")});
    EXPECT_TRUE(engine->waitForLine([](const std::string& line) { return line.find("ready, ") != std::string::npos; }));
    return engine;
  }
  static void work(const char* method, const std::vector<BusInput>& inputs) {
    const BusAnswer answer =
        callBusMethod({virtualMouse::busName, virtualMouse::objectPath, virtualMouse::interface}, method, inputs, 20s);
    EXPECT_EQ(answer.status, BusAnswer::Status::Success) << answer.error;
  }
  static void tap(const char* control) {
    work(virtualMouse::methods::Press, {{"s", control}});
    work(virtualMouse::methods::Release, {{"s", control}});
  }
  static void dischargeTo(int percent) { work(virtualMouse::methods::SetBattery, {{"i", percent}}); }

  vorn::test::PrivateBus bus;
  TemporaryFolder folder;
};

TEST_F(CoreEngineMessagesTest, TellsTheProfileTheSensitivityAndTheBattery) {
  FakeNotifications screen(7);
  const auto engine = startEngine(true);
  const auto waitFor = [&](std::size_t count) {
    EXPECT_TRUE(serveBusUntil([&] { return screen.calls().size() >= count; }));
  };
  tap("8");
  waitFor(1);
  tap("stage-up");
  waitFor(2);
  dischargeTo(5);
  waitFor(3);
  dischargeTo(4);
  tap("stage-down");
  waitFor(4);
  EXPECT_EQ(screen.calls(),
            (Calls{told("Profile: <Two> & more", "", 0), told("Sensitivity: 1800 DPI", "Stage 2 of 2", 7), lowBattery,
                   told("Sensitivity: 400 DPI", "Stage 1 of 2", 7)}));
}

TEST_F(CoreEngineMessagesTest, TellsNothingThatIsOff) {
  FakeNotifications screen;
  const auto engine = startEngine(false);
  tap("8");
  tap("stage-up");
  dischargeTo(5);
  EXPECT_TRUE(serveBusUntil([&] { return !screen.calls().empty(); }));
  EXPECT_EQ(screen.calls(), Calls{lowBattery});
}

TEST_F(CoreEngineMessagesTest, GoesOnWithoutAWordWhereNothingShowsMessages) {
  const auto engine = startEngine(true);
  tap("8");
  tap("stage-up");
  dischargeTo(5);
  tap("stage-down");
  engine->signal(SIGTERM);
  EXPECT_EQ(engine->waitForLine([](const std::string&) { return true; }), std::nullopt);
  EXPECT_EQ(engine->waitForEnd(), 0);
}

}  // namespace
}  // namespace vorn::engine::test
