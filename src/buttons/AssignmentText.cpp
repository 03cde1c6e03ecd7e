#include "buttons/AssignmentText.h"

#include <algorithm>
#include <charconv>
#include <climits>
#include <string>

#include "buttons/AssignmentTransfer.h"
#include "buttons/ControlTable.h"
#include "model/Assignments.h"
#include "model/SettingsKeys.h"
#include "model/eventParser.h"
#include "platform/AssignmentWords.h"
#include "platform/Localization.h"
#include "platform/SettingsText.h"

namespace skarn {

using vorn::AssignmentCommand;
using vorn::PropertyList;
namespace keys = vorn::keys;

namespace {

// Commands of the mouse-button items, by tag.
constexpr std::array<AssignmentCommand, mouseButtonNameKeys.size()> mouseButtonCommands = {
    AssignmentCommand::LeftClick,    AssignmentCommand::RightClick,   AssignmentCommand::MouseButton3,
    AssignmentCommand::MouseButton4, AssignmentCommand::MouseButton5, AssignmentCommand::DoubleClick,
    AssignmentCommand::ScrollUp,     AssignmentCommand::ScrollDown};

// Commands that are chosen, and shown, by their name alone.
constexpr AssignmentCommand plainCommands[] = {AssignmentCommand::StageUp, AssignmentCommand::StageDown,
                                               AssignmentCommand::Forward, AssignmentCommand::Backward,
                                               AssignmentCommand::OnTheFlySensitivity};
constexpr AssignmentCommand furtherMouseButtons[] = {AssignmentCommand::MouseButton6, AssignmentCommand::MouseButton7,
                                                     AssignmentCommand::MouseButton8};

QString separatorBefore(const QString& target) {
  return target.isEmpty() ? QString() : QStringLiteral(":");
}

QString withColon(const QString& target) {
  return target.isEmpty() ? QString() : QStringLiteral(": ") + target;
}

QString keyText(const PropertyList& record) {
  return QString::fromStdString(
      vorn::eventParser::getStringWithHID(record[keys::Param1].toInt(), record[keys::Param2].toInt()));
}

}  // namespace

int numberOfIdentifier(std::string_view button) {
  int number = 0;
  std::from_chars(button.data(), button.data() + button.size(), number);
  return number;
}

// --- Records

const PropertyList& AssignmentText::recordAt(std::string_view button, int forGroupType) const {
  static const PropertyList none;
  if (forGroupType == keysGroupType) return mKeysDict[button];
  if (forGroupType == buttonsGroupType) return mButtonsDict[button];
  return none;
}

int AssignmentText::commandAt(std::string_view button, int forGroupType) const {
  return recordAt(button, forGroupType)[keys::Command].toInt();
}

const PropertyList& AssignmentText::defaultRecord(std::string_view groupKey, std::string_view button) const {
  return defaultDict[keys::Profiles].at(0)[groupKey][button];
}

QString AssignmentText::profileName(int index) const {
  return textOf(allProfiles.at(index), keys::ProfileName);
}

QString AssignmentText::macroName(int index) const {
  return textOf(allMacros.at(index), keys::MacroName);
}

QString AssignmentText::getHIDCodeAtButton(std::string_view button, int forGroupType) {
  const PropertyList& record = recordAt(button, forGroupType);
  const bool isKey = vorn::commandOf(record) == AssignmentCommand::SingleKey;
  const QString text = isKey ? keyText(record) : QString();
  singleKeyNameColon = separatorBefore(text);
  return text;
}

QString AssignmentText::getMacroAssignedAtButton(std::string_view button, int forGroupType) {
  QString name;
  const PropertyList& record = recordAt(button, forGroupType);
  if (!allMacros.isEmpty() && vorn::commandOf(record) == AssignmentCommand::Macro) {
    name = macroName(record[keys::Param1].toInt());
    for (const ControlDescriptor& control : controlTable) {
      if (control.groupType() == forGroupType && control.identifier == button)
        updateMacroRepeatButton(std::to_string(control.repeatCode));
    }
  }
  macroNameColon = separatorBefore(name);
  return name;
}

QString AssignmentText::getProfileAssignedAtButton(std::string_view button, int forGroupType) {
  QString name;
  const PropertyList& record = recordAt(button, forGroupType);
  if (!allProfiles.isEmpty() && vorn::commandOf(record) == AssignmentCommand::Profile)
    name = profileName(record[keys::Param1].toInt());
  profileNameColon = separatorBefore(name);
  return name;
}

QString AssignmentText::getKeyMapAssignedAtButton(std::string_view button, int forGroupType) {
  QString name;
  const PropertyList& record = recordAt(button, forGroupType);
  if (!allProfiles.isEmpty() && vorn::commandOf(record) == AssignmentCommand::Keymap)
    name = keymapStringValueForMapValue(record[keys::Param1].toInt());
  profileNameColon = withColon(name);
  return profileNameColon;
}

QString AssignmentText::getMouseButtonAssignedAtButton(std::string_view button, int forGroupType) {
  if (allProfiles.isEmpty()) return {};
  return withColon(stringForMouseButtonValue(commandAt(button, forGroupType)));
}

QString AssignmentText::getApplicationNameAssignedAtButton(std::string_view button, int forGroupType) {
  const PropertyList& record = recordAt(button, forGroupType);
  if (vorn::commandOf(record) != AssignmentCommand::LaunchProgram) return {};
  return withColon(applicationName(textOf(record, keys::Param1)));
}

// --- Words

const QString& AssignmentText::word(const char* key) {
  const auto [place, isNew] = mWords.try_emplace(key);
  if (isNew) place->second = localized(key);
  return place->second;
}

QString AssignmentText::stringForMouseButtonValue(int command) {
  if (command == static_cast<int>(AssignmentCommand::MouseButton5)) return word("lkeyDoubleClick");
  for (std::size_t tag = 0; tag < mouseButtonCommands.size(); ++tag) {
    if (static_cast<int>(mouseButtonCommands[tag]) == command) return word(mouseButtonNameKeys[tag]);
  }
  return {};
}

QString AssignmentText::keymapStringValueForMapValue(int keymap) {
  if (keymap == vorn::nextKeymap) return word(keymapCycleNameKey);
  if (keymap < 0 || keymap >= static_cast<int>(keymapNameKeys.size())) return {};
  return word(keymapNameKeys[static_cast<std::size_t>(keymap)]);
}

QString AssignmentText::namedKeymap(int keymap, const PropertyList& profile) {
  if (keymap < 0 || keymap >= static_cast<int>(keymapNameKeys.size())) return {};
  const QString number = localized(keymapNameKeys[static_cast<std::size_t>(keymap)]);
  const QString name = QString::fromStdString(profile[keys::KeymapNames].at(keymap).toString());
  return name.isEmpty() ? number : localized("lkeyKeymapNamed").arg(number, name);
}

QString AssignmentText::getStringForMouseButtonDefault(std::string_view button) {
  return stringForMouseButtonValue(defaultRecord(keys::Buttons, button)[keys::Command].toInt());
}

QString AssignmentText::getDefaultKeyForButton(std::string_view button, int forGroupType) {
  QString text;
  if (forGroupType == keysGroupType) {
    const PropertyList& record = defaultRecord(keys::Keys, button);
    const bool isDefault = vorn::commandOf(record) == AssignmentCommand::DefaultKey;
    if (isDefault && !checkForDiagonals(button)) text = keyText(record);
  } else if (forGroupType == buttonsGroupType) {
    text = QStringLiteral("Mouse: ") + getStringForMouseButtonDefault(button);
  }
  if (text.isEmpty()) return QLatin1String(plainDefaultTitle);
  defaultName = text;
  return text + QLatin1Char(' ');
}

QString AssignmentText::getMacroRepeatOptionUsingValue(int mode) {
  if (mode == vorn::repeatUntilPressedAgain) return QStringLiteral("Repeat Until Pressed Again");
  if (mode == vorn::repeatUntilReleased) return QStringLiteral("Repeat Until Released");
  if (mode > playOnce && mode <= mostRuns) return QStringLiteral("Repeat %1 Times").arg(mode);
  return QStringLiteral("Play Macro Once");
}

// --- Labels

QString AssignmentText::separatedLabel(const char* categoryKey, const QString& separator, const QString& target) {
  return word(categoryKey) + QLatin1Char(' ') + separator + QLatin1Char(' ') + target;
}

QString AssignmentText::titleOfCategory(AssignmentCategory category, std::string_view button, int forGroupType) {
  switch (category) {
    case AssignmentCategory::DefaultKey:
      return getDefaultKeyForButton(button, forGroupType) + QLatin1Char('(') + word("lkeyDefaultKey") +
             QLatin1Char(')');
    case AssignmentCategory::SingleKey: {
      const QString key = getHIDCodeAtButton(button, forGroupType);
      return separatedLabel("lkeySingleKey", singleKeyNameColon, key);
    }
    case AssignmentCategory::Macro: {
      const QString name = getMacroAssignedAtButton(button, forGroupType);
      return separatedLabel("lkeyMacro", macroNameColon, name);
    }
    case AssignmentCategory::Keymap:
      return word("lkeyKeyMap") + getKeyMapAssignedAtButton(button, forGroupType);
    case AssignmentCategory::MouseButton:
      return word("lkeyMouseButton") + getMouseButtonAssignedAtButton(button, forGroupType);
    case AssignmentCategory::Profile: {
      const QString name = getProfileAssignedAtButton(button, forGroupType);
      return separatedLabel("lkeyProfile", profileNameColon, name);
    }
    case AssignmentCategory::LaunchProgram:
      return word("lkeyLaunchProgram") + getApplicationNameAssignedAtButton(button, forGroupType);
    case AssignmentCategory::Disable:
      return word("lkeyDisable");
  }
  return {};
}

QStringList AssignmentText::shorterLabels(std::string_view button, int forGroupType) {
  const PropertyList& record = recordAt(button, forGroupType);
  const QString chord = vorn::commandOf(record) == AssignmentCommand::SingleKey ? chordText(record) : QString();
  if (chord.isEmpty()) return {};
  return {separatedLabel("lkeySingleKey", separatorBefore(chord), chord), chord};
}

bool AssignmentText::isDefaultAt(std::string_view button, int forGroupType) const {
  return isDefault(recordAt(button, forGroupType), button, forGroupType);
}

bool AssignmentText::isDefault(const PropertyList& record, std::string_view button, int forGroupType) const {
  return isFactory(record, defaultRecord(forGroupType == keysGroupType ? keys::Keys : keys::Buttons, button));
}

QString AssignmentText::mouseButtonLabel(int command) {
  return word("lkeyMouseButton") + withColon(stringForMouseButtonValue(command));
}

QString AssignmentText::stringForButtonValue(int command, std::string_view atButton, int forGroupType) {
  const auto title = [&](AssignmentCategory category) { return titleOfCategory(category, atButton, forGroupType); };
  for (const AssignmentCommand plain : plainCommands) {
    if (static_cast<int>(plain) == command) return word(commandNameKey(plain));
  }
  switch (static_cast<AssignmentCommand>(command)) {
    case AssignmentCommand::LeftClick:
    case AssignmentCommand::RightClick:
    case AssignmentCommand::MouseButton3:
    case AssignmentCommand::MouseButton4:
    case AssignmentCommand::MouseButton5:
    case AssignmentCommand::MouseButton6:
    case AssignmentCommand::MouseButton7:
    case AssignmentCommand::MouseButton8:
    case AssignmentCommand::DoubleClick:
    case AssignmentCommand::ScrollUp:
    case AssignmentCommand::ScrollDown:
      return title(AssignmentCategory::MouseButton);
    case AssignmentCommand::Macro:
      return title(AssignmentCategory::Macro);
    case AssignmentCommand::SingleKey:
      return title(AssignmentCategory::SingleKey);
    case AssignmentCommand::Profile:
      return title(AssignmentCategory::Profile);
    case AssignmentCommand::Disable:
      return title(AssignmentCategory::Disable);
    case AssignmentCommand::DefaultKey:
      return checkForDiagonals(atButton) ? QLatin1String(plainDefaultTitle) : title(AssignmentCategory::DefaultKey);
    case AssignmentCommand::LaunchProgram:
      return title(AssignmentCategory::LaunchProgram);
    case AssignmentCommand::TemporarySensitivity:
      return word("lkeyTemporaryDPISwitch");
    case AssignmentCommand::Keymap:
      return title(AssignmentCategory::Keymap);
    default:
      return {};
  }
}

int AssignmentText::intValueOfSelectedString(const QString& title, std::string_view atButton, int forGroupType) {
  const auto is = [&](AssignmentCategory category) {
    return title == titleOfCategory(category, atButton, forGroupType);
  };
  const auto plainCommand = [&](const auto& commands) {
    for (const AssignmentCommand plain : commands) {
      if (title == word(commandNameKey(plain))) return static_cast<int>(plain);
    }
    return 0;
  };
  // The order decides between equal titles.
  if (is(AssignmentCategory::MouseButton)) return static_cast<int>(AssignmentCommand::LeftClick);
  if (const int command = plainCommand(furtherMouseButtons)) return command;
  if (is(AssignmentCategory::Macro)) return static_cast<int>(AssignmentCommand::Macro);
  if (const int command = plainCommand(plainCommands)) return command;
  if (is(AssignmentCategory::SingleKey)) return static_cast<int>(AssignmentCommand::SingleKey);
  if (is(AssignmentCategory::Profile)) return static_cast<int>(AssignmentCommand::Profile);
  if (is(AssignmentCategory::Disable)) return static_cast<int>(AssignmentCommand::Disable);
  if (is(AssignmentCategory::DefaultKey) || title == QLatin1String(plainDefaultTitle))
    return static_cast<int>(AssignmentCommand::DefaultKey);
  if (is(AssignmentCategory::LaunchProgram)) return static_cast<int>(AssignmentCommand::LaunchProgram);
  if (is(AssignmentCategory::Keymap)) return static_cast<int>(AssignmentCommand::Keymap);
  return 0;
}

int AssignmentText::mouseButtonMappingValueForTagValue(int tag) {
  if (tag < 0 || tag >= static_cast<int>(mouseButtonCommands.size())) return 0;
  return static_cast<int>(mouseButtonCommands[static_cast<std::size_t>(tag)]);
}

int AssignmentText::tagOfAssignment(AssignmentCategory submenu, std::string_view button, int forGroupType) const {
  const PropertyList& record = recordAt(button, forGroupType);
  const AssignmentCommand command = vorn::commandOf(record);
  const std::int64_t target = record[keys::Param1].toInt();
  const auto tagOfTarget = [&](AssignmentCommand itsCommand) {
    return command == itsCommand && target >= 0 && target < INT_MAX ? static_cast<int>(target) + 1 : -1;
  };
  switch (submenu) {
    case AssignmentCategory::MouseButton: {
      const auto* const found = std::ranges::find(mouseButtonCommands, command);
      return found == mouseButtonCommands.end() ? -1 : static_cast<int>(found - mouseButtonCommands.begin());
    }
    case AssignmentCategory::Keymap:
      return command == AssignmentCommand::Keymap && target == vorn::nextKeymap
                 ? 0
                 : tagOfTarget(AssignmentCommand::Keymap);
    case AssignmentCategory::Macro:
      return tagOfTarget(AssignmentCommand::Macro);
    case AssignmentCategory::Profile:
      return tagOfTarget(AssignmentCommand::Profile);
    default:
      return -1;
  }
}

int AssignmentText::optionOfAssignment(std::string_view button, int forGroupType) const {
  return recordAt(button, forGroupType)[keys::Param2].toInt();
}

bool AssignmentText::checkForDiagonals(std::string_view button) {
  const int number = numberOfIdentifier(button);
  return std::ranges::any_of(vorn::controls, [number](const vorn::Control& control) {
    return control.family == ControlFamily::DirectionPad && control.code() == number;
  });
}

}  // namespace skarn
