#include "core-engine/record/KeyCapture.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core-engine/TestParts.h"
#include "model/eventParser.h"

namespace vorn::engine::test {
namespace {

using AllNews = std::vector<RecordingNewsPort::News>;
using Purpose = KeyCapture::Purpose;
using Usages = std::vector<std::uint16_t>;

class KeyCaptureTest : public testing::Test {
 protected:
  void press(std::uint16_t usage) { capture.note({7, usage, true}); }
  void release(std::uint16_t usage) { capture.note({7, usage, false}); }

  RecordingNewsPort news;
  KeyCapture capture{news};
};

RecordingNewsPort::News caught(const std::string& number, std::int32_t key, std::int32_t modifier) {
  return {"SingleKeyEvent" + number, PropertyList::dictionary({{"singleKey", key}, {"singleKeyModif", modifier}})};
}

TEST_F(KeyCaptureTest, TellsAKeyWithTheModifiersHeldForAnAssignment) {
  capture.start(Purpose::Assignment, "A");
  press(225);
  press(4);
  release(4);
  release(225);
  press(5);
  EXPECT_EQ(news.posted, (AllNews{caught("273", 0, 2), caught("273", 4, 2), caught("273", 5, 0)}));
}

TEST_F(KeyCaptureTest, TellsModifiersAloneAsTheBitsOfAReportForAnAssignment) {
  capture.start(Purpose::Assignment, "A");
  for (std::uint16_t usage = 224; usage <= 231; ++usage) press(usage);
  release(224);
  press(231);
  EXPECT_EQ(news.posted, (AllNews{caught("273", 0, 1), caught("273", 0, 3), caught("273", 0, 7), caught("273", 0, 15),
                                  caught("273", 0, 31), caught("273", 0, 63), caught("273", 0, 127),
                                  caught("273", 0, 255), caught("273", 0, 254)}));
}

TEST_F(KeyCaptureTest, TellsAtOnceWhoseItIs) {
  std::vector<std::string> clients;
  capture.setClientHandler([&](const std::string& each) {
    EXPECT_EQ(each, capture.client());
    clients.push_back(each);
  });
  capture.start(Purpose::Assignment, "A");
  capture.start(Purpose::MacroEvent, "A");
  capture.start(Purpose::MacroEvent, "B");
  capture.stop("A");
  capture.stop("B");
  EXPECT_EQ(clients, (std::vector<std::string>{"A", "B", ""}));
}

TEST_F(KeyCaptureTest, GivesTheAssignmentSheetTextsThatNameTheKeys) {
  capture.start(Purpose::Assignment, "A");
  for (const std::uint16_t usage : Usages{224, 226, 76}) press(usage);
  std::vector<std::string> texts;
  for (const auto& each : news.posted) {
    texts.push_back(
        eventParser::getStringWithHID(each.userInfo["singleKey"].toInt64(), each.userInfo["singleKeyModif"].toInt64()));
  }
  EXPECT_EQ(texts,
            (std::vector<std::string>{"Left Control", "Left Control + Left Alt", "Left Control + Left Alt + Delete"}));
}

TEST_F(KeyCaptureTest, TellsAModifierAloneAsItsOwnUsageForAMacroEvent) {
  capture.start(Purpose::MacroEvent, "A");
  press(225);
  press(4);
  press(231);
  EXPECT_EQ(news.posted, (AllNews{caught("1050", 0, 225), caught("1050", 4, 2), caught("1050", 0, 231)}));
}

TEST_F(KeyCaptureTest, GivesTheMacroEventSheetTheKeyThatWasPressed) {
  capture.start(Purpose::MacroEvent, "A");
  for (const std::uint16_t usage : Usages{4, 115, 223, 224, 231}) {
    news.posted.clear();
    press(usage);
    ASSERT_EQ(news.posted.size(), 1U);
    // The sheet takes the modifier where there is no key, and of either the low 8 bits.
    const PropertyList& told = news.posted[0].userInfo;
    const bool isModifier = told["singleKeyModif"].toInt() != 0 && told["singleKey"].toInt() == 0;
    EXPECT_EQ(told[isModifier ? "singleKeyModif" : "singleKey"].toInt() & 255, usage);
  }
}

TEST_F(KeyCaptureTest, IgnoresWhatIsNoKey) {
  capture.start(Purpose::Assignment, "A");
  for (const std::uint16_t usage : Usages{0, 3, 232, 1000, 65535}) press(usage);
  capture.note({9, 4, true});
  capture.note({1, 56, true});
  release(4);
  EXPECT_EQ(news.posted, AllNews());
}

TEST_F(KeyCaptureTest, TellsNothingBeforeItsStartAndAfterItsStop) {
  press(4);
  EXPECT_FALSE(capture.isCapturing());
  capture.start(Purpose::Assignment, "A");
  EXPECT_TRUE(capture.isCapturing());
  EXPECT_TRUE(capture.stop("A"));
  EXPECT_FALSE(capture.isCapturing());
  press(4);
  EXPECT_EQ(news.posted, AllNews());
  EXPECT_FALSE(capture.stop("A"));
}

TEST_F(KeyCaptureTest, ForgetsModifiersWithEveryStart) {
  capture.start(Purpose::Assignment, "A");
  press(224);
  capture.start(Purpose::Assignment, "A");
  press(4);
  EXPECT_EQ(news.posted, (AllNews{caught("273", 0, 1), caught("273", 4, 0)}));
}

TEST_F(KeyCaptureTest, BelongsToTheClientThatBeganLast) {
  capture.start(Purpose::Assignment, "A");
  capture.start(Purpose::MacroEvent, "B");
  press(4);
  EXPECT_FALSE(capture.stop("A"));
  press(5);
  EXPECT_TRUE(capture.stop("B"));
  EXPECT_EQ(news.posted, (AllNews{caught("1050", 4, 0), caught("1050", 5, 0)}));
}

}  // namespace
}  // namespace vorn::engine::test
