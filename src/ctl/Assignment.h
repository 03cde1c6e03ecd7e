// The actions of `vornctl assign`, as assignment records.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "ctl/Context.h"
#include "ctl/Controls.h"
#include "model/Assignments.h"

namespace vorn::ctl {

struct ParsedAction {
  PropertyList record;  // without "param1" where there is a target
  std::string target;   // the macro or profile that it names, a number from 1 or a name
};

struct ActionWord {
  std::string_view name;  // one word, or two
  std::string_view
      value;  // of one more word: those that it may be, with bars between, or what it stands for in capitals
};
// All actions that there are.
std::vector<ActionWord> actionWords();

// The words of an action, and its options, for the control.
Result<ParsedAction> parseAction(const Control& control, const Arguments& action, const CommandLine& line);

// The assignment record of the action. A failure when its target is not there.
Result<PropertyList> resolvedAction(const ParsedAction& action, const PropertyList& bundle);

}  // namespace vorn::ctl
