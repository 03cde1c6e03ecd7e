#include "model/Assignments.h"

#include <gtest/gtest.h>

#include <string>

#include "model/Controls.h"

namespace vorn {
namespace {

TEST(AssignmentsTest, OfTheFactoryLetEveryKeySendItself) {
  for (const std::string_view key : keys::keyIdentifiers) {
    EXPECT_EQ(factoryAssignment(key),
              PropertyList::dictionary({{"command", 45}, {"param1", std::stoi(std::string(key))}, {"param2", 0}}));
  }
}

TEST(AssignmentsTest, OfTheFactoryLetTheWheelDoWhatItIsCalled) {
  const auto plain = [](int command) {
    return PropertyList::dictionary({{"command", command}, {"param1", 0}, {"param2", 0}});
  };
  EXPECT_EQ(factoryAssignment("03"), plain(3));
  EXPECT_EQ(factoryAssignment("06"), plain(18));
  EXPECT_EQ(factoryAssignment("07"), plain(19));
}

TEST(AssignmentsTest, OfTheFactoryAreKnown) {
  const Control& tab = *controlOf("43");
  const Control& wheel = *controlOf("06");
  for (const Control& control : controls) {
    EXPECT_TRUE(isFactoryAssignment(factoryAssignment(control.identifier), control));
    EXPECT_FALSE(isFactoryAssignment({}, control));
  }
  EXPECT_TRUE(isFactoryAssignment(assignmentRecord(AssignmentCommand::DefaultKey, 43, 9), tab));
  EXPECT_TRUE(isFactoryAssignment(assignmentRecord(AssignmentCommand::DefaultKey, 3), wheel));
  EXPECT_FALSE(isFactoryAssignment(assignmentRecord(AssignmentCommand::DefaultKey, 44), tab));
  EXPECT_FALSE(isFactoryAssignment(assignmentRecord(AssignmentCommand::SingleKey, 43), tab));
  EXPECT_FALSE(isFactoryAssignment(assignmentRecord(AssignmentCommand::ScrollDown), wheel));
}

TEST(AssignmentsTest, OfTheFactoryDisableWhatIsNoControl) {
  for (const std::string_view other : {"99", "3", "", "043", "x"}) {
    EXPECT_EQ(commandOf(factoryAssignment(other)), AssignmentCommand::Disable) << other;
  }
}

TEST(AssignmentsTest, CarryNumbersOrTextsAsParameters) {
  EXPECT_EQ(assignmentRecord(AssignmentCommand::LaunchProgram, "/usr/bin/editor", ""),
            PropertyList::dictionary({{"command", 46}, {"param1", "/usr/bin/editor"}, {"param2", ""}}));
  EXPECT_EQ(assignmentRecord(AssignmentCommand::Macro, 4, repeatUntilReleased),
            PropertyList::dictionary({{"command", 10}, {"param1", 4}, {"param2", 255}}));
}

TEST(AssignmentsTest, WithoutACommandHaveTheCommandZero) {
  EXPECT_EQ(static_cast<int>(commandOf(PropertyList())), 0);
  EXPECT_EQ(static_cast<int>(commandOf(PropertyList::dictionary({{"command", PropertyList::array()}}))), 0);
}

}  // namespace
}  // namespace vorn
