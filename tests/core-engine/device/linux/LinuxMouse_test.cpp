// A mouse of the machine without nodes, as the services of the system know it.
#include "core-engine/device/linux/LinuxMouse.h"

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "SystemFixture.h"
#include "core-engine/TestParts.h"

namespace vorn::engine {
namespace {

using Events = std::vector<DeviceEvent>;

MouseHardware acme() {
  MouseHardware hardware;
  hardware.id = "usb-1234:abcd-A1";
  hardware.name = "Acme";
  hardware.firmwareVersion = "1.23";
  hardware.rawNodes = {"/dev/hidraw3"};
  return hardware;
}

class LinuxMouseTest : public SystemFixture {
 protected:
  LinuxMouseTest() {
    mMouse.setEventHandler([this](const DeviceEvent& event) { mEvents.push_back(event); });
  }
  std::ptrdiff_t firmwareChanges() const {
    return std::count(mEvents.begin(), mEvents.end(), DeviceEvent(FirmwareChanged{}));
  }

  test::ManualScheduler mScheduler;
  Log mLog;
  Events mEvents;
  LinuxMouse mMouse{"usb-1234:abcd-A1", {mLoop, mScheduler, mLog, [] {}, {}}};
};

TEST_F(LinuxMouseTest, TellsOfAFirmwareVersionThatAServiceKnowsLater) {
  vorn::test::FakeSystemProcess system(
      Calls{"ratbag add hidraw3 usb:1234:abcd:0", "ratbag firmware hidraw3 4.56", "ratbag start"});
  mMouse.update(acme());
  EXPECT_EQ(mMouse.firmwareVersion(), "1.23");
  EXPECT_EQ(firmwareChanges(), 0);
  ASSERT_TRUE(becomesTrue([this] { return firmwareChanges() > 0; }));
  EXPECT_EQ(mMouse.firmwareVersion(), "4.56");
  handleAll();
  EXPECT_EQ(firmwareChanges(), 1);
}

TEST_F(LinuxMouseTest, TellsOfNoFirmwareVersionWhereTheServiceKnowsNone) {
  vorn::test::FakeSystemProcess system(Calls{"ratbag add hidraw3 usb:1234:abcd:0", "ratbag start"});
  mMouse.update(acme());
  ASSERT_TRUE(becomesTrue([this] { return mMouse.abilities().hasLight; }));
  handleAll();
  EXPECT_EQ(mMouse.firmwareVersion(), "1.23");
  EXPECT_EQ(firmwareChanges(), 0);
}

TEST_F(LinuxMouseTest, CountsAsSomebodyHasSaidElseAsTheSystemSaysElseAsMostMiceDo) {
  EXPECT_EQ(mMouse.resolution(), 800);
  MouseHardware hardware = acme();
  mMouse.update(hardware);
  EXPECT_EQ(mMouse.resolution(), 800);
  hardware.resolution = 1600;
  mMouse.update(hardware);
  EXPECT_EQ(mMouse.resolution(), 1600);
  MouseRecord record;
  record.resolution = 1200;
  mMouse.setRecord(record);
  EXPECT_EQ(mMouse.resolution(), 1200);
  mMouse.setRecord({});
  EXPECT_EQ(mMouse.resolution(), 1600);
}

TEST_F(LinuxMouseTest, IsOnItsCableOrItsReceiverOrAbsent) {
  EXPECT_EQ(mMouse.connection(), Device::Connection::Absent);
  MouseHardware hardware = acme();
  mMouse.update(hardware);
  EXPECT_EQ(mMouse.connection(), Device::Connection::Wired);
  hardware.isWireless = true;
  mMouse.update(hardware);
  EXPECT_EQ(mMouse.connection(), Device::Connection::Wireless);
  mMouse.update({});
  EXPECT_EQ(mMouse.connection(), Device::Connection::Absent);
  EXPECT_EQ(std::count(mEvents.begin(), mEvents.end(), DeviceEvent(ConnectionChanged{})), 3);
  EXPECT_EQ(mMouse.firmwareVersion(), "");
  EXPECT_EQ(mMouse.abilities(), DeviceAbilities{});
}

}  // namespace
}  // namespace vorn::engine
