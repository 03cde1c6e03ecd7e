#include "ctl/Completion.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include "ctl/CommandTable.h"
#include "ctl/Commands.h"
#include "ctl/Controls.h"
#include "model/ProfileKeys.h"

namespace vorn::ctl {
namespace {

using Words = std::vector<std::string>;

Offers offersAfter(Words words, const std::string& current = {}) {
  words.push_back(current);
  return offersFor(words, [](NameKind kind) -> Names {
    switch (kind) {
      case NameKind::Profiles:
        return {"Work", "Games"};
      case NameKind::Macros:
        return {"Save all"};
      case NameKind::Mice:
        return {"usb-1", "virtual"};
      case NameKind::Changes:
        return {"12", "9"};
      case NameKind::Backups:
        return {"2026-01-02"};
    }
    return {};
  });
}

Words wordsOf(const Offers& offers) {
  Words words;
  for (const Offer& each : offers.words) words.push_back(each.word);
  return words;
}

Words wordsAfter(const Words& words, const std::string& current = {}) {
  return wordsOf(offersAfter(words, current));
}

bool isAmong(const Words& words, std::string_view word) {
  return std::ranges::find(words, word) != words.end();
}

Words partsOf(std::string_view text) {
  std::istringstream stream{std::string(text)};
  Words parts;
  for (std::string part; stream >> part;) parts.push_back(part);
  return parts;
}

// The numbers of the controls that the words name; 0 for any other word.
std::vector<int> numbersOf(const Words& words) {
  std::vector<int> numbers;
  for (const std::string& word : words) {
    const Control* control = controlNamed(word);
    numbers.push_back(control == nullptr ? 0 : control->number);
  }
  return numbers;
}

std::vector<int> allNumbers() {
  std::vector<int> numbers;
  for (const Control& control : controls) numbers.push_back(control.number);
  return numbers;
}

TEST(CompletionTest, OffersEveryCommandWithWhatItDoes) {
  for (const Command& command : commandTable()) {
    if (command.run == complete) continue;
    Words before = partsOf(command.name);
    const std::string last = before.back();
    before.pop_back();
    const Offers offers = offersAfter(before);
    const auto found = std::ranges::find(offers.words, last, &Offer::word);
    ASSERT_NE(found, offers.words.end()) << command.name;
    // "history" is a command, and the beginning of others.
    const std::string_view description = command.name == "history" ? std::string_view() : command.summary;
    EXPECT_EQ(found->description, description);
  }
}

TEST(CompletionTest, OffersEachWordOnce) {
  Words first = wordsAfter({});
  std::ranges::sort(first);
  EXPECT_EQ(std::ranges::adjacent_find(first), first.end());
  EXPECT_FALSE(isAmong(first, "complete"));
  Words actions = wordsAfter({"assign", "1"});
  std::ranges::sort(actions);
  EXPECT_EQ(std::ranges::adjacent_find(actions), actions.end());
}

TEST(CompletionTest, OffersTheOptionsOfTheCommandAndThoseOfAll) {
  for (const Command& command : commandTable()) {
    const Words offered = wordsAfter(partsOf(command.name), "--");
    for (const OptionWord& option : optionWords()) {
      EXPECT_EQ(isAmong(offered, option.name), !option.isOfCommands || takesOption(command, option.name))
          << command.name << " " << option.name;
    }
  }
}

TEST(CompletionTest, OffersAllOptionsBeforeTheCommand) {
  EXPECT_EQ(wordsAfter({}, "-").size(), optionWords().size());
}

TEST(CompletionTest, OffersTheValuesOfOptions) {
  EXPECT_EQ(wordsAfter({"get", "--profile"}), (Words{"Work", "Games"}));
  EXPECT_EQ(wordsAfter({"assignments", "--keymap"}), (Words{"1", "2", "3", "4", "5", "6", "7", "8"}));
  EXPECT_TRUE(isAmong(wordsAfter({"assign", "1", "key", "A", "--with"}), "Right-Control"));
  EXPECT_TRUE(isAmong(wordsAfter({"assign", "1", "macro", "1", "--repeat"}), "toggle"));
  EXPECT_EQ(wordsAfter({"status", "--timeout"}), Words());
}

TEST(CompletionTest, PassesOptionsAndTheirValuesOver) {
  EXPECT_EQ(wordsAfter({"--json", "--timeout", "5", "history", "--no-start"}), (Words{"list", "go"}));
  EXPECT_EQ(wordsAfter({"get", "--profile", "Games"}), wordsAfter({"get"}));
  EXPECT_EQ(wordsAfter({"profiles", "--", "--json"}), Words());
}

TEST(CompletionTest, OffersTheNamesThatTheEngineKnows) {
  EXPECT_EQ(wordsAfter({"profiles", "switch"}), (Words{"Work", "Games"}));
  EXPECT_EQ(wordsAfter({"profiles", "compare", "Work"}), (Words{"Work", "Games"}));
  EXPECT_EQ(wordsAfter({"macros", "show"}), Words{"Save all"});
  EXPECT_EQ(wordsAfter({"mice", "use"}), (Words{"usb-1", "virtual"}));
  EXPECT_EQ(wordsAfter({"history", "go"}), (Words{"12", "9", "0"}));
  EXPECT_EQ(wordsAfter({"backups", "restore"}), Words{"2026-01-02"});
  EXPECT_EQ(wordsAfter({"assign", "1", "profile"}), (Words{"Work", "Games"}));
  EXPECT_EQ(wordsAfter({"assign", "1", "macro"}), Words{"Save all"});
}

TEST(CompletionTest, OffersNothingForNewNamesAndNumbers) {
  for (const Words& words : {Words{"profiles", "add"}, Words{"profiles", "rename", "Work"}, Words{"device", "battery"},
                             Words{"profiles", "switch", "Work"}, Words{"undo"}, Words{"nonsense"}}) {
    const Offers offers = offersAfter(words);
    EXPECT_EQ(wordsOf(offers), Words()) << words[0];
    EXPECT_EQ(offers.files, Offers::Files::None) << words[0];
  }
}

TEST(CompletionTest, OffersEverySettingOfAProfile) {
  Words expected;
  for (const ProfileKey& setting : profileKeys) {
    // What has no single value is offered as the beginning of a path, but for lists that are short enough to read.
    const bool isPath = setting.type == SettingType::Dictionary || setting.type == SettingType::Keymaps;
    expected.push_back(std::string(setting.key) + (isPath ? "/" : ""));
  }
  EXPECT_EQ(wordsAfter({"get"}), expected);
  EXPECT_EQ(wordsAfter({"set"}), expected);
}

TEST(CompletionTest, OffersEveryControlByItsName) {
  EXPECT_EQ(numbersOf(wordsAfter({"assign"})), allNumbers());
}

TEST(CompletionTest, OffersTheFixedKeysOfTheMouseToo) {
  for (const Words& words : {Words{"device", "press"}, Words{"device", "release"}, Words{"device", "click"},
                             Words{"mice", "teach"}, Words{"mice", "forget"}}) {
    Words offers = wordsAfter(words);
    ASSERT_GE(offers.size(), fixedKeys.size());
    const auto firstFixed = offers.end() - fixedKeys.size();
    EXPECT_EQ(Words(firstFixed, offers.end()), Words(fixedKeys.begin(), fixedKeys.end()));
    offers.erase(firstFixed, offers.end());
    EXPECT_EQ(numbersOf(offers), allNumbers());
  }
}

TEST(CompletionTest, OffersWhatAnActionTakes) {
  EXPECT_EQ(wordsAfter({"assign", "1", "keymap"}), (Words{"1", "2", "3", "4", "5", "6", "7", "8", "cycle"}));
  EXPECT_EQ(wordsAfter({"assign", "1", "stage"}), (Words{"up", "down"}));
  EXPECT_EQ(wordsAfter({"assign", "1", "sensitivity"}), (Words{"on-the-fly", "temporary"}));
  EXPECT_EQ(wordsAfter({"assign", "1", "default"}), Words());
  EXPECT_EQ(offersAfter({"assign", "1", "launch"}).files, Offers::Files::Any);
}

TEST(CompletionTest, OffersKeysAlsoBehindModifiers) {
  EXPECT_TRUE(isAmong(wordsAfter({"assign", "1", "key"}), "F5"));
  EXPECT_TRUE(isAmong(wordsAfter({"device", "type"}, "ctrl+sh"), "ctrl+shift+"));
  EXPECT_TRUE(isAmong(wordsAfter({"device", "type"}, "ctrl+shift+"), "ctrl+shift+F5"));
}

TEST(CompletionTest, OffersFilesOfTheKindThatIsMeant) {
  for (const Words& words : {Words{"profiles", "import"}, Words{"profiles", "export", "Work"}}) {
    const Offers offers = offersAfter(words);
    EXPECT_EQ(offers.files, Offers::Files::Any);
    EXPECT_EQ(offers.extension, "SkarnProfile");
  }
  EXPECT_EQ(offersAfter({"macros", "import"}).extension, "SkarnMacro");
  EXPECT_EQ(offersAfter({"profiles", "export", "--all"}).files, Offers::Files::Folders);
  EXPECT_EQ(wordsAfter({"profiles", "export", "--all"}), Words());
  EXPECT_EQ(offersAfter({"profiles", "export", "--all", "Here"}).files, Offers::Files::None);
}

}  // namespace
}  // namespace vorn::ctl
