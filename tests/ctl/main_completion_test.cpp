// The completion of vornctl offers the controls and settings that there are; completion.bash tests the rest of it.
#include <gtest/gtest.h>

#include "ctl/Controls.h"
#include "model/ProfileKeys.h"
#include "support/ChildProcess.h"

namespace vorn::ctl::test {
namespace {

using Words = std::vector<std::string>;

// What may follow the words.
Words offersAfter(const Words& words) {
  Words commandLine = {"bash", "--norc", "-c",
                       "source \"$0\"; COMP_WORDS=(vornctl \"$@\" ''); COMP_CWORD=$(($# + 1)); _vornctl;"
                       "printf '%s\\n' \"${COMPREPLY[@]}\"",
                       COMPLETION_SCRIPT};
  commandLine.insert(commandLine.end(), words.begin(), words.end());
  vorn::test::ChildProcess shell(commandLine);
  Words offers;
  while (const auto line = shell.waitForLine([](const std::string&) { return true; })) offers.push_back(*line);
  return offers;
}

// The numbers of the controls that the words name; 0 for any other word.
std::vector<int> numbersOf(const Words& words) {
  std::vector<int> numbers;
  for (const std::string& word : words) {
    const auto* named =
        std::ranges::find_if(controls, [&](const Control& each) { return isSameWord(each.name, word); });
    numbers.push_back(named == controls.end() ? 0 : named->number);
  }
  return numbers;
}

std::vector<int> allNumbers() {
  std::vector<int> numbers;
  for (const Control& control : controls) numbers.push_back(control.number);
  return numbers;
}

TEST(CompletionTest, OffersEverySettingOfAProfile) {
  Words expected;
  for (const ProfileKey& setting : profileKeys) {
    // What has no single value is offered as the beginning of a path, but for lists that are short enough to read.
    const bool isPath = setting.type == SettingType::Dictionary || setting.type == SettingType::Keymaps;
    expected.push_back(std::string(setting.key) + (isPath ? "/" : ""));
  }
  EXPECT_EQ(offersAfter({"get"}), expected);
  EXPECT_EQ(offersAfter({"set"}), expected);
}

TEST(CompletionTest, OffersEveryControlByItsName) {
  EXPECT_EQ(numbersOf(offersAfter({"assign"})), allNumbers());
}

TEST(CompletionTest, OffersTheFixedKeysOfTheVirtualMouseToo) {
  for (const char* action : {"press", "release", "click"}) {
    Words offers = offersAfter({"device", action});
    ASSERT_GE(offers.size(), fixedKeys.size());
    const auto firstFixed = offers.end() - fixedKeys.size();
    EXPECT_EQ(Words(firstFixed, offers.end()), Words(fixedKeys.begin(), fixedKeys.end()));
    offers.erase(firstFixed, offers.end());
    EXPECT_EQ(numbersOf(offers), allNumbers());
  }
}

}  // namespace
}  // namespace vorn::ctl::test
