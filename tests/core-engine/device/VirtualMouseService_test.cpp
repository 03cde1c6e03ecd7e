// The virtual mouse over a bus of its own, as any program drives it.
#include "core-engine/device/VirtualMouseService.h"

#include <gtest/gtest.h>
#include <systemd/sd-bus.h>

#include <cerrno>
#include <functional>
#include <future>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <tuple>
#include <vector>

#include "core-engine/TestParts.h"
#include "core-engine/storage/HeldDisk.h"
#include "ports/BusConnection.h"
#include "protocol/VirtualMouse.h"
#include "support/BusPump.h"
#include "support/LoopThread.h"
#include "support/PrivateBus.h"

namespace vorn::engine::test {
namespace {

using namespace std::chrono_literals;
using Connection = Device::Connection;
using Events = std::vector<DeviceEvent>;
using Output = std::tuple<std::uint64_t, std::uint16_t, std::uint16_t, std::int32_t>;
using Outputs = std::vector<Output>;

using virtualMouse::busName;
using virtualMouse::interface;
using virtualMouse::objectPath;

// The device and its service, on a thread of their own.
class VirtualMouseServiceTest : public testing::Test {
 protected:
  VirtualMouseServiceTest() {
    onEngine([this] {
      device.setEventHandler([this](const DeviceEvent& event) { events.push_back(event); });
      service = std::make_unique<VirtualMouseService>(device, scheduler, turns, [this] { return isInUse; });
      std::string error;
      EXPECT_TRUE(service->start(error)) << error;
    });
  }
  ~VirtualMouseServiceTest() override {
    onEngine([this] { service.reset(); });
  }

  void onEngine(const std::function<void()>& work) { engine.run(work); }
  Events takeEvents() {
    Events taken;
    onEngine([&] { taken = std::exchange(events, {}); });
    return taken;
  }
  template <typename Value>
  Value read(const std::function<Value()>& reading) {
    Value value{};
    onEngine([&] { value = reading(); });
    return value;
  }

  // The name of the error and its text, or nothing for success.
  template <typename... Arguments>
  std::string call(const char* member, const char* types = "", Arguments... arguments) {
    sd_bus_error error{};
    const int result = sd_bus_call_method(BusConnection::forThisThread().handle(), busName, objectPath, interface,
                                          member, &error, nullptr, types, arguments...);
    const std::string text = result < 0 ? std::string(error.name) + ": " + error.message : std::string();
    sd_bus_error_free(&error);
    return text;
  }

  Outputs takeOutput() {
    sd_bus_message* reply = nullptr;
    EXPECT_GE(sd_bus_call_method(BusConnection::forThisThread().handle(), busName, objectPath, interface, "TakeOutput",
                                 nullptr, &reply, ""),
              0);
    Outputs outputs;
    std::uint64_t time = 0;
    std::uint16_t usagePage = 0;
    std::uint16_t usage = 0;
    std::int32_t value = 0;
    EXPECT_GE(sd_bus_message_enter_container(reply, 'a', "(tqqi)"), 0);
    while (sd_bus_message_read(reply, "(tqqi)", &time, &usagePage, &usage, &value) > 0) {
      outputs.emplace_back(time, usagePage, usage, value);
    }
    sd_bus_message_unref(reply);
    return outputs;
  }

  // One line for each entry of State: its name, its D-Bus type and its value.
  std::vector<std::string> state() {
    sd_bus_message* reply = nullptr;
    EXPECT_GE(sd_bus_call_method(BusConnection::forThisThread().handle(), busName, objectPath, interface, "State",
                                 nullptr, &reply, ""),
              0);
    std::vector<std::string> lines;
    EXPECT_GE(sd_bus_message_enter_container(reply, 'a', "{sv}"), 0);
    while (sd_bus_message_enter_container(reply, 'e', "sv") > 0) lines.push_back(readEntry(reply));
    sd_bus_message_unref(reply);
    return lines;
  }

