// What controls send to the desktop.
#include <gtest/gtest.h>

#include "core-engine/AssignmentFixture.h"

namespace vorn::engine::test {
namespace {

class AssignmentPlayerOutputTest : public AssignmentFixture {
 protected:
  // What the control sends when it is pressed and when it is let go, assigned so.
  std::pair<OutputEvents, OutputEvents> outputOf(const PropertyList& assignment, std::string_view control = "43") {
    assign(control, assignment);
    press(control);
    const OutputEvents pressed = takeEvents();
    release(control);
    return {pressed, takeEvents()};
  }
};

using PressAndRelease = std::pair<OutputEvents, OutputEvents>;

TEST_F(AssignmentPlayerOutputTest, HoldsAMouseButtonAsLongAsTheControlIsHeld) {
  for (std::uint16_t button = 1; button <= 8; ++button) {
    EXPECT_EQ(outputOf(assignment(button, 0)), (PressAndRelease{{buttonDown(button)}, {buttonUp(button)}}));
  }
}

TEST_F(AssignmentPlayerOutputTest, SendsForwardAndBackwardAsTheButtonsThatBrowsersTakeForThem) {
  EXPECT_EQ(outputOf(assignment(13, 0)), (PressAndRelease{{buttonDown(5)}, {buttonUp(5)}}));
  EXPECT_EQ(outputOf(assignment(14, 0)), (PressAndRelease{{buttonDown(4)}, {buttonUp(4)}}));
}

TEST_F(AssignmentPlayerOutputTest, HoldsTheSecondClickOfADoubleClick) {
  EXPECT_EQ(outputOf(assignment(9, 0)), (PressAndRelease{{buttonDown(1), buttonUp(1), buttonDown(1)}, {buttonUp(1)}}));
}

TEST_F(AssignmentPlayerOutputTest, TurnsTheWheelByOneStepForAPress) {
  EXPECT_EQ(outputOf(assignment(18, 0)), (PressAndRelease{{{1, 0x38, 1}}, {}}));
  EXPECT_EQ(outputOf(assignment(19, 0)), (PressAndRelease{{{1, 0x38, -1}}, {}}));
}

TEST_F(AssignmentPlayerOutputTest, SendsASingleKeyInsideItsModifiers) {
  EXPECT_EQ(outputOf(assignment(16, 4, 1 + 2)),
            (PressAndRelease{{keyDown(224), keyDown(225), keyDown(4)}, {keyUp(4), keyUp(225), keyUp(224)}}));
}

TEST_F(AssignmentPlayerOutputTest, SendsModifiersWithoutAKey) {
  EXPECT_EQ(outputOf(assignment(16, 0, 128)), (PressAndRelease{{keyDown(231)}, {keyUp(231)}}));
}

TEST_F(AssignmentPlayerOutputTest, TakesOnlyTheLowEightBitsOfTheModifiers) {
  EXPECT_EQ(outputOf(assignment(16, 4, 256)), (PressAndRelease{{keyDown(4)}, {keyUp(4)}}));
}

TEST_F(AssignmentPlayerOutputTest, SendsAModifierOnceThatIsAlsoTheKey) {
  EXPECT_EQ(outputOf(assignment(16, 225, 2)), (PressAndRelease{{keyDown(225)}, {keyUp(225)}}));
}

TEST_F(AssignmentPlayerOutputTest, SendsNoKeyForANumberThatIsNone) {
  for (const std::int32_t usage : {-1, 0, 3, 232, 300, 65540}) {
    EXPECT_EQ(outputOf(assignment(16, usage)), PressAndRelease());
  }
}

TEST_F(AssignmentPlayerOutputTest, SendsTheOwnKeyOfAControlOnItsDefault) {
  EXPECT_EQ(outputOf(assignment(45, 43)), (PressAndRelease{{keyDown(43)}, {keyUp(43)}}));
}

TEST_F(AssignmentPlayerOutputTest, SendsBothArrowsForADiagonalOfThePad) {
  EXPECT_EQ(outputOf(assignment(45, 232), "232"),
            (PressAndRelease{{keyDown(82), keyDown(80)}, {keyUp(80), keyUp(82)}}));
  EXPECT_EQ(outputOf(assignment(45, 233), "233"),
            (PressAndRelease{{keyDown(82), keyDown(79)}, {keyUp(79), keyUp(82)}}));
  EXPECT_EQ(outputOf(assignment(45, 234), "234"),
            (PressAndRelease{{keyDown(81), keyDown(80)}, {keyUp(80), keyUp(81)}}));
  EXPECT_EQ(outputOf(assignment(45, 235), "235"),
            (PressAndRelease{{keyDown(81), keyDown(79)}, {keyUp(79), keyUp(81)}}));
}

TEST_F(AssignmentPlayerOutputTest, DoesWhatAButtonOfTheMouseDoesFromTheFactoryOnItsDefault) {
  EXPECT_EQ(outputOf(assignment(45, 0), "03"), (PressAndRelease{{buttonDown(3)}, {buttonUp(3)}}));
  EXPECT_EQ(outputOf(assignment(45, 0), "06"), (PressAndRelease{{{1, 0x38, 1}}, {}}));
}

TEST_F(AssignmentPlayerOutputTest, SendsNothingForDisabledAndForUnknownCommands) {
  for (const std::int32_t command : {-1, 0, 20, 21, 44, 47, 48, 51, 1000}) {
    EXPECT_EQ(outputOf(assignment(command, 4, 1)), PressAndRelease());
  }
}

TEST_F(AssignmentPlayerOutputTest, WorksAsFromTheFactoryWithoutSettings) {
  TestParts empty;
  AssignmentPlayer fresh(empty.parts(), launcher);
  OutputEvents events;
  empty.device.setOutputHandler([&](const OutputEvent& event) { events.push_back(event); });
  fresh.handle(ControlChanged{"43", true});
  fresh.handle(ControlChanged{"43", false});
  fresh.handle(ControlChanged{"07", true});
  EXPECT_EQ(events, (OutputEvents{keyDown(43), keyUp(43), {1, 0x38, -1}}));
}

TEST_F(AssignmentPlayerOutputTest, LetsAControlGoWithWhatItWasPressedWith) {
  assign("43", assignment(1, 0));
  press("43");
  assign("43", assignment(2, 0));
  release("43");
  tap("43");
  EXPECT_EQ(takeEvents(), (OutputEvents{buttonDown(1), buttonUp(1), buttonDown(2), buttonUp(2)}));
}

TEST_F(AssignmentPlayerOutputTest, KeepsAKeyDownUntilTheLastOfItsControlsIsLetGo) {
  assign("43", assignment(16, 4, 2));
  assign("20", assignment(16, 5, 2));
  press("43");
  press("20");
  release("43");
  EXPECT_EQ(takeEvents(), (OutputEvents{keyDown(225), keyDown(4), keyDown(5), keyUp(4)}));
  release("20");
  EXPECT_EQ(takeEvents(), (OutputEvents{keyUp(5), keyUp(225)}));
}

TEST_F(AssignmentPlayerOutputTest, LetsEverythingGoWhenTheMouseChangesToItsReceiver) {
  press("43");
  press("20");
  takeEvents();
  parts.device.setConnection(Device::Connection::Wireless);
  EXPECT_EQ(takeEvents(), (OutputEvents{keyUp(20), keyUp(43)}));
  tap("43");
  EXPECT_EQ(takeEvents(), (OutputEvents{keyDown(43), keyUp(43)}));
}

TEST_F(AssignmentPlayerOutputTest, StartsAnewAfterTheMouseWasUnplugged) {
  press("43");
  parts.device.setConnection(Device::Connection::Absent);
  parts.device.setConnection(Device::Connection::Wired);
  EXPECT_EQ(takeEvents(), OutputEvents{keyDown(43)});
  tap("43");
  EXPECT_EQ(takeEvents(), (OutputEvents{keyDown(43), keyUp(43)}));
}

TEST_F(AssignmentPlayerOutputTest, LaunchesAProgramWhenTheControlIsPressed) {
  assign("43", PropertyList::dictionary({{"command", 46}, {"param1", "/apps/Editor.app"}, {"param2", ""}}));
  tap("43");
  EXPECT_EQ(launcher.paths, std::vector<std::string>{"/apps/Editor.app"});
  EXPECT_EQ(takeEvents(), OutputEvents());
  EXPECT_EQ(parts.lines, std::vector<std::string>());
}

TEST_F(AssignmentPlayerOutputTest, TellsOnceWhyAProgramIsNotLaunched) {
  launcher.error = "gone";
  assign("43", PropertyList::dictionary({{"command", 46}, {"param1", "/apps/Editor.app"}, {"param2", ""}}));
  tap("43");
  tap("43");
  ASSERT_EQ(parts.lines.size(), 1U);
  EXPECT_NE(parts.lines[0].find("cannot launch /apps/Editor.app: gone"), std::string::npos);
}

TEST_F(AssignmentPlayerOutputTest, IsCapturedAsIfItHadBeenTyped) {
  assign("43", assignment(16, 4, 2));
  parts.recorder.start({.client = "client", .macro = 0, .room = 100});
  tap("43");
  parts.device.typeKey(7, 5, true);
  tap("06");
  EXPECT_TRUE(parts.recorder.stop("client"));
  const PropertyList events = parts.recorder.events();
  std::vector<std::pair<std::int32_t, std::int32_t>> caught;
  for (const PropertyList& event : events.elements()) {
    caught.emplace_back(event["argument"].toInt(), event["command"].toInt());
  }
  EXPECT_EQ(caught, (std::vector<std::pair<std::int32_t, std::int32_t>>{{225, 1}, {4, 1}, {4, 0}, {225, 0}, {5, 1}}));
}

TEST_F(AssignmentPlayerOutputTest, GoesToTheKeyCapture) {
  parts.capture.start(KeyCapture::Purpose::Assignment, "client");
  tap("20");
  ASSERT_FALSE(parts.news.posted.empty());
  EXPECT_EQ(parts.news.posted.back().userInfo["singleKey"], PropertyList(20));
}

}  // namespace
}  // namespace vorn::engine::test
