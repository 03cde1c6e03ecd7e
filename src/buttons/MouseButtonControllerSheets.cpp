// The sheets of the Buttons tab: single key, application, keymap, and the repeat mode of a macro.
#include <array>
#include <vector>

#include "buttons/AssignmentChanges.h"
#include "buttons/ControlRow.h"
#include "buttons/KeymapSheet.h"
#include "buttons/MacroRepeatSheet.h"
#include "buttons/MouseButtonController.h"
#include "buttons/RepeatModes.h"
#include "buttons/SingleKeySheet.h"
#include "model/HidUsages.h"
#include "model/eventParser.h"
#include "platform/ApplicationInfo.h"
#include "platform/ApplicationPanel.h"
#include "platform/GoneAlert.h"
#include "platform/Localization.h"
#include "platform/SettingsText.h"
#include "platform/ShownName.h"
#include "protocol/EngineProtocol.h"
#include "widgets/Alert.h"

namespace skarn {

using vorn::AssignmentCommand;
using vorn::PropertyList;
namespace keys = vorn::keys;

namespace {

constexpr const char* applicationFolder = "/Applications/";
constexpr const char* applicationType = "app";

}  // namespace

void MouseButtonController::tellGone(const vorn::RememberedRecord& record) {
  showGoneAlert(sheetWindow(), QString::fromStdString(record.name()));
  updateUISettings();
}

void MouseButtonController::sheetDidEnd(const SheetContext& context) {
  if (mIsCancelSingleKey || mIsCancelKeymap) return;
  const int command = static_cast<int>(context.mapping);
  if (context.mapping == AssignmentCommand::SingleKey) {
    assign(context, command, singleKeyHIDCode, singleKeyModifier);
    return;
  }
  getKeymapOptionValue();
  if (keymapOptionValue == vorn::nextKeymap) {
    assignCycle(context);
  } else {
    assign(context, command, keymapOptionValue, keymapSheet().isSwitchBack() ? 1 : 0);
  }
}

// --- Single key

void MouseButtonController::openSingleKeySheet(const SheetContext& context) {
  if (!mSingleKey) {
    mSingleKey = new SingleKeySheet(sheetWindow());
    connect(mSingleKey, &AssignmentSheet::okClicked, this, &MouseButtonController::clickSingleKeyOK);
    connect(mSingleKey, &AssignmentSheet::cancelClicked, this, &MouseButtonController::clickSingleKeyCancel);
    connect(mSingleKey, &SingleKeySheet::keyChosen, this, [this](int usage, int modifiers) {
      // A modifier alone is told by its bit.
      const bool isModifier = usage >= vorn::hid::firstModifier;
      takeCaughtKey(isModifier ? 0 : usage,
                    isModifier ? modifiers | 1 << (usage - vorn::hid::firstModifier) : modifiers);
    });
    connect(mSingleKey, &QDialog::finished, this, [this] { sheetDidEnd(mSingleKeyContext); });
  }
  mSingleKeyContext = context;
  mSingleKey->begin(subjectOf(context));
  if (buttonDelegate != nullptr) buttonDelegate->startSingleKeyRecording();
}

void MouseButtonController::singleKeyEvents(const vorn::Notification& notification) {
  if (!notification.userInfo.isDictionary()) return;
  const int key = notification.userInfo[vorn::newsKeys::SingleKey].toInt();
  takeCaughtKey(key, notification.userInfo[vorn::newsKeys::SingleKeyModif].toInt());
}

void MouseButtonController::takeCaughtKey(int usage, int modifiers) {
  singleKeyHIDCode = usage;
  singleKeyModifier = modifiers;
  if (!mSingleKey || !mSingleKey->isVisible()) return;
  mSingleKey->showKey(QString::fromStdString(vorn::eventParser::getStringWithHID(singleKeyHIDCode, singleKeyModifier)));
}

void MouseButtonController::clickSingleKeyOK() {
  if (!mSingleKey || !mSingleKey->isVisible()) return;
  mSingleKey->hide();
  if (buttonDelegate != nullptr) buttonDelegate->stopSingleKeyRecording();
  mSingleKey->end();
}

void MouseButtonController::clickSingleKeyCancel() {
  if (!mSingleKey || !mSingleKey->isVisible()) return;
  mIsCancelSingleKey = true;
  mSingleKey->end();
  if (buttonDelegate != nullptr) buttonDelegate->stopSingleKeyRecording();
  mIsCancelSingleKey = false;
  updateUISettings();
}

// --- Application

void MouseButtonController::openApplicationPanel(const SheetContext& context) {
  delete mApplicationPanel;
  mApplicationPanel = ApplicationPanel::open(sheetWindow(), QStringLiteral("mOpenPanel"),
                                             {QLatin1String(applicationType)}, QLatin1String(applicationFolder),
                                             [tab = QPointer(this), context](int returnCode, const QString& path) {
                                               if (tab) tab->openPanelDidEnd(returnCode, path, context);
                                             });
}

void MouseButtonController::openPanelDidEnd(int returnCode, const QString& path, const SheetContext& context) {
  if (returnCode == FilePanel::okButton && isGroupIdentifier(context.identifier)) {
    const QString program = textOf(ApplicationInfo::infoDictionary(path), ApplicationInfo::resolvedPathKey);
    if (!program.isEmpty()) {
      assign(context, static_cast<int>(AssignmentCommand::LaunchProgram), program.toStdString(), "");
      return;
    }
    Alert::show(sheetWindow(), localized("lkeyNoApplicationTitle"), localized("lkeyNoApplicationDesc"),
                {localized("lkeyOK")});
  }
  updateUISettings();
}

// --- Keymap

void MouseButtonController::openKeymapSheet(const SheetContext& context) {
  KeymapSheet& sheet = keymapSheet();
  isScrollUpDown = false;
  keymapSwitchOptionValue = 0;
  QStringList names;
  for (int keymap = 0; keymap < static_cast<int>(keys::keymapCount); ++keymap) names << namedKeymap(keymap);
  sheet.setKeymapNames(names);
  const int index = getIndexValueOfAssignedKeyMapForButton(context.button, context.identifier);
  checkForScrollUpDownButton(context.button);
  sheet.selectTarget(index);
  getKeymapOptionValue();
  sheet.setSwitchBack(keymapSwitchOptionValue != 0);
  updateStateOfKeyMapSwitchOptionButton();
  mKeymapContext = context;
  explainKeymapOK();
  sheet.begin(subjectOf(context));
}

void MouseButtonController::explainKeymapOK() {
  const std::optional<int> place = placeOf(mKeymapContext);
  const PropertyList record = place ? groupOf(mKeymapContext, *place)[mKeymapContext.button] : PropertyList();
  const bool isCycle = keymapOptionValue == vorn::nextKeymap;
  const Assignment chosen{static_cast<int>(AssignmentCommand::Keymap), keymapOptionValue,
                          !isCycle && keymapSheet().isSwitchBack() ? 1 : 0};
  // A cycle goes into every keymap.
  const PropertyList keymaps = !place                            ? PropertyList()
                               : isShown(mKeymapContext, *place) ? mAllKeymaps
                                                                 : allProfiles.at(*place)[keys::Keymap];
  const bool isEverywhere =
      !isCycle || keymapsWithCycle(keymaps, groupKeyOf(mKeymapContext.identifier), mKeymapContext.button) == keymaps;
  const bool changesNothing = chosen == assignmentOf(record) && isEverywhere;
  keymapSheet().explainOK(changesNothing ? localized("lkeyProblemNoChange") : QString());
}

KeymapSheet& MouseButtonController::keymapSheet() {
  if (!mKeymapWindow) {
    mKeymapWindow = new KeymapSheet(sheetWindow());
    connect(mKeymapWindow, &AssignmentSheet::okClicked, this, &MouseButtonController::clickKeymapOK);
    connect(mKeymapWindow, &AssignmentSheet::cancelClicked, this, &MouseButtonController::clickKeymapCancel);
    connect(mKeymapWindow, &QDialog::finished, this, [this] {
      isScrollUpDown = false;
      sheetDidEnd(mKeymapContext);
    });
    connect(mKeymapWindow, &KeymapSheet::targetChosen, this, [this] {
      getKeymapOptionValue();
      updateStateOfKeyMapSwitchOptionButton();
      explainKeymapOK();
    });
    connect(mKeymapWindow, &KeymapSheet::switchBackToggled, this, &MouseButtonController::explainKeymapOK);
  }
  return *mKeymapWindow;
}

void MouseButtonController::getKeymapOptionValue() {
  const int tag = keymapSheet().tagOfSelectedTarget();
  keymapOptionValue = tag == 0 ? vorn::nextKeymap : tag - 1;
}

int MouseButtonController::getIndexValueOfAssignedKeyMapForButton(std::string_view button, int withIdentifier) {
  if (allProfiles.isEmpty() || !isGroupIdentifier(withIdentifier)) return 0;
  const PropertyList& record = (withIdentifier == buttonsGroupIdentifier ? mButtonsDict : mKeysDict)[button];
  if (vorn::commandOf(record) != AssignmentCommand::Keymap) return 0;
  keymapSwitchOptionValue = record[keys::Param2].toInt();
  const int target = record[keys::Param1].toInt();
  // Keymap 0 opens with the cycle selected, as does a target that is no keymap.
  const bool isKeymap = target >= 0 && target < static_cast<int>(keys::keymapCount);
  return isKeymap && target != 0 ? target + 1 : 0;
}

void MouseButtonController::updateStateOfKeyMapSwitchOptionButton() {
  const bool isCycle = keymapOptionValue == vorn::nextKeymap;
  keymapSheet().setSwitchBackEnabled(!isCycle && !isScrollUpDown,
                                     localized(isScrollUpDown ? "lkeyNoSwitchBackWheel" : "lkeyNoSwitchBackCycle"));
}

void MouseButtonController::checkForScrollUpDownButton(std::string_view button) {
  if (vorn::isWheelTurn(button)) isScrollUpDown = true;
}

void MouseButtonController::clickKeymapOK() {
  if (mKeymapWindow && mKeymapWindow->isVisible()) mKeymapWindow->end();
}

void MouseButtonController::clickKeymapCancel() {
  if (!mKeymapWindow || !mKeymapWindow->isVisible()) return;
  mIsCancelKeymap = true;
  mKeymapWindow->end();
  updateUISettings();
  mIsCancelKeymap = false;
}

// --- Repeat mode

MacroRepeatSheet& MouseButtonController::repeatSheet() {
  if (!mMacroRepeatWindow) {
    mMacroRepeatWindow = new MacroRepeatSheet(sheetWindow());
    connect(mMacroRepeatWindow, &AssignmentSheet::okClicked, this, &MouseButtonController::clickMacroRepeatOK);
    connect(mMacroRepeatWindow, &AssignmentSheet::cancelClicked, this, &MouseButtonController::clickMacroRepeatCancel);
    connect(mMacroRepeatWindow, &MacroRepeatSheet::modeChosen, this, &MouseButtonController::clickMacroPlayback);
    populateMacroRepeatOptions(false);
  }
  return *mMacroRepeatWindow;
}

void MouseButtonController::populateMacroRepeatOptions(bool isScrollVariant) {
  QStringList titles;
  for (const RepeatMode& mode : repeatModes(isScrollVariant)) titles << localized(mode.nameKey);
  repeatSheet().setModes(titles);
}

int MouseButtonController::getIntValueOfMacroRepeatOptionUsingValue(int index) const {
  const std::vector<RepeatMode> modes = repeatModes(isScrollWheelMacroRepeatOption);
  const bool isMode = index >= 0 && index < static_cast<int>(modes.size());
  return isMode ? modes[static_cast<std::size_t>(index)].value : playOnce;
}

void MouseButtonController::clickMacroRepeatButton(const ControlDescriptor& control) {
  MacroRepeatSheet& sheet = repeatSheet();
  if (vorn::isWheelTurn(control.identifier)) {
    populateMacroRepeatOptions(true);
    isScrollWheelMacroRepeatOption = true;
  }
  const PropertyList& record = recordAt(control.identifier, control.groupType());
  mButtonSelected = control.identifier;
  mButtonSelectedIdentifier = control.groupIdentifier();
  mParamOne = record[keys::Param1].toInt();
  const QString mode = getMacroRepeatOptionUsingValue(record[keys::Param2].toInt());
  sheet.showCurrentMode(mode);
  sheet.selectMode(mode);
  mRepeatContext = contextOf(mButtonSelected, mButtonSelectedIdentifier, AssignmentCommand::Macro);
  mRepeatMacro.reset();
  if (allMacros.at(mParamOne).isDictionary()) mRepeatMacro.emplace(allMacros, mParamOne, keys::MacroName);
  explainRepeatOK();
  sheet.begin(subjectOf(mRepeatContext), macroName(mParamOne));
}

void MouseButtonController::explainRepeatOK() {
  const std::optional<int> place = placeOf(mRepeatContext);
  const PropertyList record = place ? groupOf(mRepeatContext, *place)[mButtonSelected] : PropertyList();
  const int mode = getIntValueOfMacroRepeatOptionUsingValue(repeatSheet().selectedMode());
  const Assignment chosen{static_cast<int>(AssignmentCommand::Macro), mParamOne, mode};
  repeatSheet().explainOK(chosen == assignmentOf(record) ? localized("lkeyProblemNoChange") : QString());
}

void MouseButtonController::clickMacroPlayback() {
  MacroRepeatSheet& sheet = repeatSheet();
  sheet.showCurrentMode(getMacroRepeatOptionUsingValue(getIntValueOfMacroRepeatOptionUsingValue(sheet.selectedMode())));
  explainRepeatOK();
}

void MouseButtonController::clickMacroRepeatOK() {
  MacroRepeatSheet& sheet = repeatSheet();
  if (!sheet.isVisible()) return;
  sheet.end();
  writeRepeatMode(getIntValueOfMacroRepeatOptionUsingValue(sheet.selectedMode()));
  isScrollWheelMacroRepeatOption = false;
}

void MouseButtonController::writeRepeatMode(int mode) {
  const std::optional<int> place = placeOf(mRepeatContext);
  if (!place) {
    tellGone(*mRepeatContext.profile);
    return;
  }
  if (mRepeatMacro) {
    const auto macro = mRepeatMacro->placeIn(allMacros);
    if (!macro) {
      tellGone(*mRepeatMacro);
      return;
    }
    mParamOne = static_cast<int>(*macro);
    const PropertyList& record = groupOf(mRepeatContext, *place)[mButtonSelected];
    if (vorn::commandOf(record) != AssignmentCommand::Macro || record[keys::Param1].toInt() != mParamOne) {
      const QString name = shownName(QString::fromStdString(mRepeatMacro->name()));
      Alert::show(sheetWindow(), localized("lkeyAssignmentGoneTitle").arg(controlName(mRepeatContext), name),
                  localized("lkeyAssignmentGoneDesc"), {localized("lkeyOK")});
      updateUISettings();
      return;
    }
  }
  assign(mRepeatContext, static_cast<int>(AssignmentCommand::Macro), mParamOne, mode);
}

void MouseButtonController::clickMacroRepeatCancel() {
  if (!repeatSheet().isVisible()) return;
  repeatSheet().end();
  populateMacroRepeatOptions(false);
  isScrollWheelMacroRepeatOption = false;
}

}  // namespace skarn