  const vorn::test::PrivateBus bus;
  HeldDisk disk;
  TestParts parts{bundle("old"), &disk.thread()};
  SettingsTurns turns{parts.store};
  ManualScheduler scheduler;
  VirtualDevice device;
  Events events;
  bool isInUse = true;
  std::unique_ptr<VirtualMouseService> service;
  vorn::test::LoopThread engine;

 private:
  static std::string readEntry(sd_bus_message* reply) {
    const char* key = nullptr;
    const char* type = nullptr;
    sd_bus_message_read(reply, "s", &key);
    sd_bus_message_peek_type(reply, nullptr, &type);
    std::string line = std::string(key) + " " + type + " ";
    const char* text = nullptr;
    if (line.ends_with(" s ")) {
      sd_bus_message_read(reply, "v", "s", &text);
      line += text;
    } else if (line.ends_with(" as ")) {
      sd_bus_message_enter_container(reply, 'v', "as");
      sd_bus_message_enter_container(reply, 'a', "s");
      while (sd_bus_message_read(reply, "s", &text) > 0) line += std::string(text) + ",";
      sd_bus_message_exit_container(reply);
      sd_bus_message_exit_container(reply);
    } else if (line.ends_with(" b ")) {
      int isTrue = 0;
      sd_bus_message_read(reply, "v", "b", &isTrue);
      line += isTrue != 0 ? "true" : "false";
    } else {
      std::int64_t number = 0;
      sd_bus_message_read(reply, "v", "x", &number);
      line += std::to_string(number);
    }
    sd_bus_message_exit_container(reply);
    return line;
  }
};

const std::string badArgument = std::string(virtualMouse::errors::BadArgument) + ": ";
const std::string absent = std::string(virtualMouse::errors::Absent) + ": The mouse is not plugged in";

TEST_F(VirtualMouseServiceTest, PlugsAndUnplugsTheMouse) {
  const auto connection = [this] { return read<Connection>([this] { return device.connection(); }); };
  EXPECT_EQ(call("Unplug"), "");
  EXPECT_EQ(connection(), Connection::Absent);
  EXPECT_EQ(call("Plug", "s", "wireless"), "");
  EXPECT_EQ(connection(), Connection::Wireless);
  EXPECT_EQ(call("Plug", "s", "wired"), "");
  EXPECT_EQ(connection(), Connection::Wired);
  EXPECT_EQ(takeEvents(), (Events{ConnectionChanged{}, ConnectionChanged{}, ConnectionChanged{}}));
}

TEST_F(VirtualMouseServiceTest, PressesAndReleasesControls) {
  EXPECT_EQ(call("Press", "s", "43"), "");
  EXPECT_EQ(call("Press", "s", "keymap"), "");
  EXPECT_EQ(call("Release", "s", "43"), "");
  EXPECT_EQ(takeEvents(),
            (Events{ControlChanged{"43", true}, ControlChanged{"keymap", true}, ControlChanged{"43", false}}));
}

TEST_F(VirtualMouseServiceTest, TypesKeys) {
  EXPECT_EQ(call("Type", "uub", 7U, 4U, 1), "");
  EXPECT_EQ(call("Type", "uub", 9U, 1U, 0), "");
  EXPECT_EQ(takeEvents(), (Events{KeyChanged{7, 4, true}, KeyChanged{9, 1, false}}));
}

TEST_F(VirtualMouseServiceTest, SetsBatteryChargingAndFirmware) {
  EXPECT_EQ(call("SetBattery", "i", 33), "");
  EXPECT_EQ(call("SetCharging", "s", "battery"), "");
  EXPECT_EQ(call("SetFirmware", "sb", "2.05", 0), "");
  EXPECT_EQ(call("Press", "s", "20"), "");
  EXPECT_EQ(state(), (std::vector<std::string>{"battery x 33", "charging s battery", "connection s wired",
                                               "firmware s 2.05", "forgottenOutput x 0", "isFirmwareFailing b false",
                                               "output x 0", "pressed as 20,"}));
  EXPECT_EQ(call("SetCharging", "s", "usual"), "");
  EXPECT_EQ(call("SetFirmware", "sb", "2.05", 1), "");
  EXPECT_EQ(call("Release", "s", "20"), "");
  EXPECT_EQ(state(),
            (std::vector<std::string>{"battery x 33", "charging s charging", "connection s wired", "firmware s ",
                                      "forgottenOutput x 0", "isFirmwareFailing b true", "output x 0", "pressed as "}));
}

TEST_F(VirtualMouseServiceTest, RefusesBadArgumentsAndChangesNothing) {
  const auto before = state();
  EXPECT_EQ(call("Plug", "s", "absent"), badArgument + "The connection is \"wired\" or \"wireless\"");
  EXPECT_EQ(call("Press", "s", "3"), badArgument + "The mouse has no control \"3\"");
  EXPECT_EQ(call("Release", "s", ""), badArgument + "The mouse has no control \"\"");
  const std::string cannotBeTyped =
      badArgument + "What can be typed are keys (usage page 7, usages 4 to 231) and buttons (page 9, usages 1 to 9)";
  EXPECT_EQ(call("Type", "uub", 12U, 4U, 1), cannotBeTyped);
  EXPECT_EQ(call("Type", "uub", 7U, 4294967295U, 1), cannotBeTyped);
  for (const int percent : {-1, 101}) {
    EXPECT_EQ(call("SetBattery", "i", percent), badArgument + "The battery level is a percentage from 0 to 100");
  }
  EXPECT_EQ(call("SetCharging", "s", "full"),
            badArgument + R"(The charging status is "battery", "charging", "none" or "usual")");
  for (const std::string& version : {std::string(), std::string("1\n"), std::string("1.00é"), std::string(65, '1')}) {
    EXPECT_EQ(call("SetFirmware", "sb", version.c_str(), 0),
              badArgument + "The firmware version is a text of 1 to 64 printable ASCII characters");
  }
  EXPECT_EQ(call("Press", "i", 43).substr(0, 40), "org.freedesktop.DBus.Error.InvalidArgs: ");
  EXPECT_EQ(call("Shake").substr(0, 42), "org.freedesktop.DBus.Error.UnknownMethod: ");
  EXPECT_EQ(state(), before);
  EXPECT_EQ(takeEvents(), Events());
}

TEST_F(VirtualMouseServiceTest, HasNoControlsAndNoBatteryWhileItIsUnplugged) {
  EXPECT_EQ(call("Unplug"), "");
  EXPECT_EQ(call("Press", "s", "43"), absent);
  EXPECT_EQ(call("Release", "s", "43"), absent);
  EXPECT_EQ(call("SetCharging", "s", "charging"), absent);
  EXPECT_EQ(call("SetBattery", "i", 50), "");
  EXPECT_EQ(call("Plug", "s", "wireless"), "");
  EXPECT_EQ(read<int>([this] { return device.batteryPercent(); }), 50);
}

TEST_F(VirtualMouseServiceTest, PressesAndTypesNothingWhileAnotherMouseIsInUse) {
  const std::string notInUse =
      std::string(virtualMouse::errors::NotInUse) + ": Another mouse is in use, not the virtual one";
  onEngine([this] { isInUse = false; });
  EXPECT_EQ(call("Press", "s", "43"), notInUse);
  EXPECT_EQ(call("Release", "s", "43"), notInUse);
  EXPECT_EQ(call("Type", "uub", 7U, 4U, 1), notInUse);
  EXPECT_EQ(call("Press", "s", "3"), badArgument + "The mouse has no control \"3\"");
  EXPECT_EQ(call("SetBattery", "i", 50), "");
  EXPECT_EQ(state().back(), "pressed as ");
  EXPECT_EQ(takeEvents(), Events{BatteryChanged{}});
}

TEST_F(VirtualMouseServiceTest, KeepsTheOutputWithItsTimesUntilItIsTaken) {
  onEngine([this] {
    device.emit({7, 4, 1});
    scheduler.advance(1500us);
    device.emit({1, 0x38, -1});
  });
  EXPECT_EQ(takeOutput(), (Outputs{{0, 7, 4, 1}, {1500, 1, 0x38, -1}}));
  EXPECT_EQ(takeOutput(), Outputs());
}

TEST_F(VirtualMouseServiceTest, ForgetsTheOldestOutputThatNobodyTakes) {
  onEngine([this] {
    for (std::int32_t value = 0; value < 10'003; ++value) device.emit({7, 4, value});
  });
  EXPECT_EQ(state()[4], "forgottenOutput x 3");
  const Outputs outputs = takeOutput();
  ASSERT_EQ(outputs.size(), VirtualMouseService::maximumOutput);
  EXPECT_EQ(outputs.front(), Output(0, 7, 4, 3));
  EXPECT_EQ(state()[4], "forgottenOutput x 0");
}

TEST_F(VirtualMouseServiceTest, BroadcastsTheOutputAsItHappens) {
  Outputs heard;
  sd_bus_slot* slot = nullptr;
  const auto hear = [](sd_bus_message* message, void* outputs, sd_bus_error*) {
    std::uint64_t time = 0;
    std::uint16_t usagePage = 0;
    std::uint16_t usage = 0;
    std::int32_t value = 0;
    if (sd_bus_message_read(message, "tqqi", &time, &usagePage, &usage, &value) > 0) {
      static_cast<Outputs*>(outputs)->emplace_back(time, usagePage, usage, value);
    }
    return 0;
  };
  ASSERT_GE(sd_bus_match_signal(BusConnection::forThisThread().handle(), &slot, busName, objectPath, interface,
                                "Output", hear, &heard),
            0);
  onEngine([this] {
    scheduler.advance(2ms);
    device.emit({9, 1, 1});
    device.emit({9, 1, 0});
  });
  EXPECT_TRUE(vorn::test::serveBusUntil([&] { return heard.size() == 2; }));
  EXPECT_EQ(heard, (Outputs{{2000, 9, 1, 1}, {2000, 9, 1, 0}}));
  sd_bus_slot_unref(slot);
}

TEST_F(VirtualMouseServiceTest, AnswersWhenWhatItCausedHasHappened) {
  disk.hold(parts.disk);
  onEngine([this] {
    device.setEventHandler([this](const DeviceEvent& event) {
      const auto note = [this, event] { events.push_back(event); };
      needsSettings(event) ? turns.whenSaved(note) : turns.inTurn(note);
    });
    parts.store.put(bundle("new"), [](SettingsStore::Outcome) {});
  });
  // What has nothing to do with the settings does not wait for the disk.
  EXPECT_EQ(call("SetBattery", "i", 50), "");
  EXPECT_EQ(call("Type", "uub", 7U, 4U, 1), "");
  EXPECT_EQ(takeOutput(), Outputs());
  EXPECT_EQ(takeEvents(), (Events{BatteryChanged{}, KeyChanged{7, 4, true}}));

  std::future<std::string> pressed = std::async(std::launch::async, [this] { return call("Press", "s", "43"); });
  while (state().back() != "pressed as 43,") std::this_thread::yield();
  std::future<std::string> typed = std::async(std::launch::async, [this] { return call("Type", "uub", 7U, 4U, 0); });
  EXPECT_EQ(takeEvents(), Events());
  EXPECT_EQ(pressed.wait_for(0s), std::future_status::timeout);
  disk.goOn();
  onEngine([this] {
    parts.store.settle();
    turns.goOn();
  });
  EXPECT_EQ(pressed.get(), "");
  EXPECT_EQ(typed.get(), "");
  EXPECT_EQ(takeEvents(), (Events{ControlChanged{"43", true}, KeyChanged{7, 4, false}}));
}

TEST_F(VirtualMouseServiceTest, LeavesTheBusAndTheDeviceWithItsEnd) {
  onEngine([this] { service.reset(); });
  EXPECT_EQ(call("Unplug").substr(0, 43), "org.freedesktop.DBus.Error.ServiceUnknown: ");
  onEngine([this] { device.emit({7, 4, 1}); });
}

}  // namespace
}  // namespace vorn::engine::test
