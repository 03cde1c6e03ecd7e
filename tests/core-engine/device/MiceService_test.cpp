// The choice of the mouse over a bus of its own, as the window and vornctl make it.
#include "core-engine/device/MiceService.h"

#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "core-engine/TestParts.h"
#include "core-engine/device/FakeMice.h"
#include "ports/BusConnection.h"
#include "ports/BusMethodCall.h"
#include "ports/SignalWatch.h"
#include "protocol/Mice.h"
#include "support/BusPump.h"
#include "support/LoopThread.h"
#include "support/PrivateBus.h"

namespace vorn::engine::test {
namespace {

using namespace std::chrono_literals;

const std::string acme = "usb-16c0:27db-A1";

class MiceServiceTest : public testing::Test {
 protected:
  MiceServiceTest() {
    real.found = {foundMouse(acme, "Acme")};
    onEngine([this] {
      mice.emplace(Mice::Parts{parts.disk, parts.log, parts.scheduler, parts.store, turns, parts.device, real, inUse},
                   "/state");
      mice->load();
      service = std::make_unique<MiceService>(*mice);
      std::string error;
      EXPECT_TRUE(service->start(error)) << error;
    });
  }
  ~MiceServiceTest() override {
    onEngine([this] {
      service.reset();
      mice.reset();
    });
  }

  void onEngine(const std::function<void()>& work) { engine.run(work); }
  static BusAnswer ask(const char* method, const std::vector<BusInput>& inputs = {}) {
    return callBusMethod({mice::busName, mice::objectPath, mice::interface}, method, inputs, 20s);
  }
  // The name of the error; empty for success.
  static std::string call(const char* method, const std::vector<BusInput>& inputs = {}) {
    const BusAnswer answer = ask(method, inputs);
    return answer.status == BusAnswer::Status::Success ? "" : answer.errorName + ": " + answer.error;
  }

