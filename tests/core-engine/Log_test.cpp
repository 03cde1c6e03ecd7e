#include "core-engine/Log.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace vorn::engine::test {
namespace {

using Lines = std::vector<std::string>;

struct Recorded {
  Lines lines;
  Log log{[this](const std::string& line) { lines.push_back(line); }};
};

TEST(LogTest, BeginsEveryLineWithTheProgram) {
  Recorded recorded;
  recorded.log.line("ready");
  EXPECT_EQ(recorded.lines, Lines{"vorn-core-engine: ready"});
}

TEST(LogTest, WritesForeignTextOnOneLine) {
  Recorded recorded;
  recorded.log.line("a\nvorn-core-engine: forged\r\x1B[2J\t\\");
  EXPECT_EQ(recorded.lines, Lines{"vorn-core-engine: a\\nvorn-core-engine: forged\\x0D\\x1B[2J\\t\\\\"});
}

TEST(LogTest, KeepsTextOfEveryLanguage) {
  EXPECT_EQ(printable("Größe 設定 😀"), "Größe 設定 😀");
}

TEST(LogTest, EscapesWhatIsNoText) {
  EXPECT_EQ(printable("\x80"), "\\x80");
  EXPECT_EQ(printable("\xC3"), "\\xC3");
  EXPECT_EQ(printable("\xC0\xAF"), "\\xC0\\xAF");
  EXPECT_EQ(printable("\xE0\x80\x80"), "\\xE0\\x80\\x80");
  EXPECT_EQ(printable("\xED\xA0\x80"), "\\xED\\xA0\\x80");
  EXPECT_EQ(printable("\xF4\x90\x80\x80"), "\\xF4\\x90\\x80\\x80");
  EXPECT_EQ(printable("\xF5"), "\\xF5");
  EXPECT_EQ(printable("\x7F\xC2\x85\xE2\x80\xA8"), "\\x7F\\xC2\\x85\\xE2\\x80\\xA8");
  EXPECT_EQ(printable(std::string_view("a\0b", 3)), "a\\x00b");
  EXPECT_EQ(printable("\u202E\u2066\u206A"), "\\xE2\\x80\\xAE\\xE2\\x81\\xA6\u206A");
}

TEST(LogTest, CutsLongText) {
  EXPECT_EQ(printable("abcdef", 4), "abcd...");
}

TEST(LogTest, TellsARepeatedFaultOnceAndThenItsCount) {
  Recorded recorded;
  for (int count = 0; count < 100; ++count) recorded.log.fault(":1.5", "unknown message", "unknown message 99");
  EXPECT_EQ(recorded.lines, (Lines{"vorn-core-engine: client :1.5: unknown message 99",
                                   "vorn-core-engine: client :1.5: 10 times: unknown message",
                                   "vorn-core-engine: client :1.5: 100 times: unknown message"}));
}

TEST(LogTest, TellsEachClientsFaults) {
  Recorded recorded;
  recorded.log.fault(":1.5", "kind", "text");
  recorded.log.fault(":1.6", "kind", "text");
  recorded.log.fault(":1.5", "other kind", "other text");
  recorded.log.fault(":1.5", "kind", "text");
  EXPECT_EQ(recorded.lines, (Lines{"vorn-core-engine: client :1.5: text", "vorn-core-engine: client :1.6: text",
                                   "vorn-core-engine: client :1.5: other text"}));
}

TEST(LogTest, ForgetsTheFaultThatIsLongestAgo) {
  Recorded recorded;
  recorded.log.fault("first", "kind", "text");
  recorded.log.fault("second", "kind", "text");
  recorded.log.fault("first", "kind", "text");
  for (std::size_t client = 1; client < Log::maximumFaults; ++client) {
    recorded.log.fault(std::to_string(client), "kind", "text");
  }
  recorded.lines.clear();
  recorded.log.fault("first", "kind", "text");
  recorded.log.fault("second", "kind", "text");
  EXPECT_EQ(recorded.lines, Lines{"vorn-core-engine: client second: text"});
}

}  // namespace
}  // namespace vorn::engine::test
