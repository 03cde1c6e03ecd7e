// The commands of vornctl, by area. Each checks its arguments, whose number the table has checked already, before it
// asks the engine for anything.
#pragma once

#include "ctl/Context.h"

namespace vorn::ctl {

Outcome status(Context& context, const Arguments& arguments);
Outcome monitor(Context& context, const Arguments& arguments);

Outcome listProfiles(Context& context, const Arguments& arguments);
Outcome switchProfile(Context& context, const Arguments& arguments);
Outcome addProfile(Context& context, const Arguments& arguments);
Outcome copyProfile(Context& context, const Arguments& arguments);
Outcome renameProfile(Context& context, const Arguments& arguments);
Outcome deleteProfile(Context& context, const Arguments& arguments);
Outcome compareProfiles(Context& context, const Arguments& arguments);
Outcome moveProfile(Context& context, const Arguments& arguments);
Outcome exportProfile(Context& context, const Arguments& arguments);
Outcome importProfile(Context& context, const Arguments& arguments);

Outcome getValue(Context& context, const Arguments& arguments);
Outcome setValue(Context& context, const Arguments& arguments);

Outcome listMacros(Context& context, const Arguments& arguments);
Outcome showMacro(Context& context, const Arguments& arguments);
Outcome recordMacro(Context& context, const Arguments& arguments);
Outcome renameMacro(Context& context, const Arguments& arguments);
Outcome deleteMacro(Context& context, const Arguments& arguments);
Outcome exportMacro(Context& context, const Arguments& arguments);
Outcome importMacro(Context& context, const Arguments& arguments);

Outcome assign(Context& context, const Arguments& arguments);
Outcome listAssignments(Context& context, const Arguments& arguments);
Outcome listKeys(Context& context, const Arguments& arguments);

Outcome listHistory(Context& context, const Arguments& arguments);
Outcome undoChange(Context& context, const Arguments& arguments);
Outcome redoChange(Context& context, const Arguments& arguments);
Outcome goToChange(Context& context, const Arguments& arguments);
Outcome listBackups(Context& context, const Arguments& arguments);
Outcome restoreBackup(Context& context, const Arguments& arguments);

Outcome listMice(Context& context, const Arguments& arguments);
Outcome useMouse(Context& context, const Arguments& arguments);
Outcome showMouse(Context& context, const Arguments& arguments);
Outcome teachMouse(Context& context, const Arguments& arguments);
Outcome forgetTaught(Context& context, const Arguments& arguments);
Outcome setResolution(Context& context, const Arguments& arguments);
Outcome doctor(Context& context, const Arguments& arguments);

Outcome complete(Context& context, const Arguments& arguments);
Outcome showFocus(Context& context, const Arguments& arguments);

Outcome plugDevice(Context& context, const Arguments& arguments);
Outcome unplugDevice(Context& context, const Arguments& arguments);
Outcome pressControl(Context& context, const Arguments& arguments);
Outcome releaseControl(Context& context, const Arguments& arguments);
Outcome clickControl(Context& context, const Arguments& arguments);
Outcome typeKey(Context& context, const Arguments& arguments);
Outcome setBattery(Context& context, const Arguments& arguments);
Outcome setCharging(Context& context, const Arguments& arguments);
Outcome setFirmware(Context& context, const Arguments& arguments);
Outcome deviceState(Context& context, const Arguments& arguments);
Outcome deviceOutput(Context& context, const Arguments& arguments);

}  // namespace vorn::ctl
