#include "platform/AssignmentWords.h"

#include <QStringList>
#include <cstdint>
#include <string>

#include "model/HidUsages.h"
#include "model/SettingsKeys.h"
#include "platform/Localization.h"
#include "platform/SettingsText.h"
#include "platform/ShownName.h"

namespace skarn {

using vorn::AssignmentCommand;
using vorn::PropertyList;
namespace keys = vorn::keys;

namespace {

// By the bits of the modifier byte.
constexpr std::array<const char*, 8> shortModifierNames = {"Ctrl",       "Shift",       "Alt",       "Cmd",
                                                           "Right Ctrl", "Right Shift", "Right Alt", "Right Cmd"};

// The record that the assignment points at, by its name, else by its number.
QString targetWords(const char* knownKey, const char* unknownKey, const PropertyList& records, keys::Key nameKey,
                    std::int64_t position) {
  const PropertyList& record = records.at(position);
  if (record.isNone()) return localized(unknownKey).arg(position + 1);
  return localized(knownKey).arg(shownName(textOf(record, nameKey)));
}

QString keyWords(const PropertyList& record) {
  const QString chord = chordText(record);
  if (!chord.isEmpty()) return chord;
  return QString::fromStdString(std::string(vorn::hid::keyName(record[keys::Param1].toInt64())));
}

QString macroWords(const PropertyList& record, const PropertyList& macros) {
  const QString macro =
      targetWords("lkeyMacroNamed", "lkeyMacroNumbered", macros, keys::MacroName, record[keys::Param1].toInt64());
  const std::int64_t mode = record[keys::Param2].toInt64();
  if (mode == vorn::repeatUntilPressedAgain) return localized("lkeyUntilPressedAgain").arg(macro);
  if (mode == vorn::repeatUntilReleased) return localized("lkeyUntilReleased").arg(macro);
  return mode > 1 && mode <= 10 ? localized("lkeySoManyTimes").arg(macro, QString::number(mode)) : macro;
}

QString keymapWords(const PropertyList& record) {
  const std::int64_t keymap = record[keys::Param1].toInt64();
  if (keymap == vorn::nextKeymap) return localized("lkeyKeymapsCycle");
  const QString words = localized("lkeyKeymapNumbered").arg(keymap + 1);
  return record[keys::Param2].toInt() == 1 ? localized("lkeyUntilReleased").arg(words) : words;
}

}  // namespace

QString controlWords(const vorn::Control& control) {
  const char* key = controlNameKeys[static_cast<std::size_t>(control.number) - 1];
  return QStringLiteral("%1 (%2)").arg(QString::number(control.number), localized(key));
}

const char* commandNameKey(AssignmentCommand command) {
  switch (command) {
    case AssignmentCommand::LeftClick:
      return "lkeyLeftClick";
    case AssignmentCommand::RightClick:
      return "lkeyRightClick";
    case AssignmentCommand::MouseButton3:
      return "lkeyMouseButtonThree";
    case AssignmentCommand::MouseButton4:
      return "lkeyMouseButtonFour";
    case AssignmentCommand::MouseButton5:
      return "lkeyMouseButtonFive";
    case AssignmentCommand::MouseButton6:
      return "lkeyMouseButtonSix";
    case AssignmentCommand::MouseButton7:
      return "lkeyMouseButtonSeven";
    case AssignmentCommand::MouseButton8:
      return "lkeyMouseButtonEight";
    case AssignmentCommand::DoubleClick:
      return "lkeyDoubleClick";
    case AssignmentCommand::StageUp:
      return "lkeySensitivityStageUp";
    case AssignmentCommand::StageDown:
      return "lkeySensitivityStageDown";
    case AssignmentCommand::Forward:
      return "lkeyForward";
    case AssignmentCommand::Backward:
      return "lkeyBackward";
    case AssignmentCommand::OnTheFlySensitivity:
      return "lkeyOnTheFlySensitivity";
    case AssignmentCommand::ScrollUp:
      return "lkeyScrollUp";
    case AssignmentCommand::ScrollDown:
      return "lkeyScrollDown";
    case AssignmentCommand::Disable:
      return "lkeyDisable";
    case AssignmentCommand::TemporarySensitivity:
      return "lkeyTemporaryDPISwitch";
    default:
      return nullptr;
  }
}

QString chordText(const PropertyList& record) {
  const auto modifiers = static_cast<std::uint8_t>(record[keys::Param2].toInt());
  if (modifiers == 0) return {};
  QStringList parts;
  for (std::size_t bit = 0; bit < shortModifierNames.size(); ++bit) {
    if ((modifiers >> bit & 1) != 0) parts << QLatin1String(shortModifierNames[bit]);
  }
  const std::int64_t key = record[keys::Param1].toInt();
  const bool isModifierAlone = key >= 0 && key < vorn::hid::firstKey;
  if (!isModifierAlone) parts << QString::fromStdString(std::string(vorn::hid::keyName(key)));
  return parts.join(QLatin1Char('+'));
}

QString applicationName(QString path) {
  while (path.endsWith(QLatin1Char('/'))) path.chop(1);
  const QString name = path.mid(path.lastIndexOf(QLatin1Char('/')) + 1);
  const auto dot = name.lastIndexOf(QLatin1Char('.'));
  return dot > 0 ? name.left(dot) : name;
}

QString assignmentWords(const PropertyList& record, const vorn::Control& control, const PropertyList& bundle) {
  if (!record.isDictionary() || vorn::isFactoryAssignment(record, control)) return localized("lkeyDefaultKey");
  switch (vorn::commandOf(record)) {
    case AssignmentCommand::SingleKey:
      return keyWords(record);
    case AssignmentCommand::DefaultKey:
      return keyWords(record.without(keys::Param2));
    case AssignmentCommand::Macro:
      return macroWords(record, bundle[keys::Macros]);
    case AssignmentCommand::Profile:
      return targetWords("lkeyProfileNamed", "lkeyProfileNumbered", bundle[keys::Profiles], keys::ProfileName,
                         record[keys::Param1].toInt64());
    case AssignmentCommand::Keymap:
      return keymapWords(record);
    case AssignmentCommand::LaunchProgram:
      return localized("lkeyLaunches").arg(shownName(applicationName(textOf(record, keys::Param1))));
    default:
      break;
  }
  const char* key = commandNameKey(vorn::commandOf(record));
  return key ? localized(key) : localized("lkeyUnknownAssignment");
}

}  // namespace skarn
