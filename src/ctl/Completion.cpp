#include "ctl/Completion.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>

#include "ctl/Assignment.h"
#include "ctl/CommandTable.h"
#include "ctl/Commands.h"
#include "ctl/Controls.h"
#include "ctl/Keys.h"
#include "model/ProfileKeys.h"
#include "model/RecordFile.h"

namespace vorn::ctl {

namespace {

using Words = std::vector<std::string>;

// The command line before the word to complete.
struct Given {
  Words words;                   // without options and their values
  Words options;                 // that were given
  std::string_view awaitsValue;  // the option whose value is to complete
};

Given given(const Words& words) {
  const std::vector<OptionWord> options = optionWords();
  Given result;
  bool isOptionNext = true;
  for (std::size_t index = 0; index + 1 < words.size(); ++index) {
    const std::string& word = words[index];
    const auto option = std::ranges::find(options, std::string_view(word), &OptionWord::name);
    if (!isOptionNext || (word != "--" && !word.starts_with("--"))) {
      result.words.push_back(word);
    } else if (word == "--") {
      isOptionNext = false;
    } else {
      result.options.push_back(word);
      if (option == options.end() || !option->takesValue) continue;
      if (++index + 1 == words.size()) result.awaitsValue = option->name;
    }
  }
  return result;
}

std::vector<std::string_view> split(std::string_view text, char separator) {
  std::vector<std::string_view> parts;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find(separator), text.size());
    parts.push_back(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return parts;
}

class Completion {
 public:
  Completion(const Given& given, const std::string& current, const NamesOfKind& namesOf)
      : mGiven(given), mCurrent(current), mNamesOf(namesOf) {}

  Offers offers() {
    if (!mGiven.awaitsValue.empty()) {
      valueOf(mGiven.awaitsValue);
    } else if (mCurrent.starts_with('-')) {
      options();
    } else if (mGiven.words.empty()) {
      firstWords();
    } else if (mGiven.words.size() != 1 || !secondWords(mGiven.words[0])) {
      arguments();
    }
    return std::move(mOffers);
  }

 private:
  void offer(std::string word, std::string_view description = {}) {
    mOffers.words.push_back({std::move(word), description});
  }
  void offerAll(const Names& names) {
    for (const std::string& name : names) offer(name);
  }

  const Command* command() const {
    const Words& words = mGiven.words;
    const std::string pair = words.size() > 1 ? words[0] + " " + words[1] : "";
    const auto table = commandTable();
    const auto named = [&](std::string_view name) { return std::ranges::find(table, name, &Command::name); };
    auto found = named(pair);
    if (found == table.end() && !words.empty()) found = named(words[0]);
    return found == table.end() ? nullptr : &*found;
  }

  void firstWords() {
    for (const Command& each : commandTable()) {
      if (each.run == complete) continue;  // for shells, not for people
      const auto words = split(each.name, ' ');
      const auto isSame = [&](const Offer& offered) { return offered.word == words[0]; };
      if (std::ranges::any_of(mOffers.words, isSame)) continue;
      offer(std::string(words[0]), words.size() == 1 ? each.summary : std::string_view());
    }
  }

  bool secondWords(std::string_view first) {
    for (const Command& each : commandTable()) {
      const auto words = split(each.name, ' ');
      if (words.size() == 2 && words[0] == first) offer(std::string(words[1]), each.summary);
    }
    return !mOffers.words.empty();
  }

  // Those of the command, and where none stands there yet, of all.
  void options() {
    const Command* found = command();
    for (const OptionWord& option : optionWords()) {
      if (!option.isOfCommands || found == nullptr || takesOption(*found, option.name)) {
        offer(std::string(option.name));
      }
    }
  }

  void valueOf(std::string_view option) {
    if (option == "--profile") offerAll(mNamesOf(NameKind::Profiles));
    if (option == "--keymap") place("1|2|3|4|5|6|7|8");
    if (option == "--with") {
      for (const std::string& name : modifierNames()) offer(hyphened(name));
    }
    if (option == "--repeat") place("1|2|3|4|5|6|7|8|9|10|held|toggle");
  }

