#include "core-engine/play/AssignmentPlayer.h"

#include <algorithm>
#include <optional>
#include <utility>
#include <variant>

#include "core-engine/rules/BundleRules.h"
#include "core-engine/rules/SensitivityRules.h"
#include "model/Controls.h"
#include "model/HidUsages.h"
#include "model/SettingsKeys.h"

namespace vorn::engine {

namespace {

constexpr std::int32_t onTheFlyStep = 100;  // DPI

// The button that the command holds down; 0 for any other command. Browsers take button 4 for backward and button 5
// for forward.
hid::Usage buttonOf(AssignmentCommand command) {
  switch (command) {
    case AssignmentCommand::Backward:
      return 4;
    case AssignmentCommand::Forward:
      return 5;
    default:
      break;
  }
  const bool isButton = command >= AssignmentCommand::LeftClick && command <= AssignmentCommand::MouseButton8;
  return isButton ? static_cast<hid::Usage>(command) : hid::Usage{0};
}

PropertyList keymapSetting(const PropertyList& keymap) {
  return PropertyList::dictionary({{keys::KeymapID, keymap}});
}

}  // namespace

AssignmentPlayer::AssignmentPlayer(const EngineParts& parts, ProgramLauncher& launcher)
    : mParts(parts),
      mLauncher(launcher),
      mOutput([this](const OutputEvent& event) { send(event); }),
      mMacros(mParts.scheduler, mOutput) {}

void AssignmentPlayer::handle(const DeviceEvent& event) {
  mParts.profiles.takeBackReleased();
  // Where what was let go before is only now on its way to the disk.
  while (needsSettings(event) && mParts.store.isSaving()) mParts.store.settle();
  if (const auto* control = std::get_if<ControlChanged>(&event)) {
    control->isPressed ? press(control->control) : release(control->control);
  } else if (const auto* key = std::get_if<KeyChanged>(&event)) {
    mParts.heard.fromDevice(*key);
  } else if (std::holds_alternative<ConnectionChanged>(event)) {
    releaseAll();
  }
}

void AssignmentPlayer::send(const OutputEvent& event) {
  if (!mParts.device.isPresent()) return;
  mParts.device.emit(event);
  if (outputKey(event.usagePage, event.usage)) mParts.heard.played({event.usagePage, event.usage, event.value != 0});
}

void AssignmentPlayer::press(const std::string& control) {
  if (mPresses.contains(control)) return;
  const bool isTurning = turnsSensitivity(control);
  Press& made = *mPresses.emplace(control, std::make_unique<Press>(mOutput)).first->second;
  if (isTurning) {
    mParts.profiles.change(dpiStep(mParts.profiles.activeProfile(), control == wheelUp ? onTheFlyStep : -onTheFlyStep));
    return;
  }
  const PropertyList assignment = assignmentOf(control);
  made.command = commandOf(assignment);
  // The press that ends a macro does not start it again.
  const bool wasPlaying = mMacros.repeatModeOf(control) == repeatUntilPressedAgain;
  if (wasPlaying) mMacros.stop(control);
  if (wasPlaying && made.command == AssignmentCommand::Macro) return;
  carryOut(control, assignment, made);
}

void AssignmentPlayer::release(const std::string& control) {
  const auto found = mPresses.find(control);
  if (found == mPresses.end()) return;
  mPresses.erase(found);
  if (mMacros.repeatModeOf(control) == repeatUntilReleased) mMacros.stop(control);
  mParts.profiles.release(control);
}

void AssignmentPlayer::releaseAll() {
  mMacros.stopAll();
  while (!mPresses.empty()) release(std::string(mPresses.begin()->first));
}

// While a control for on-the-fly sensitivity is held, the wheel does nothing else.
bool AssignmentPlayer::turnsSensitivity(std::string_view control) const {
  if (!isWheelTurn(control)) return false;
  return std::any_of(mPresses.begin(), mPresses.end(),
                     [](const auto& entry) { return entry.second->command == AssignmentCommand::OnTheFlySensitivity; });
}

PropertyList AssignmentPlayer::assignmentOf(std::string_view control) const {
  if (control == keymapKey) return assignmentRecord(AssignmentCommand::Keymap, nextKeymap);
  if (control == stageUpKey) return assignmentRecord(AssignmentCommand::StageUp);
  if (control == stageDownKey) return assignmentRecord(AssignmentCommand::StageDown);
  // A mouse that nobody has settings for works as it left the factory.
  if (mParts.store.isEmpty()) return factoryAssignment(control);
  const Control* known = controlOf(control);
  const keys::Key group = known != nullptr ? known->group : keys::Keys;
  const PropertyList& assignment = mParts.profiles.activeProfile()[group][control];
  // A button of the mouse is no key and has no usage under "param1".
  if (group == keys::Buttons && commandOf(assignment) == AssignmentCommand::DefaultKey)
    return factoryAssignment(control);
  return assignment;
}

void AssignmentPlayer::carryOut(const std::string& control, const PropertyList& assignment, Press& press) {
  switch (press.command) {
    case AssignmentCommand::Macro:
      return playMacro(control, assignment);
    case AssignmentCommand::StageUp:
      return mParts.profiles.change(stageStep(mParts.profiles.activeProfile(), 1));
    case AssignmentCommand::StageDown:
      return mParts.profiles.change(stageStep(mParts.profiles.activeProfile(), -1));
    case AssignmentCommand::Profile:
      return mParts.profiles.switchTo(assignment[keys::Param1]);
    case AssignmentCommand::Keymap:
      return switchKeymap(control, assignment);
    case AssignmentCommand::TemporarySensitivity:
      return mParts.profiles.changeWhileHeld(control, slowestSensitivity(mParts.profiles.activeProfile()));
    case AssignmentCommand::LaunchProgram:
      return launch(assignment);
    default:
      return carryOutOutput(assignment, press);
  }
}

void AssignmentPlayer::carryOutOutput(const PropertyList& assignment, Press& press) {
  if (const hid::Usage button = buttonOf(press.command)) return press.hold.press({hid::buttonPage, button});
  switch (press.command) {
    case AssignmentCommand::DoubleClick: {
      const OutputKey leftButton{hid::buttonPage, hid::primaryButton};
      press.hold.press(leftButton);
      press.hold.release(leftButton);
      return press.hold.press(leftButton);
    }
    case AssignmentCommand::SingleKey:
      return pressKey(assignment[keys::Param1].toInt64(), assignment[keys::Param2].toInt64(), press.hold);
    case AssignmentCommand::ScrollUp:
      return mOutput.turnWheel(1);
    case AssignmentCommand::ScrollDown:
      return mOutput.turnWheel(-1);
    case AssignmentCommand::DefaultKey:
      return pressDefault(assignment[keys::Param1].toInt64(), press.hold);
    default:
      // Disabled, on-the-fly sensitivity, which acts through the wheel, or a command of nobody's.
      return;
  }
}

void AssignmentPlayer::pressKey(std::int64_t usage, std::int64_t modifiers, KeyHold& hold) {
  for (hid::Usage modifier = hid::firstModifier; modifier <= hid::lastModifier; ++modifier) {
    if ((modifiers >> (modifier - hid::firstModifier) & 1) != 0) hold.press({hid::keyboardPage, modifier});
  }
  if (const auto key = outputKey(hid::keyboardPage, usage)) hold.press(*key);
}

void AssignmentPlayer::pressDefault(std::int64_t code, KeyHold& hold) {
  const Control* diagonal = diagonalOf(code);
  if (diagonal == nullptr) return pressKey(code, 0, hold);
  for (const hid::Usage arrow : diagonal->arrows) hold.press({hid::keyboardPage, arrow});
}

void AssignmentPlayer::switchKeymap(const std::string& control, const PropertyList& assignment) {
  const PropertyList& target = assignment[keys::Param1];
  if (target.toInt() == nextKeymap) {
    const std::int32_t now = mParts.profiles.activeProfile()[keys::KeymapID].toInt();
    mParts.profiles.change(keymapSetting((now + 1) % static_cast<std::int32_t>(keys::keymapCount)));
  } else if (assignment[keys::Param2].toInt() == 1) {
    mParts.profiles.changeWhileHeld(control, keymapSetting(target));
  } else {
    mParts.profiles.change(keymapSetting(target));
  }
}

void AssignmentPlayer::playMacro(const std::string& control, const PropertyList& assignment) {
  const PropertyList& macro = mParts.store.bundle()[keys::Macros].at(assignment[keys::Param1].toInt());
  mMacros.start(control, macro[keys::Sequence][keys::Events], assignment[keys::Param2].toInt());
}

void AssignmentPlayer::launch(const PropertyList& assignment) {
  const std::string path = assignment[keys::Param1].toString();
  mLauncher.launch(path, [&log = mParts.log, path](const std::string& reason) {
    // Each program and each reason is a fault of its own.
    const std::string fault = "cannot launch " + path + ": " + reason;
    log.fault("the mouse", fault, fault);
  });
}

}  // namespace vorn::engine