  const vorn::test::PrivateBus bus;
  TestParts parts{bundle("settings")};
  SettingsTurns turns{parts.store};
  FakeMice real;
  MouseInUse inUse{parts.device};
  std::optional<Mice> mice;
  std::unique_ptr<MiceService> service;
  vorn::test::LoopThread engine;
};

// The name of the error alone.
std::string errorOf(const std::string& failure) {
  return failure.substr(0, failure.find(':'));
}

PropertyList texts(const std::vector<std::string>& all) {
  return PropertyList::array(std::vector<PropertyList>(all.begin(), all.end()));
}

TEST_F(MiceServiceTest, ListsTheMiceWithWhatTheyAllowAndTheVirtualOneLast) {
  real.found[0].forbidden = {"/dev/input/event4"};
  real.found[0].isPointerForbidden = true;
  real.found[0].isOutputForbidden = true;
  const BusAnswer answer = ask("List");
  ASSERT_EQ(answer.values.size(), 1U);
  ASSERT_EQ(answer.values[0].size(), 2U);
  EXPECT_EQ(answer.values[0].at(0),
            PropertyList::dictionary({{"id", acme},
                                      {"name", "Acme"},
                                      {"isInUse", false},
                                      {"isPresent", true},
                                      {"isAllowed", false},
                                      {"forbidden", texts({"/dev/input/event4", "/dev/uinput"})},
                                      {"connection", "wired"},
                                      {"nodes", texts({"/dev/input/event4", "/dev/input/event5"})},
                                      {"controls", texts({"03", "06", "07"})},
                                      {"taught", texts({})},
                                      {"resolution", 1000}}));
  const PropertyList& last = answer.values[0].at(1);
  EXPECT_EQ(last["id"].string(), "virtual");
  EXPECT_EQ(last["connection"].string(), "virtual");
  EXPECT_TRUE(last["isInUse"].toBool());
  EXPECT_EQ(last["controls"].size(), 30U);
  EXPECT_EQ(last["sensitivity"].string(), "hardware");
  EXPECT_TRUE(last["hasLight"].toBool());
}

TEST_F(MiceServiceTest, ChoosesAMouse) {
  EXPECT_EQ(call("Choose", {{"s", acme}}), "");
  const PropertyList mouse = ask("List").values.at(0).at(0);
  EXPECT_TRUE(mouse["isInUse"].toBool());
  EXPECT_EQ(mouse["sensitivity"].string(), "scaled");
  EXPECT_TRUE(mouse.contains("hasBattery"));
  EXPECT_FALSE(mouse["hasBattery"].toBool());
  onEngine([this] { real.found.clear(); });
  const PropertyList absent = ask("List").values.at(0).at(0);
  EXPECT_FALSE(absent["isPresent"].toBool());
  EXPECT_FALSE(absent.contains("connection"));
  EXPECT_EQ(absent["name"].string(), "Acme");
}

TEST_F(MiceServiceTest, TellsWhatOfTheMouseInUseCannotBeUsed) {
  EXPECT_EQ(call("Choose", {{"s", acme}}), "");
  PropertyList mouse = ask("List").values.at(0).at(0);
  EXPECT_EQ(mouse["held"], texts({}));
  EXPECT_EQ(mouse["busy"], texts({}));
  onEngine([this] {
    real.inUse.at(0)->held = {"/dev/input/event5"};
    real.inUse.at(0)->busy = {"/dev/input/event4"};
  });
  mouse = ask("List").values.at(0).at(0);
  EXPECT_EQ(mouse["held"], texts({"/dev/input/event5"}));
  EXPECT_EQ(mouse["busy"], texts({"/dev/input/event4"}));
}

TEST_F(MiceServiceTest, TellsWhyItRefuses) {
  EXPECT_EQ(call("Choose", {{"s", "usb-0"}}), std::string(mice::errors::NotFound) + ": There is no mouse \"usb-0\"");
  EXPECT_EQ(call("Teach", {{"s", "43"}}),
            std::string(mice::errors::NotTeachable) + ": The virtual mouse has all controls already");
  EXPECT_EQ(call("Forget", {{"s", "3"}}),
            std::string(mice::errors::BadArgument) + ": No mouse of this kind has a control \"3\"");
  EXPECT_EQ(call("SetResolution", {{"u", 99}}),
            std::string(mice::errors::BadArgument) +
                ": The resolution is a number from 100 to 32000 DPI, or 0 for what is known of it");
  onEngine([this] { real.found[0].isOutputForbidden = true; });
  EXPECT_EQ(errorOf(call("Choose", {{"s", acme}})), mice::errors::NotAllowed);
  onEngine([this] { parts.disk.failFrom(1, std::errc::no_space_on_device); });
  onEngine([this] { real.found[0].isOutputForbidden = false; });
  EXPECT_EQ(errorOf(call("Choose", {{"s", acme}})), mice::errors::NotSaved);
}

TEST_F(MiceServiceTest, TellsWhatWasTaughtAndThatTheListIsAnother) {
  int changes = 0;
  std::vector<PropertyList> taught;
  const SignalWatch changed({mice::objectPath, mice::interface, "Changed"}, [&](const ReceivedSignal&) { ++changes; });
  const SignalWatch ended({mice::objectPath, mice::interface, "Taught"},
                          [&](const ReceivedSignal& received) { taught = received.values; });
  EXPECT_EQ(call("Choose", {{"s", acme}}), "");
  EXPECT_TRUE(vorn::test::serveBusUntil([&] { return changes > 0; }));
  EXPECT_EQ(call("Teach", {{"s", "43"}}), "");
  EXPECT_TRUE(taught.empty());
  onEngine([this] { real.inUse.back()->heard(side); });
  EXPECT_TRUE(vorn::test::serveBusUntil([&] { return !taught.empty(); }));
  EXPECT_EQ(taught, (std::vector<PropertyList>{"43", true, "BTN_SIDE", ""}));
  EXPECT_EQ(ask("List").values.at(0).at(0)["taught"], texts({"43"}));
  EXPECT_EQ(call("SetResolution", {{"u", 1600}}), "");
  EXPECT_EQ(call("Forget", {{"s", ""}}), "");
  EXPECT_EQ(ask("List").values.at(0).at(0)["taught"], texts({}));
  EXPECT_EQ(ask("List").values.at(0).at(0)["resolution"], PropertyList(1600));
}

TEST_F(MiceServiceTest, EndsATeachingWithItsConnection) {
  EXPECT_EQ(call("Choose", {{"s", acme}}), "");
  const auto isTeaching = [this] {
    bool result = false;
    onEngine([&] { result = static_cast<bool>(real.inUse.back()->heard); });
    return result;
  };
  vorn::test::LoopThread other;
  other.run([] { EXPECT_EQ(call("Teach", {{"s", "43"}}), ""); });
  EXPECT_EQ(errorOf(call("Teach", {{"s", "20"}})), mice::errors::Busy);
  EXPECT_EQ(call("Teach", {{"s", ""}}), "");
  EXPECT_TRUE(isTeaching());
  other.run([] { BusConnection::forThisThread().close(); });
  EXPECT_TRUE(vorn::test::serveBusUntil([&] { return !isTeaching(); }));
  EXPECT_EQ(call("Teach", {{"s", "20"}}), "");
}

}  // namespace
}  // namespace vorn::engine::test