  void arguments() {
    const Command* found = command();
    if (found == nullptr) return;
    const std::size_t used = split(found->name, ' ').size();
    const std::size_t index = mGiven.words.size() - used;
    const bool isAll = std::ranges::find(mGiven.options, "--all") != mGiven.options.end();
    if (isAll && takesOption(*found, "--all")) {
      if (index == 0) place("FOLDER");
      return;
    }
    const auto places = split(found->arguments, ' ');
    mCommand = found;
    if (index < places.size() && !places[index].starts_with("ACTION")) {
      place(places[index]);
    } else if (!places.empty() && places.back().starts_with("ACTION")) {
      action(Words(mGiven.words.begin() + static_cast<std::ptrdiff_t>(used + places.size() - 1), mGiven.words.end()));
    }
  }

  // words: those of the action that stand there.
  void action(const Words& words) {
    for (const ActionWord& each : actionWords()) {
      const auto parts = split(each.name, ' ');
      if (words.empty()) {
        const auto isSame = [&](const Offer& offered) { return offered.word == parts[0]; };
        if (std::ranges::none_of(mOffers.words, isSame)) offer(std::string(parts[0]));
      } else if (words.size() == 1 && words[0] == parts[0]) {
        place(parts.size() > 1 ? parts[1] : each.value);
      }
    }
  }

  // What a place of the tables takes: words as they stand, or what a word in capitals stands for, with bars between.
  void place(std::string_view text) {
    if (text.starts_with('[')) text = text.substr(1, text.size() - 2);
    for (const std::string_view each : split(text, '|')) {
      const bool isKind = each[0] >= 'A' && each[0] <= 'Z';
      if (isKind) kind(each);
      if (!isKind && !each.starts_with('-')) offer(std::string(each));
    }
  }

  void kind(std::string_view name) {
    if (name == "PROFILE") offerAll(mNamesOf(NameKind::Profiles));
    if (name == "MACRO") offerAll(mNamesOf(NameKind::Macros));
    if (name == "MOUSE") offerAll(mNamesOf(NameKind::Mice));
    if (name == "DATE") offerAll(mNamesOf(NameKind::Backups));
    if (name == "CHANGE") {
      offerAll(mNamesOf(NameKind::Changes));
      offer("0", "the time before all of them");
    }
    if (name == "POSITION") {
      for (std::size_t position = 1; position <= keys::maximumProfiles; ++position) offer(std::to_string(position));
    }
    if (name == "CONTROL") controlWords();
    if (name == "KEY") isOfSettings() ? settings() : chords();
    if (name == "PATH") mOffers.files = Offers::Files::Any;
    if (name == "FOLDER") mOffers.files = Offers::Files::Folders;
    if (name == "FILE") {
      mOffers.files = Offers::Files::Any;
      const bool isMacro = mCommand != nullptr && mCommand->name.starts_with("macros");
      mOffers.extension = recordFileExtension(isMacro ? RecordKind::Macro : RecordKind::Profile);
    }
  }

  bool isOfSettings() const { return mCommand != nullptr && (mCommand->run == getValue || mCommand->run == setValue); }

  static std::string hyphened(std::string_view name) {
    std::string word(name);
    std::ranges::replace(word, ' ', '-');
    return word;
  }

  void controlWords() {
    for (const Control& control : controls) offer(hyphened(control.name));
    if (mCommand != nullptr && mCommand->run == assign) return;
    for (const std::string_view key : fixedKeys) offer(std::string(key));
  }

  // What has no single value is offered as the beginning of a path, but for lists that are short enough to read.
  void settings() {
    for (const ProfileKey& setting : profileKeys) {
      const bool isPath = setting.type == SettingType::Dictionary || setting.type == SettingType::Keymaps;
      offer(std::string(setting.key) + (isPath ? "/" : ""));
    }
  }

  // Also behind the modifiers that stand there already.
  void chords() {
    const std::size_t plus = mCurrent.rfind('+');
    const std::string before = plus == std::string::npos || plus == 0 ? "" : mCurrent.substr(0, plus + 1);
    for (const char* modifier : {"ctrl+", "shift+", "alt+", "cmd+"}) offer(before + modifier);
    for (const std::string& key : keyWords()) offer(before + key);
  }

  const Given& mGiven;
  const std::string& mCurrent;
  const NamesOfKind& mNamesOf;
  const Command* mCommand = nullptr;
  Offers mOffers;
};

}  // namespace

Offers offersFor(const std::vector<std::string>& words, const NamesOfKind& namesOf) {
  const Given before = given(words);
  const std::string current = words.empty() ? "" : words.back();
  return Completion(before, current, namesOf).offers();
}

}  // namespace vorn::ctl
