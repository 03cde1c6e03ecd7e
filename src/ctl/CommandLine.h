// The words of vornctl's command line, sorted into options and arguments.
#pragma once

#include <chrono>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "ctl/Failure.h"

namespace vorn::ctl {

struct CommandLine {
  static constexpr std::chrono::milliseconds defaultTimeout{5000};

  bool isJson = false;
  bool isHelpWanted = false;
  bool isVersionWanted = false;
  bool isNoStart = false;
  std::chrono::milliseconds timeout = defaultTimeout;  // for each answer; 10 ms to one hour

  // Options of single commands
  std::optional<std::string> profile;
  std::optional<std::string> keymap;
  std::vector<std::string> modifiers;
  std::optional<std::string> repeatMode;
  bool isSwitchBack = false;
  bool isFailing = false;
  bool isPressOnly = false;
  bool isReleaseOnly = false;
  bool isList = false;
  bool isAppending = false;
  bool isNew = false;
  bool isAll = false;
  std::optional<std::chrono::milliseconds> duration;  // of a recording; 10 ms to one hour

  std::vector<std::string> commandOptions;  // names of those that were given
  std::vector<std::string> words;           // everything that is no option

  friend bool operator==(const CommandLine&, const CommandLine&) = default;
};

struct OptionWord {
  std::string_view name;
  bool takesValue;
  bool isOfCommands;  // of single commands
};
// All options that there are.
std::vector<OptionWord> optionWords();

// Whether --json is among the options, also where the line cannot be parsed.
bool isJsonWanted(std::span<const char* const> arguments);

// Options may stand anywhere before "--"; a value follows as the next word or after "=". A word like "-5" or "-" is no
// option.
Result<CommandLine> parseCommandLine(std::span<const char* const> arguments);

}  // namespace vorn::ctl
