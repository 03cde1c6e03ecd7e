#include "core-engine/device/MouseInUse.h"

#include <gtest/gtest.h>

#include <vector>

#include "core-engine/device/VirtualDevice.h"

namespace vorn::engine::test {
namespace {

using Connection = Device::Connection;

class MouseInUseTest : public testing::Test {
 protected:
  MouseInUseTest() {
    mouse.setEventHandler([this](const DeviceEvent& event) {
      events.push_back(event);
      if (std::holds_alternative<ConnectionChanged>(event)) wasPresent.push_back(mouse.isPresent());
    });
  }

  static DeviceValues values(std::int32_t dpi) {
    DeviceValues result;
    result.sensitivity = {dpi, dpi};
    result.assigned = {"03"};
    return result;
  }

  VirtualDevice first;
  VirtualDevice second{Connection::Wireless};
  MouseInUse mouse{first};
  std::vector<DeviceEvent> events;
  std::vector<bool> wasPresent;  // when each change of the connection was told
};

TEST_F(MouseInUseTest, IsTheMouseThatIsUsed) {
  EXPECT_TRUE(mouse.isWired());
  mouse.use(second);
  EXPECT_TRUE(mouse.isUsing(second));
  EXPECT_EQ(mouse.connection(), Connection::Wireless);
  EXPECT_EQ(mouse.chargingStatus(), ChargingStatus::OnBattery);
  EXPECT_EQ(mouse.abilities(), second.abilities());
}

TEST_F(MouseInUseTest, TellsTheEventsOfTheMouseInUseAlone) {
  mouse.use(second);
  events.clear();
  first.setControl("03", true);
  first.setConnection(Connection::Absent);
  EXPECT_TRUE(events.empty());
  second.setControl("03", true);
  EXPECT_EQ(events, (std::vector<DeviceEvent>{ControlChanged{"03", true}}));
}

TEST_F(MouseInUseTest, CountsAsAbsentWhileItIsExchanged) {
  mouse.use(second);
  EXPECT_EQ(events, (std::vector<DeviceEvent>{ConnectionChanged{}, ConnectionChanged{}, AbilitiesChanged{}}));
  EXPECT_EQ(wasPresent, (std::vector<bool>{false, true}));
}

TEST_F(MouseInUseTest, TellsNoAbsenceOfAMouseThatWasNotThere) {
  first.setConnection(Connection::Absent);
  events.clear();
  wasPresent.clear();
  mouse.use(second);
  EXPECT_EQ(wasPresent, std::vector<bool>{true});
}

TEST_F(MouseInUseTest, ToUseTheSameMouseAgainChangesNothing) {
  mouse.use(first);
  EXPECT_TRUE(events.empty());
}

TEST_F(MouseInUseTest, HandsValuesAndListeningOnAndLeavesNothingBehind) {
  mouse.apply(values(1600));
  mouse.setListening(true);
  EXPECT_EQ(first.values(), values(1600));
  EXPECT_TRUE(first.isListening());
  mouse.use(second);
  EXPECT_EQ(second.values(), values(1600));
  EXPECT_TRUE(second.isListening());
  EXPECT_EQ(first.values(), DeviceValues());
  EXPECT_FALSE(first.isListening());
}

TEST_F(MouseInUseTest, GivesItsOutputToTheMouseInUse) {
  std::vector<OutputEvent> ofFirst;
  std::vector<OutputEvent> ofSecond;
  first.setOutputHandler([&](const OutputEvent& event) { ofFirst.push_back(event); });
  second.setOutputHandler([&](const OutputEvent& event) { ofSecond.push_back(event); });
  mouse.use(second);
  mouse.emit({7, 4, 1});
  EXPECT_TRUE(ofFirst.empty());
  EXPECT_EQ(ofSecond, (std::vector<OutputEvent>{{7, 4, 1}}));
}

}  // namespace
}  // namespace vorn::engine::test
