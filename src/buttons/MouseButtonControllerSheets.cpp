// The sheets of the Buttons tab: single key, application, keymap, and the repeat mode of a macro.
#include <array>
#include <vector>

#include "buttons/AssignmentChanges.h"
#include "buttons/ControlRow.h"
#include "buttons/KeymapSheet.h"
#include "buttons/MacroRepeatSheet.h"
#include "buttons/MouseButtonController.h"
#include "buttons/SingleKeySheet.h"
#include "model/eventParser.h"
#include "platform/ApplicationInfo.h"
#include "platform/ApplicationPanel.h"
#include "platform/Localization.h"
#include "platform/SettingsText.h"
#include "protocol/EngineProtocol.h"
#include "widgets/Alert.h"

namespace skarn {

using vorn::AssignmentCommand;
using vorn::PropertyList;
namespace keys = vorn::keys;

namespace {

constexpr const char* applicationFolder = "/Applications/";
constexpr const char* applicationType = "app";

struct RepeatMode {
  const char* nameKey;
  int value;
};

// In the order of the list. The directions of the wheel are never held: the open-ended modes are not for them.
constexpr std::array<RepeatMode, 12> repeatModes = {{{"lkeyPlayMacroOnce", playOnce},
                                                     {"lkeyRepeatUntilReleased", vorn::repeatUntilReleased},
                                                     {"lkeyRepeatUntilPressedAgain", vorn::repeatUntilPressedAgain},
                                                     {"lkeyRepeat2Times", 2},
                                                     {"lkeyRepeat3Times", 3},
                                                     {"lkeyRepeat4Times", 4},
                                                     {"lkeyRepeat5Times", 5},
                                                     {"lkeyRepeat6Times", 6},
                                                     {"lkeyRepeat7Times", 7},
                                                     {"lkeyRepeat8Times", 8},
                                                     {"lkeyRepeat9Times", 9},
                                                     {"lkeyRepeat10Times", mostRuns}}};

std::vector<RepeatMode> repeatModesFor(bool isScrollVariant) {
  std::vector<RepeatMode> modes;
  for (const RepeatMode& mode : repeatModes) {
    const bool isOpenEnded = mode.value == vorn::repeatUntilReleased || mode.value == vorn::repeatUntilPressedAgain;
    if (!isScrollVariant || !isOpenEnded) modes.push_back(mode);
  }
  return modes;
}

}  // namespace

QWidget* MouseButtonController::sheetWindow() {
  return buttonWindow ? buttonWindow.data() : window();
}

QString MouseButtonController::controlName(const SheetContext& context) const {
  for (const ControlDescriptor& control : controlTable) {
    if (control.groupIdentifier() == context.identifier && control.identifier == context.button)
      return spokenName(control);
  }
  return {};
}

void MouseButtonController::sheetDidEnd(const SheetContext& context) {
  if (mIsCancelSingleKey || mIsCancelKeymap) return;
  if (context.mapping == AssignmentCommand::SingleKey) {
    changeButton(context.button, static_cast<int>(context.mapping), singleKeyHIDCode, singleKeyModifier,
                 context.identifier);
    return;
  }
  getKeymapOptionValue();
  if (keymapOptionValue == vorn::nextKeymap) {
    changeKeymapsKeymapCycleMappingForButton(context.button, context.identifier);
  } else {
    changeButton(context.button, static_cast<int>(context.mapping), keymapOptionValue,
                 keymapSheet().isSwitchBack() ? 1 : 0, context.identifier);
  }
}

// --- Single key

void MouseButtonController::openSingleKeySheet(const SheetContext& context) {
  if (!mSingleKey) {
    mSingleKey = new SingleKeySheet(sheetWindow());
    connect(mSingleKey, &AssignmentSheet::okClicked, this, &MouseButtonController::clickSingleKeyOK);
    connect(mSingleKey, &AssignmentSheet::cancelClicked, this, &MouseButtonController::clickSingleKeyCancel);
    connect(mSingleKey, &QDialog::finished, this, [this] { sheetDidEnd(mSingleKeyContext); });
  }
  mSingleKeyContext = context;
  mSingleKey->begin(controlName(context));
  if (buttonDelegate != nullptr) buttonDelegate->startSingleKeyRecording();
}

void MouseButtonController::singleKeyEvents(const vorn::Notification& notification) {
  if (!notification.userInfo.isDictionary()) return;
  const int key = notification.userInfo[vorn::newsKeys::SingleKey].toInt();
  const bool isShown = mSingleKey && mSingleKey->isVisible();
  if (isShown && !mSingleKey->takesKey(key)) return;
  singleKeyHIDCode = key;
  singleKeyModifier = notification.userInfo[vorn::newsKeys::SingleKeyModif].toInt();
  if (!isShown) return;
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
      const PropertyList group =
          withAssignment(groupToChange(context.identifier), context.button,
                         static_cast<int>(AssignmentCommand::LaunchProgram), program.toStdString(), "");
      send(PropertyList::dictionary({{groupKeyOf(context.identifier), group}, {keys::KeymapID, mActiveKeymap}}));
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
  const int index = getIndexValueOfAssignedKeyMapForButton(context.button, context.identifier);
  checkForScrollUpDownButton(context.button);
  sheet.selectTarget(index);
  getKeymapOptionValue();
  sheet.setSwitchBack(keymapSwitchOptionValue != 0);
  updateStateOfKeyMapSwitchOptionButton();
  mKeymapContext = context;
  sheet.begin(controlName(context));
}

KeymapSheet& MouseButtonController::keymapSheet() {
  if (!mKeymapWindow) {
    mKeymapWindow = new KeymapSheet(sheetWindow());
    connect(mKeymapWindow, &AssignmentSheet::okClicked, this, &MouseButtonController::clickKeymapOK);
    connect(mKeymapWindow, &AssignmentSheet::cancelClicked, this, &MouseButtonController::clickKeymapCancel);
    connect(mKeymapWindow, &QDialog::finished, this, [this] { sheetDidEnd(mKeymapContext); });
    connect(mKeymapWindow, &KeymapSheet::targetChosen, this, [this] {
      getKeymapOptionValue();
      updateStateOfKeyMapSwitchOptionButton();
    });
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
  for (const RepeatMode& mode : repeatModesFor(isScrollVariant)) titles << localized(mode.nameKey);
  repeatSheet().setModes(titles);
}

int MouseButtonController::getIntValueOfMacroRepeatOptionUsingValue(int index) const {
  const std::vector<RepeatMode> modes = repeatModesFor(isScrollWheelMacroRepeatOption);
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
  sheet.begin(controlName({mButtonSelectedIdentifier, mButtonSelected, AssignmentCommand::Macro}),
              macroName(mParamOne));
}

void MouseButtonController::clickMacroPlayback() {
  MacroRepeatSheet& sheet = repeatSheet();
  sheet.showCurrentMode(getMacroRepeatOptionUsingValue(getIntValueOfMacroRepeatOptionUsingValue(sheet.selectedMode())));
}

void MouseButtonController::clickMacroRepeatOK() {
  MacroRepeatSheet& sheet = repeatSheet();
  if (!sheet.isVisible()) return;
  sheet.end();
  changeButton(mButtonSelected, static_cast<int>(AssignmentCommand::Macro), mParamOne,
               getIntValueOfMacroRepeatOptionUsingValue(sheet.selectedMode()), mButtonSelectedIdentifier);
  isScrollWheelMacroRepeatOption = false;
}

void MouseButtonController::clickMacroRepeatCancel() {
  if (!repeatSheet().isVisible()) return;
  repeatSheet().end();
  populateMacroRepeatOptions(false);
  isScrollWheelMacroRepeatOption = false;
}

}  // namespace skarn
