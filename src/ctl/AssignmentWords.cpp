#include "ctl/AssignmentWords.h"

#include "ctl/Keys.h"
#include "ctl/Names.h"
#include "ctl/Numbers.h"
#include "model/HidUsages.h"
#include "model/SettingsKeys.h"

namespace vorn::ctl {

namespace {

using Command = AssignmentCommand;

std::string argument(const std::string& word) {
  return word.find(' ') == std::string::npos && !word.empty() ? word : "\"" + word + "\"";
}

// By its name where that finds it again, else by its number.
std::string recordWord(const PropertyList& records, std::string_view nameKey, std::int64_t position) {
  Names names;
  for (const PropertyList& record : records.elements()) names.emplace_back(record[nameKey].string());
  const std::string& name = records.at(position)[nameKey].toString();
  const bool isFound = !name.empty() && !numberOf(name) && name.find('"') == std::string::npos && name[0] != '-' &&
                       positionsNamed(names, name).size() == 1;
  return isFound ? "\"" + name + "\"" : std::to_string(position + 1);
}

std::string macroWords(const PropertyList& record, const PropertyList& bundle) {
  const std::int64_t mode = record[keys::Param2].toInt64();
  std::string words = "macro " + recordWord(bundle[keys::Macros], keys::MacroName, record[keys::Param1].toInt64());
  if (mode == repeatUntilReleased) return words + " --repeat held";
  if (mode == repeatUntilPressedAgain) return words + " --repeat toggle";
  return mode >= 2 && mode <= 10 ? words + " --repeat " + std::to_string(mode) : words;
}

std::string keymapWords(const PropertyList& record) {
  const std::int64_t keymap = record[keys::Param1].toInt64();
  if (keymap == nextKeymap) return "keymap cycle";
  return "keymap " + std::to_string(keymap + 1) + (record[keys::Param2].toInt() == 1 ? " --switch-back" : "");
}

std::string plainWords(Command command) {
  switch (command) {
    case Command::DoubleClick:
      return "button double";
    case Command::StageUp:
      return "stage up";
    case Command::StageDown:
      return "stage down";
    case Command::Forward:
      return "forward";
    case Command::Backward:
      return "backward";
    case Command::OnTheFlySensitivity:
      return "sensitivity on-the-fly";
    case Command::TemporarySensitivity:
      return "sensitivity temporary";
    case Command::ScrollUp:
      return "scroll up";
    case Command::ScrollDown:
      return "scroll down";
    case Command::Disable:
      return "disable";
    default:
      break;
  }
  const auto number = static_cast<std::int32_t>(command);
  const bool isButton = command >= Command::LeftClick && command <= Command::MouseButton8;
  return (isButton ? "button " : "command ") + std::to_string(number);
}

}  // namespace

std::string wordsOf(const PropertyList& record, const Control& control, const PropertyList& bundle) {
  if (isFactoryAssignment(record, control)) return "default";
  const std::int64_t target = record[keys::Param1].toInt64();
  switch (commandOf(record)) {
    case Command::SingleKey:
      return "key " + argument(chordWord(target, record[keys::Param2].toInt64()));
    case Command::DefaultKey:
      return "key " + argument(chordWord(target, 0));
    case Command::Macro:
      return macroWords(record, bundle);
    case Command::Profile:
      return "profile " + recordWord(bundle[keys::Profiles], keys::ProfileName, target);
    case Command::Keymap:
      return keymapWords(record);
    case Command::LaunchProgram:
      return "launch " + argument(record[keys::Param1].toString());
    default:
      return plainWords(commandOf(record));
  }
}

}  // namespace vorn::ctl
