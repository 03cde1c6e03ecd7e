#include "ctl/Assignment.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "ctl/Keys.h"
#include "ctl/Names.h"
#include "ctl/Numbers.h"
#include "ctl/Settings.h"
#include "model/ApplicationEntry.h"
#include "model/HidUsages.h"

namespace vorn::ctl {

namespace {

using Command = AssignmentCommand;

// What the action is made of.
struct Request {
  const Control& control;
  const Arguments& words;
  const CommandLine& line;
};

Failure wrong(std::string text) {
  return {ExitStatus::Usage, std::move(text)};
}

Result<PropertyList> disabled(const Request& request) {
  return assignmentRecord(Command::Disable,
                          request.control.family == ControlFamily::DirectionPad ? request.control.code() : 0);
}

Result<PropertyList> key(const Request& request) {
  const auto chord = chordNamed(request.words[1]);
  if (!chord) return chord.failure();
  std::int32_t modifiers = chord->modifiers;
  for (const std::string& name : request.line.modifiers) {
    const auto modifier = modifierUsage(name);
    if (!modifier) return wrong("there is no modifier \"" + name + "\"" + suggestion(modifierNames(), name));
    modifiers |= modifierBit(*modifier);
  }
  return assignmentRecord(Command::SingleKey, chord->usage, modifiers);
}

Result<PropertyList> macro(const Request& request) {
  const std::string mode = request.line.repeatMode.value_or("1");
  const bool isOpenEnded = mode == "held" || mode == "toggle";
  const auto times = numberOf(mode, 1, 10);
  if (!isOpenEnded && !times) return wrong("--repeat takes 1 to 10, held or toggle");
  if (isOpenEnded && isWheelTurn(request.control.identifier)) return wrong("the wheel repeats a macro 1 to 10 times");
  const std::int64_t repeat = times ? *times : (mode == "held" ? repeatUntilReleased : repeatUntilPressedAgain);
  return assignmentRecord(Command::Macro, 0, repeat);
}

Result<PropertyList> keymap(const Request& request) {
  const bool isSwitchBack = request.line.isSwitchBack;
  if (isSwitchBack && isWheelTurn(request.control.identifier)) return wrong("the wheel cannot switch back");
  if (request.words[1] == "cycle") {
    if (isSwitchBack) return wrong("keymap cycle cannot switch back");
    return assignmentRecord(Command::Keymap, nextKeymap);
  }
  const auto number = numberOf(request.words[1], 1, static_cast<std::int64_t>(keys::keymapCount));
  if (!number) return wrong("keymap takes 1 to 8 or cycle");
  return assignmentRecord(Command::Keymap, *number - 1, isSwitchBack ? 1 : 0);
}

Result<PropertyList> button(const Request& request) {
  if (request.words[1] == "double") return assignmentRecord(Command::DoubleClick);
  const auto number = numberOf(request.words[1], 1, 8);
  if (!number) return wrong("button takes 1 to 8 or double");
  return assignmentRecord(static_cast<Command>(*number));
}

Result<PropertyList> launch(const Request& request) {
  std::error_code code;
  const auto path = std::filesystem::absolute(request.words[1], code).lexically_normal();
  std::string error = "no such application";
  if (!code && std::filesystem::exists(path, code) && launchCommandOf(path.string(), error)) {
    return assignmentRecord(Command::LaunchProgram, path.string(), "");
  }
  return Failure{ExitStatus::FileError, request.words[1] + ": " + (code ? code.message() : error) +
                                            "; launch takes an application folder NAME.app or a file NAME.desktop"};
}

struct Action {
  std::string_view name;   // one word, or two of which the second is a choice
  std::string_view value;  // one more word, if not empty: the words that it may be, or what it stands for
  Command command;         // where there is no function
  Result<PropertyList> (*parse)(const Request& request);
  std::string_view option;  // that it takes
};

constexpr Action actions[] = {
    {"default",
     "",
     {},
     [](const Request& request) -> Result<PropertyList> { return factoryAssignment(request.control.identifier); },
     ""},
    {"disable", "", {}, disabled, ""},
    {"key", "KEY", {}, key, "--with"},
    {"macro", "MACRO", {}, macro, "--repeat"},
    {"profile", "PROFILE", Command::Profile, nullptr, ""},
    {"keymap", "1|2|3|4|5|6|7|8|cycle", {}, keymap, "--switch-back"},
    {"button", "1|2|3|4|5|6|7|8|double", {}, button, ""},
    {"launch", "PATH", {}, launch, ""},
    {"scroll up", "", Command::ScrollUp, nullptr, ""},
    {"scroll down", "", Command::ScrollDown, nullptr, ""},
    {"stage up", "", Command::StageUp, nullptr, ""},
    {"stage down", "", Command::StageDown, nullptr, ""},
    {"forward", "", Command::Forward, nullptr, ""},
    {"backward", "", Command::Backward, nullptr, ""},
    {"sensitivity on-the-fly", "", Command::OnTheFlySensitivity, nullptr, ""},
    {"sensitivity temporary", "", Command::TemporarySensitivity, nullptr, ""},
};

const Action* actionNamed(const Arguments& words) {
  const std::string pair = words.size() == 2 ? words[0] + " " + words[1] : "";
  for (const Action& action : actions) {
    const std::size_t count = action.value.empty() ? 1 : 2;
    if (action.name == pair || (words.size() == count && action.name == words[0])) return &action;
  }
  return nullptr;
}

Names actionNames() {
  Names names;
  for (const Action& action : actions) names.emplace_back(action.name);
  return names;
}

std::string joined(const Arguments& words) {
  std::string text;
  for (const std::string& word : words) text += (text.empty() ? "" : " ") + word;
  return text;
}

}  // namespace

std::vector<ActionWord> actionWords() {
  std::vector<ActionWord> words;
  for (const Action& action : actions) words.push_back({action.name, action.value});
  return words;
}

Result<ParsedAction> parseAction(const Control& control, const Arguments& action, const CommandLine& line) {
  const Action* found = actionNamed(action);
  if (found == nullptr) {
    for (const Action& each : actions) {
      if (each.name != action[0]) continue;
      return wrong(action[0] + (each.value.empty() ? " takes no words" : " takes one word"));
    }
    return wrong("unknown action \"" + joined(action) + "\"" +
                 suggestion(actionNames(), joined(action), "; --help lists them"));
  }
  for (const std::string& option : line.commandOptions) {
    if (option != "--profile" && option != found->option) {
      return wrong(std::string(found->name) + " takes no option " + option);
    }
  }
  const Result<PropertyList> record =
      found->parse != nullptr ? found->parse({control, action, line}) : assignmentRecord(found->command);
  if (!record) return record.failure();
  if (commandOf(*record) != Command::Macro && commandOf(*record) != Command::Profile) return ParsedAction{*record, {}};
  return ParsedAction{record->without(keys::Param1), action[1]};
}

Result<PropertyList> resolvedAction(const ParsedAction& action, const PropertyList& bundle) {
  if (action.record.contains(keys::Param1)) return action.record;
  const auto position = commandOf(action.record) == Command::Macro ? macroNamed(bundle, action.target)
                                                                   : profileNamed(bundle, action.target);
  if (!position) return position.failure();
  return action.record.with(keys::Param1, *position);
}

}  // namespace vorn::ctl
