#include "ctl/CommandLine.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <locale>
#include <sstream>
#include <string_view>

#include "ctl/Names.h"

namespace vorn::ctl {

namespace {

struct Flag {
  std::string_view name;
  bool CommandLine::*value;
  bool isOfCommands;
};

constexpr Flag flags[] = {
    {"--json", &CommandLine::isJson, false},
    {"--help", &CommandLine::isHelpWanted, false},
    {"--version", &CommandLine::isVersionWanted, false},
    {"--no-start", &CommandLine::isNoStart, false},
    {"--switch-back", &CommandLine::isSwitchBack, true},
    {"--failing", &CommandLine::isFailing, true},
    {"--press", &CommandLine::isPressOnly, true},
    {"--release", &CommandLine::isReleaseOnly, true},
    {"--list", &CommandLine::isList, true},
    {"--append", &CommandLine::isAppending, true},
    {"--new", &CommandLine::isNew, true},
    {"--all", &CommandLine::isAll, true},
};

// Each of these takes a value; false when it cannot be used.
struct Setting {
  std::string_view name;
  bool (*set)(CommandLine& line, const std::string& value);
  bool isOfCommands;
};

// 0.01 to 3600.
std::optional<std::chrono::milliseconds> secondsOf(const std::string& value) {
  // Not the user's locale: a point is a point everywhere.
  std::istringstream stream(value);
  stream.imbue(std::locale::classic());
  double seconds = 0;
  if (!(stream >> seconds) || stream.peek() != std::istringstream::traits_type::eof()) return std::nullopt;
  if (!(seconds >= 0.01 && seconds <= 3600)) return std::nullopt;
  return std::chrono::milliseconds(std::lround(seconds * 1000));
}

constexpr Setting settings[] = {
    {"--timeout",
     [](CommandLine& line, const std::string& value) {
       const auto seconds = secondsOf(value);
       line.timeout = seconds.value_or(line.timeout);
       return seconds.has_value();
     },
     false},
    {"--seconds",
     [](CommandLine& line, const std::string& value) {
       line.duration = secondsOf(value);
       return line.duration.has_value();
     },
     true},
    {"--profile",
     [](CommandLine& line, const std::string& value) {
       line.profile = value;
       return !value.empty();
     },
     true},
    {"--keymap",
     [](CommandLine& line, const std::string& value) {
       line.keymap = value;
       return !value.empty();
     },
     true},
    {"--with",
     [](CommandLine& line, const std::string& value) {
       line.modifiers.push_back(value);
       return !value.empty();
     },
     true},
    {"--repeat",
     [](CommandLine& line, const std::string& value) {
       line.repeatMode = value;
       return !value.empty();
     },
     true},
};

bool isOption(std::string_view word) {
  return word.size() > 1 && word[0] == '-' && !(word[1] >= '0' && word[1] <= '9');
}

template <typename Table>
auto rowNamed(const Table& table, std::string_view name) {
  return std::find_if(std::begin(table), std::end(table), [&](const auto& row) { return row.name == name; });
}

Failure wrong(std::string text) {
  return {ExitStatus::Usage, std::move(text)};
}

std::string suggestedOption(std::string_view word) {
  Names names;
  for (const Flag& flag : flags) names.emplace_back(flag.name);
  for (const Setting& setting : settings) names.emplace_back(setting.name);
  // What is right but for a value that it does not take needs no suggestion.
  return std::ranges::find(names, word) == names.end() ? suggestion(names, word) : "";
}

}  // namespace

std::vector<OptionWord> optionWords() {
  std::vector<OptionWord> words;
  for (const Flag& flag : flags) words.push_back({flag.name, false, flag.isOfCommands});
  for (const Setting& setting : settings) words.push_back({setting.name, true, setting.isOfCommands});
  return words;
}

bool isJsonWanted(std::span<const char* const> arguments) {
  const auto end = std::find(arguments.begin(), arguments.end(), std::string_view("--"));
  return std::find(arguments.begin(), end, std::string_view("--json")) != end;
}

Result<CommandLine> parseCommandLine(std::span<const char* const> arguments) {
  CommandLine line;
  for (std::size_t index = 0; index < arguments.size(); ++index) {
    const std::string_view word = arguments[index];
    if (word == "--") {
      line.words.insert(line.words.end(), arguments.begin() + static_cast<std::ptrdiff_t>(index) + 1, arguments.end());
      break;
    }
    if (!isOption(word)) {
      line.words.emplace_back(word);
      continue;
    }
    if (const auto flag = rowNamed(flags, word == "-h" ? "--help" : word); flag != std::end(flags)) {
      line.*flag->value = true;
      if (flag->isOfCommands) line.commandOptions.emplace_back(word);
      continue;
    }
    const std::string_view name = word.substr(0, word.find('='));
    const auto setting = rowNamed(settings, name);
    if (setting == std::end(settings)) return wrong("unknown option " + std::string(word) + suggestedOption(name));
    const bool isJoined = name.size() < word.size();
    if (!isJoined && ++index == arguments.size()) return wrong(std::string(name) + " needs a value");
    const std::string value(isJoined ? word.substr(name.size() + 1) : std::string_view(arguments[index]));
    if (!setting->set(line, value)) return wrong(std::string(name) + " cannot be \"" + value + "\"");
    if (setting->isOfCommands) line.commandOptions.emplace_back(name);
  }
  return line;
}

}  // namespace vorn::ctl
