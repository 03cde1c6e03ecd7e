#include "ctl/Keys.h"

#include <gtest/gtest.h>

namespace vorn::ctl {
namespace {

TEST(KeysTest, AreFoundByNameAndUsage) {
  const std::pair<const char*, int> table[] = {
      {"a", 4},           {"F5", 62},         {"page-up", 75}, {"Left Shift", 225}, {"-", 45},      {"numpad--", 0},
      {"usage:100", 100}, {"usage:231", 231}, {"usage:3", 0},  {"usage:232", 0},    {"usage:x", 0}, {"frob", 0},
  };
  for (const auto& [name, expected] : table) EXPECT_EQ(keyUsage(name).value_or(0), expected) << name;
}

TEST(KeysTest, AreModifiersWithAndWithoutASide) {
  const std::pair<const char*, int> table[] = {
      {"control", 224}, {"Shift", 225},      {"alt", 226}, {"Command", 227}, {"right-alt", 230}, {"A", 0},
      {"CTRL", 224},    {"right-ctrl", 228}, {"cmd", 227}, {"super", 227},   {"option", 226},    {"Left Shift", 225}};
  for (const auto& [name, expected] : table) EXPECT_EQ(modifierUsage(name).value_or(0), expected) << name;
}

TEST(KeysTest, AreTakenWithTheModifiersBeforeThem) {
  const std::pair<const char*, Chord> table[] = {
      {"k", {14, 0}},
      {"ctrl+k", {14, 1}},
      {"Ctrl+Shift+K", {14, 3}},
      {"cmd+right-alt+F5", {62, 0x48}},
      {"Control+Numpad +", {87, 1}},
      {"numpad +", {87, 0}},
      {"shift+-", {45, 2}},
      {"ctrl+shift", {0, 3}},
      {"Right Control", {0, 16}},
      {"usage:225", {0, 2}},
      {"ctrl+usage:50", {50, 1}},
  };
  for (const auto& [word, expected] : table) {
    const auto chord = chordNamed(word);
    ASSERT_TRUE(chord) << word << ": " << chord.failure().text;
    EXPECT_EQ(*chord, expected) << word;
  }
}

TEST(KeysTest, ThatAreNoneAreRefusedWithWhatIsNear) {
  const std::pair<const char*, const char*> table[] = {
      {"Frob", "there is no key \"Frob\"; vornctl keys lists them"},
      {"Escap", "there is no key \"Escap\"; did you mean \"Escape\"?"},
      {"ctrl+", "there is no key \"\"; vornctl keys lists them"},
      {"+k", "there is no modifier \"\""},
      {"a+b", "there is no modifier \"a\""},
      {"shfit+k", "there is no modifier \"shfit\"; did you mean \"Shift\"?"},
  };
  for (const auto& [word, text] : table) {
    const auto chord = chordNamed(word);
    ASSERT_FALSE(chord) << word;
    EXPECT_EQ(chord.failure().text, text);
    EXPECT_EQ(chord.failure().status, ExitStatus::Usage);
  }
}

TEST(KeysTest, AreFoundByTheWordsThatAreListed) {
  const Names words = keyWords();
  EXPECT_EQ(words.size(), 119U);
  for (const std::string& word : words) EXPECT_EQ(keyWord(keyUsage(word).value_or(0)), word);
}

}  // namespace
}  // namespace vorn::ctl
