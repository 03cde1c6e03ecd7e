// All commands of vornctl: what the command line, --help and the manual page agree on.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

#include "ctl/Context.h"

namespace vorn::ctl {

struct Command {
  std::string_view name;       // one or two words
  std::string_view arguments;  // for --help
  std::size_t minimum;         // how many arguments it takes
  std::size_t maximum;
  std::string_view options;  // the options of single commands that it takes, with blanks between
  std::string_view summary;
  Outcome (*run)(Context& context, const Arguments& arguments);
  bool isOnlyLooking = false;  // starts no engine
};

std::span<const Command> commandTable();

// Whether the option is one of the command's own.
bool takesOption(const Command& command, std::string_view option);

struct Invocation {
  const Command* command;
  Arguments arguments;
};

// The command that the words name, with the rest of them as its arguments.
Result<Invocation> findCommand(const CommandLine& line);

std::string helpText();

}  // namespace vorn::ctl
