<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="en">
<context>
    <name></name>
    <message id="lkey1000Hz">
        <source>1000 Hz</source>
        <translation>1000 Hz</translation>
    </message>
    <message id="lkey125Hz">
        <source>125 Hz</source>
        <translation>125 Hz</translation>
    </message>
    <message id="lkey500Hz">
        <source>500 Hz</source>
        <translation>500 Hz</translation>
    </message>
    <message id="lkeyAcceleration">
        <source>Acceleration</source>
        <translation>Acceleration</translation>
    </message>
    <message id="lkeyAccelerationLevel">
        <source>Acceleration level</source>
        <translation>Acceleration level</translation>
    </message>
    <message id="lkeyAccelerationOff">
        <source>Acceleration is off.</source>
        <translation>Acceleration is off.</translation>
    </message>
    <message id="lkeyActiveProfile">
        <source>Active profile</source>
        <translation>Active profile</translation>
    </message>
    <message id="lkeyAddDelayTitle">
        <source>Insert a Delay</source>
        <translation>Insert a Delay</translation>
    </message>
    <message id="lkeyAddFailedTitle">
        <source>“%1” could not be added</source>
        <translation>“%1” could not be added</translation>
    </message>
    <message id="lkeyAddStage">
        <source>Add Stage</source>
        <translation>Add Stage</translation>
    </message>
    <message id="lkeyAgain">
        <source>Again</source>
        <translation>Again</translation>
    </message>
    <message id="lkeyAgainHint">
        <source>Press another key instead</source>
        <translation>Press another key instead</translation>
    </message>
    <message id="lkeyAllFiles">
        <source>All files (%1)</source>
        <translation>All files (%1)</translation>
    </message>
    <message id="lkeyAppendRecording">
        <source>Record more at the end</source>
        <translation>Record more at the end</translation>
    </message>
    <message id="lkeyApplicationFiles">
        <source>Applications (%1)</source>
        <translation>Applications (%1)</translation>
    </message>
    <message id="lkeyApplicationName">
        <source>Skarn</source>
        <translation>Skarn</translation>
    </message>
    <message id="lkeyApply">
        <source>Apply</source>
        <translation>Apply</translation>
    </message>
    <message id="lkeyApplyNoEngineTip">
        <source>No core engine runs: there is nobody to store it</source>
        <translation>No core engine runs: there is nobody to store it</translation>
    </message>
    <message id="lkeyApplyTip">
        <source>Store the light's on/off box in the first profile</source>
        <translation>Store the light's on/off box in the first profile</translation>
    </message>
    <message id="lkeyAssignApplication">
        <source>Assign Application…</source>
        <translation>Assign Application…</translation>
    </message>
    <message id="lkeyAssignmentGoneDesc">
        <source>It was given something else to do meanwhile, by another program or on the mouse. Nothing was changed.</source>
        <translation>It was given something else to do meanwhile, by another program or on the mouse. Nothing was changed.</translation>
    </message>
    <message id="lkeyAssignmentGoneTitle">
        <source>%1 no longer plays “%2”</source>
        <translation>%1 no longer plays “%2”</translation>
    </message>
    <message id="lkeyAxesLocked">
        <source>X and Y are locked together. Tick “Independent X and Y” to set Y on its own.</source>
        <translation>X and Y are locked together. Tick “Independent X and Y” to set Y on its own.</translation>
    </message>
    <message id="lkeyBackward">
        <source>Backward</source>
        <translation>Backward</translation>
    </message>
    <message id="lkeyBattery">
        <source>Battery</source>
        <translation>Battery</translation>
    </message>
    <message id="lkeyBatteryCharging">
        <source>Battery charging</source>
        <translation>Battery charging</translation>
    </message>
    <message id="lkeyBatteryChargingPercent">
        <source>Battery charging, %1 percent</source>
        <translation>Battery charging, %1 percent</translation>
    </message>
    <message id="lkeyBatteryPercent">
        <source>Battery at %1 percent</source>
        <translation>Battery at %1 percent</translation>
    </message>
    <message id="lkeyBrightness">
        <source>Brightness</source>
        <translation>Brightness</translation>
    </message>
    <message id="lkeyBrightnessBright">
        <source>Bright</source>
        <translation>Bright</translation>
    </message>
    <message id="lkeyBrightnessDim">
        <source>Dim</source>
        <translation>Dim</translation>
    </message>
    <message id="lkeyBrightnessNormal">
        <source>Normal</source>
        <translation>Normal</translation>
    </message>
    <message id="lkeyBrightnessNote">
        <source>A darker light makes the battery last longer.</source>
        <translation>A darker light makes the battery last longer.</translation>
    </message>
    <message id="lkeyBrightnessOff">
        <source>Off</source>
        <translation>Off</translation>
    </message>
    <message id="lkeyBrowse">
        <source>Browse…</source>
        <translation>Browse…</translation>
    </message>
    <message id="lkeyBusy">
        <source>Working</source>
        <translation>Working</translation>
    </message>
    <message id="lkeyCancel">
        <source>Cancel</source>
        <translation>Cancel</translation>
    </message>
    <message id="lkeyCannotBeTyped">
        <source>No key of a US keyboard types: %1</source>
        <translation>No key of a US keyboard types: %1</translation>
    </message>
    <message id="lkeyCaughtKey">
        <source>Key that was pressed</source>
        <translation>Key that was pressed</translation>
    </message>
    <message id="lkeyChangePress">
        <source>Also change its press</source>
        <translation>Also change its press</translation>
    </message>
    <message id="lkeyChangeRelease">
        <source>Also change its release</source>
        <translation>Also change its release</translation>
    </message>
    <message id="lkeyCheckUpdates">
        <source>Check for Updates</source>
        <translation>Check for Updates</translation>
    </message>
    <message id="lkeyCheckUpdatesTip">
        <source>Opens the support page in your web browser</source>
        <translation>Opens the support page in your web browser</translation>
    </message>
    <message id="lkeyChoose">
        <source>Choose</source>
        <translation>Choose</translation>
    </message>
    <message id="lkeyChooseApplication">
        <source>Choose Application</source>
        <translation>Choose Application</translation>
    </message>
    <message id="lkeyChooseEllipsis">
        <source>Choose…</source>
        <translation>Choose…</translation>
    </message>
    <message id="lkeyChooseKey">
        <source>Choose a Key</source>
        <translation>Choose a Key</translation>
    </message>
    <message id="lkeyChooseKeyHint">
        <source>Choose a key from the list of all, also one that your keyboard does not have</source>
        <translation>Choose a key from the list of all, also one that your keyboard does not have</translation>
    </message>
    <message id="lkeyChooseMouse">
        <source>Choose a Mouse…</source>
        <translation>Choose a Mouse…</translation>
    </message>
    <message id="lkeyChooseMouseHint">
        <source>Use another mouse, or see what keeps one from being used</source>
        <translation>Use another mouse, or see what keeps one from being used</translation>
    </message>
    <message id="lkeyChooseMouseRecording">
        <source>While a macro is recorded the mouse stays the same</source>
        <translation>While a macro is recorded the mouse stays the same</translation>
    </message>
    <message id="lkeyChooseOtherMouse">
        <source>%1: %2. Choose another mouse…</source>
        <translation>%1: %2. Choose another mouse…</translation>
    </message>
    <message id="lkeyChordBack">
        <source>back</source>
        <translation>back</translation>
    </message>
    <message id="lkeyChordBold">
        <source>bold</source>
        <translation>bold</translation>
    </message>
    <message id="lkeyChordClose">
        <source>close</source>
        <translation>close</translation>
    </message>
    <message id="lkeyChordCloseWindow">
        <source>close window, quit</source>
        <translation>close window, quit</translation>
    </message>
    <message id="lkeyChordCopy">
        <source>copy</source>
        <translation>copy</translation>
    </message>
    <message id="lkeyChordCut">
        <source>cut</source>
        <translation>cut</translation>
    </message>
    <message id="lkeyChordFind">
        <source>find, search</source>
        <translation>find, search</translation>
    </message>
    <message id="lkeyChordForward">
        <source>forward</source>
        <translation>forward</translation>
    </message>
    <message id="lkeyChordItalic">
        <source>italic</source>
        <translation>italic</translation>
    </message>
    <message id="lkeyChordLockScreen">
        <source>lock screen</source>
        <translation>lock screen</translation>
    </message>
    <message id="lkeyChordNew">
        <source>new</source>
        <translation>new</translation>
    </message>
    <message id="lkeyChordNewTab">
        <source>new tab</source>
        <translation>new tab</translation>
    </message>
    <message id="lkeyChordNextTab">
        <source>next tab</source>
        <translation>next tab</translation>
    </message>
    <message id="lkeyChordOpen">
        <source>open</source>
        <translation>open</translation>
    </message>
    <message id="lkeyChordPaste">
        <source>paste</source>
        <translation>paste</translation>
    </message>
    <message id="lkeyChordPreviousTab">
        <source>previous tab</source>
        <translation>previous tab</translation>
    </message>
    <message id="lkeyChordPrint">
        <source>print</source>
        <translation>print</translation>
    </message>
    <message id="lkeyChordQuit">
        <source>quit, exit</source>
        <translation>quit, exit</translation>
    </message>
    <message id="lkeyChordRedo">
        <source>redo</source>
        <translation>redo</translation>
    </message>
    <message id="lkeyChordReload">
        <source>reload, refresh</source>
        <translation>reload, refresh</translation>
    </message>
    <message id="lkeyChordReopenTab">
        <source>reopen closed tab</source>
        <translation>reopen closed tab</translation>
    </message>
    <message id="lkeyChordSave">
        <source>save</source>
        <translation>save</translation>
    </message>
    <message id="lkeyChordSaveAs">
        <source>save as</source>
        <translation>save as</translation>
    </message>
    <message id="lkeyChordSelectAll">
        <source>select all</source>
        <translation>select all</translation>
    </message>
    <message id="lkeyChordSwitchWindow">
        <source>switch window</source>
        <translation>switch window</translation>
    </message>
    <message id="lkeyChordUnderline">
        <source>underline</source>
        <translation>underline</translation>
    </message>
    <message id="lkeyChordUndo">
        <source>undo</source>
        <translation>undo</translation>
    </message>
    <message id="lkeyClose">
        <source>Close</source>
        <translation>Close</translation>
    </message>
    <message id="lkeyColorIsSo">
        <source>The light has this colour already</source>
        <translation>The light has this colour already</translation>
    </message>
    <message id="lkeyCommErrorDesc">
        <source>Skarn could not reach the background service that looks after your mouse (vorn-core-engine). The factory settings are shown and cannot be changed. Where it does not run, the button beside the tabs starts it; your own settings appear as soon as it answers.</source>
        <translation>Skarn could not reach the background service that looks after your mouse (vorn-core-engine). The factory settings are shown and cannot be changed. Where it does not run, the button beside the tabs starts it; your own settings appear as soon as it answers.</translation>
    </message>
    <message id="lkeyCommErrorTitle">
        <source>The core engine does not answer</source>
        <translation>The core engine does not answer</translation>
    </message>
    <message id="lkeyCommunity">
        <source>Community</source>
        <translation>Community</translation>
    </message>
    <message id="lkeyCommunityTip">
        <source>Open the community page in your browser</source>
        <translation>Open the community page in your browser</translation>
    </message>
    <message id="lkeyCompareHeading">
        <source>What differs from “%1”</source>
        <translation>What differs from “%1”</translation>
    </message>
    <message id="lkeyCompareNoDifference">
        <source>No differences</source>
        <translation>No differences</translation>
    </message>
    <message id="lkeyCompareNote">
        <source>The name is left out, and so are the polling rate, the power settings and the brightness of the mouse, which are the same for all profiles.</source>
        <translation>The name is left out, and so are the polling rate, the power settings and the brightness of the mouse, which are the same for all profiles.</translation>
    </message>
    <message id="lkeyCompareProfile">
        <source>Compare With…</source>
        <translation>Compare With…</translation>
    </message>
    <message id="lkeyCompareTitle">
        <source>Compare Profiles</source>
        <translation>Compare Profiles</translation>
    </message>
    <message id="lkeyCompareWith">
        <source>Compared with</source>
        <translation>Compared with</translation>
    </message>
    <message id="lkeyComparedApplication">
        <source>Tied to</source>
        <translation>Tied to</translation>
    </message>
    <message id="lkeyComparedControl">
        <source>%1, keymap %2</source>
        <translation>%1, keymap %2</translation>
    </message>
    <message id="lkeyComparedDpi">
        <source>%1 DPI</source>
        <translation>%1 DPI</translation>
    </message>
    <message id="lkeyComparedKeymap">
        <source>Keymap in force</source>
        <translation>Keymap in force</translation>
    </message>
    <message id="lkeyComparedLock">
        <source>X and Y apart</source>
        <translation>X and Y apart</translation>
    </message>
    <message id="lkeyComparedMissing">
        <source>–</source>
        <translation>–</translation>
    </message>
    <message id="lkeyComparedNone">
        <source>None</source>
        <translation>None</translation>
    </message>
    <message id="lkeyComparedOneColor">
        <source>One colour</source>
        <translation>One colour</translation>
    </message>
    <message id="lkeyComparedOther">
        <source>Other settings</source>
        <translation>Other settings</translation>
    </message>
    <message id="lkeyComparedSensitivityMessage">
        <source>Sensitivity on screen</source>
        <translation>Sensitivity on screen</translation>
    </message>
    <message id="lkeyComparedStage">
        <source>Current stage</source>
        <translation>Current stage</translation>
    </message>
    <message id="lkeyComparedStages">
        <source>Stages</source>
        <translation>Stages</translation>
    </message>
    <message id="lkeyComparedWhat">
        <source>Setting</source>
        <translation>Setting</translation>
    </message>
    <message id="lkeyComparedX">
        <source>Sensitivity X</source>
        <translation>Sensitivity X</translation>
    </message>
    <message id="lkeyComparedY">
        <source>Sensitivity Y</source>
        <translation>Sensitivity Y</translation>
    </message>
    <message id="lkeyComparisonGone">
        <source>The profile that was compared is gone.</source>
        <translation>The profile that was compared is gone.</translation>
    </message>
    <message id="lkeyComparisonList">
        <source>Differences</source>
        <translation>Differences</translation>
    </message>
    <message id="lkeyConnectedByCable">
        <source>Connected by cable</source>
        <translation>Connected by cable</translation>
    </message>
    <message id="lkeyConnectedWireless">
        <source>Connected by the wireless receiver</source>
        <translation>Connected by the wireless receiver</translation>
    </message>
    <message id="lkeyConnectivity">
        <source>Connection</source>
        <translation>Connection</translation>
    </message>
    <message id="lkeyControlEight">
        <source>S</source>
        <translation>S</translation>
    </message>
    <message id="lkeyControlEighteen">
        <source>Wheel up</source>
        <translation>Wheel up</translation>
    </message>
    <message id="lkeyControlEleven">
        <source>Left Shift</source>
        <translation>Left Shift</translation>
    </message>
    <message id="lkeyControlFifteen">
        <source>Space</source>
        <translation>Space</translation>
    </message>
    <message id="lkeyControlFive">
        <source>R</source>
        <translation>R</translation>
    </message>
    <message id="lkeyControlFour">
        <source>E</source>
        <translation>E</translation>
    </message>
    <message id="lkeyControlFourteen">
        <source>C</source>
        <translation>C</translation>
    </message>
    <message id="lkeyControlKeyName">
        <source>Button %1, %2 key</source>
        <translation>Button %1, %2 key</translation>
    </message>
    <message id="lkeyControlName">
        <source>Button %1, %2</source>
        <translation>Button %1, %2</translation>
    </message>
    <message id="lkeyControlNine">
        <source>D</source>
        <translation>D</translation>
    </message>
    <message id="lkeyControlNineteen">
        <source>Wheel down</source>
        <translation>Wheel down</translation>
    </message>
    <message id="lkeyControlOne">
        <source>Tab</source>
        <translation>Tab</translation>
    </message>
    <message id="lkeyControlRepeat">
        <source>Repeat of button %1</source>
        <translation>Repeat of button %1</translation>
    </message>
    <message id="lkeyControlSeven">
        <source>A</source>
        <translation>A</translation>
    </message>
    <message id="lkeyControlSeventeen">
        <source>Wheel button</source>
        <translation>Wheel button</translation>
    </message>
    <message id="lkeyControlSix">
        <source>Caps Lock</source>
        <translation>Caps Lock</translation>
    </message>
    <message id="lkeyControlSixteen">
        <source>Left Alt</source>
        <translation>Left Alt</translation>
    </message>
    <message id="lkeyControlTen">
        <source>F</source>
        <translation>F</translation>
    </message>
    <message id="lkeyControlThirteen">
        <source>X</source>
        <translation>X</translation>
    </message>
    <message id="lkeyControlThree">
        <source>W</source>
        <translation>W</translation>
    </message>
    <message id="lkeyControlTwelve">
        <source>Z</source>
        <translation>Z</translation>
    </message>
    <message id="lkeyControlTwenty">
        <source>Up</source>
        <translation>Up</translation>
    </message>
    <message id="lkeyControlTwentyFive">
        <source>Down left</source>
        <translation>Down left</translation>
    </message>
    <message id="lkeyControlTwentyFour">
        <source>Down</source>
        <translation>Down</translation>
    </message>
    <message id="lkeyControlTwentyOne">
        <source>Up right</source>
        <translation>Up right</translation>
    </message>
    <message id="lkeyControlTwentySeven">
        <source>Up left</source>
        <translation>Up left</translation>
    </message>
    <message id="lkeyControlTwentySix">
        <source>Left</source>
        <translation>Left</translation>
    </message>
    <message id="lkeyControlTwentyThree">
        <source>Down right</source>
        <translation>Down right</translation>
    </message>
    <message id="lkeyControlTwentyTwo">
        <source>Right</source>
        <translation>Right</translation>
    </message>
    <message id="lkeyControlTwo">
        <source>Q</source>
        <translation>Q</translation>
    </message>
    <message id="lkeyControlsChanged">
        <source>%1 changed</source>
        <translation>%1 changed</translation>
    </message>
    <message id="lkeyControlsFound">
        <source>%1 found</source>
        <translation>%1 found</translation>
    </message>
    <message id="lkeyCopy">
        <source>Copy</source>
        <translation>Copy</translation>
    </message>
    <message id="lkeyCopyDelay">
        <source>Use This Delay for All</source>
        <translation>Use This Delay for All</translation>
    </message>
    <message id="lkeyCurrentSensitivity">
        <source>Current sensitivity</source>
        <translation>Current sensitivity</translation>
    </message>
    <message id="lkeyCurrentStage">
        <source>Current stage</source>
        <translation>Current stage</translation>
    </message>
    <message id="lkeyCutEvents">
        <source>Cut</source>
        <translation>Cut</translation>
    </message>
    <message id="lkeyDPI">
        <source>DPI</source>
        <translation>DPI</translation>
    </message>
    <message id="lkeyDefaultKey">
        <source>Default</source>
        <translation>Default</translation>
    </message>
    <message id="lkeyDelayAddedTo">
        <source>Added to: %1</source>
        <translation>Added to: %1</translation>
    </message>
    <message id="lkeyDelayInMilliseconds">
        <source>Delay in milliseconds</source>
        <translation>Delay in milliseconds</translation>
    </message>
    <message id="lkeyDelayIsSo">
        <source>The delay is that long already</source>
        <translation>The delay is that long already</translation>
    </message>
    <message id="lkeyDelayNow">
        <source>Now: %1</source>
        <translation>Now: %1</translation>
    </message>
    <message id="lkeyDelaysNow">
        <source>All of them become this delay.</source>
        <translation>All of them become this delay.</translation>
    </message>
    <message id="lkeyDelete">
        <source>Delete…</source>
        <translation>Delete…</translation>
    </message>
    <message id="lkeyDeleteAction">
        <source>Delete</source>
        <translation>Delete</translation>
    </message>
    <message id="lkeyDeleteAllEvents">
        <source>Delete All Events…</source>
        <translation>Delete All Events…</translation>
    </message>
    <message id="lkeyDeleteAllEventsAlertDesc">
        <source>The macro stays, without what was recorded. Buttons that play it do nothing until something is recorded again. Undo brings the events back.</source>
        <translation>The macro stays, without what was recorded. Buttons that play it do nothing until something is recorded again. Undo brings the events back.</translation>
    </message>
    <message id="lkeyDeleteAllEventsAlertTitle">
        <source>Delete All Events of “%1”?</source>
        <translation>Delete All Events of “%1”?</translation>
    </message>
    <message id="lkeyDeleteEvent">
        <source>Delete Event</source>
        <translation>Delete Event</translation>
    </message>
    <message id="lkeyDeleteLine">
        <source>Delete the selected line</source>
        <translation>Delete the selected line</translation>
    </message>
    <message id="lkeyDeleteMacro">
        <source>Delete the selected macro</source>
        <translation>Delete the selected macro</translation>
    </message>
    <message id="lkeyDeleteMacroAlertDesc">
        <source>The macro and its recorded events are removed from the mouse. Undo brings it back; export the macro first if you want to keep a copy.</source>
        <translation>The macro and its recorded events are removed from the mouse. Undo brings it back; export the macro first if you want to keep a copy.</translation>
    </message>
    <message id="lkeyDeleteMacroAlertTitle">
        <source>Delete Macro “%1”?</source>
        <translation>Delete Macro “%1”?</translation>
    </message>
    <message id="lkeyDeletePair">
        <source>Delete Press and Release</source>
        <translation>Delete Press and Release</translation>
    </message>
    <message id="lkeyDeleteProfile">
        <source>Delete the selected profile</source>
        <translation>Delete the selected profile</translation>
    </message>
    <message id="lkeyDeleteProfileAlertDesc">
        <source>The profile is removed from the mouse with all its assignments, sensitivity and lighting. Undo brings it back; export the profile first if you want to keep a copy.</source>
        <translation>The profile is removed from the mouse with all its assignments, sensitivity and lighting. Undo brings it back; export the profile first if you want to keep a copy.</translation>
    </message>
    <message id="lkeyDeleteProfileAlertTitle">
        <source>Delete Profile “%1”?</source>
        <translation>Delete Profile “%1”?</translation>
    </message>
    <message id="lkeyDeleteStage">
        <source>Delete Stage</source>
        <translation>Delete Stage</translation>
    </message>
    <message id="lkeyDeviceConnectionDesc">
        <source>Plug in the cable or the wireless receiver and switch the mouse on. Until then the settings cannot be changed.</source>
        <translation>Plug in the cable or the wireless receiver and switch the mouse on. Until then the settings cannot be changed.</translation>
    </message>
    <message id="lkeyDeviceConnectionTitle">
        <source>No mouse connected</source>
        <translation>No mouse connected</translation>
    </message>
    <message id="lkeyDeviceNotFoundDesc">
        <source>Connect the mouse with its cable, or plug in its wireless receiver and switch the mouse on. Skarn shows it as soon as it is there.</source>
        <translation>Connect the mouse with its cable, or plug in its wireless receiver and switch the mouse on. Skarn shows it as soon as it is there.</translation>
    </message>
    <message id="lkeyDeviceNotFoundTitle">
        <source>No mouse found</source>
        <translation>No mouse found</translation>
    </message>
    <message id="lkeyDirectionPad">
        <source>Direction pad</source>
        <translation>Direction pad</translation>
    </message>
    <message id="lkeyDisable">
        <source>Disable</source>
        <translation>Disable</translation>
    </message>
    <message id="lkeyDiscardRecording">
        <source>Discard</source>
        <translation>Discard</translation>
    </message>
    <message id="lkeyDiscardRecordingTip">
        <source>End the recording and keep the events as they were (Shift+Pause)</source>
        <translation>End the recording and keep the events as they were (Shift+Pause)</translation>
    </message>
    <message id="lkeyDoubleClick">
        <source>Double Click</source>
        <translation>Double Click</translation>
    </message>
    <message id="lkeyDriverVersion">
        <source>Driver version</source>
        <translation>Driver version</translation>
    </message>
    <message id="lkeyDuplicateEvents">
        <source>Duplicate</source>
        <translation>Duplicate</translation>
    </message>
    <message id="lkeyDuplicateMacro">
        <source>Duplicate Macro</source>
        <translation>Duplicate Macro</translation>
    </message>
    <message id="lkeyEdit">
        <source>Edit…</source>
        <translation>Edit…</translation>
    </message>
    <message id="lkeyEditDelayTitle">
        <source>Edit Delay</source>
        <translation>Edit Delay</translation>
    </message>
    <message id="lkeyEditDelaysTitle">
        <source>Edit Delays (%1)</source>
        <translation>Edit Delays (%1)</translation>
    </message>
    <message id="lkeyEditEventTitle">
        <source>Edit Event</source>
        <translation>Edit Event</translation>
    </message>
    <message id="lkeyEditFailedTitle">
        <source>“%1” was not changed</source>
        <translation>“%1” was not changed</translation>
    </message>
    <message id="lkeyEditStages">
        <source>Edit Stages…</source>
        <translation>Edit Stages…</translation>
    </message>
    <message id="lkeyEffect">
        <source>Effect</source>
        <translation>Effect</translation>
    </message>
    <message id="lkeyEngineDidNotSave">
        <source>The core engine could not write it to the disk, which may be full. Nothing was changed.</source>
        <translation>The core engine could not write it to the disk, which may be full. Nothing was changed.</translation>
    </message>
    <message id="lkeyEngineRefused">
        <source>The core engine refused it. Nothing was changed.</source>
        <translation>The core engine refused it. Nothing was changed.</translation>
    </message>
    <message id="lkeyEngineSaidNothing">
        <source>The core engine did not answer.</source>
        <translation>The core engine did not answer.</translation>
    </message>
    <message id="lkeyEnterDelay">
        <source>Delay before the event that follows:</source>
        <translation>Delay before the event that follows:</translation>
    </message>
    <message id="lkeyEnterDelayFirst">
        <source>Enter the delay first</source>
        <translation>Enter the delay first</translation>
    </message>
    <message id="lkeyEnterEvent">
        <source>Press the new key for this event, whichever it is; then Return confirms it and Escape cancels. A press stays a press, a release stays a release.</source>
        <translation>Press the new key for this event, whichever it is; then Return confirms it and Escape cancels. A press stays a press, a release stays a release.</translation>
    </message>
    <message id="lkeyEnterInsertedKey">
        <source>Press the key to insert, whichever it is; then Return inserts its press and release, and Escape cancels.</source>
        <translation>Press the key to insert, whichever it is; then Return inserts its press and release, and Escape cancels.</translation>
    </message>
    <message id="lkeyEnterSleepMode">
        <source>Enter sleep mode after</source>
        <translation>Enter sleep mode after</translation>
    </message>
    <message id="lkeyEnterText">
        <source>The keys that type this text are added behind the selected events:</source>
        <translation>The keys that type this text are added behind the selected events:</translation>
    </message>
    <message id="lkeyEnterTextFirst">
        <source>Enter the text first</source>
        <translation>Enter the text first</translation>
    </message>
    <message id="lkeyEventsMenu">
        <source>More for events</source>
        <translation>More for events</translation>
    </message>
    <message id="lkeyExactStageX">
        <source>Exact X sensitivity of the stage in DPI</source>
        <translation>Exact X sensitivity of the stage in DPI</translation>
    </message>
    <message id="lkeyExactStageY">
        <source>Exact Y sensitivity of the stage in DPI</source>
        <translation>Exact Y sensitivity of the stage in DPI</translation>
    </message>
    <message id="lkeyExactX">
        <source>Exact X sensitivity in DPI</source>
        <translation>Exact X sensitivity in DPI</translation>
    </message>
    <message id="lkeyExactY">
        <source>Exact Y sensitivity in DPI</source>
        <translation>Exact Y sensitivity in DPI</translation>
    </message>
    <message id="lkeyExport">
        <source>Export…</source>
        <translation>Export…</translation>
    </message>
    <message id="lkeyExportAll">
        <source>Export All…</source>
        <translation>Export All…</translation>
    </message>
    <message id="lkeyExportAllTitle">
        <source>Export All Profiles</source>
        <translation>Export All Profiles</translation>
    </message>
    <message id="lkeyExportFailedTitle">
        <source>“%1” could not be exported</source>
        <translation>“%1” could not be exported</translation>
    </message>
    <message id="lkeyExportMacro">
        <source>Export Macro</source>
        <translation>Export Macro</translation>
    </message>
    <message id="lkeyExportProfile">
        <source>Export Profile</source>
        <translation>Export Profile</translation>
    </message>
    <message id="lkeyExportedAll">
        <source>Exported %1 profiles to %2</source>
        <translation>Exported %1 profiles to %2</translation>
    </message>
    <message id="lkeyExportedAllOne">
        <source>Exported 1 profile to %1</source>
        <translation>Exported 1 profile to %1</translation>
    </message>
    <message id="lkeyExportedTo">
        <source>Exported to %1</source>
        <translation>Exported to %1</translation>
    </message>
    <message id="lkeyFileExistsAlready">
        <source>It exists already. Choose another name.</source>
        <translation>It exists already. Choose another name.</translation>
    </message>
    <message id="lkeyFileHasBadMember">
        <source>A part of this file cannot be used: “%1”. The file may be damaged.</source>
        <translation>A part of this file cannot be used: “%1”. The file may be damaged.</translation>
    </message>
    <message id="lkeyFileIsEmpty">
        <source>This file is empty.</source>
        <translation>This file is empty.</translation>
    </message>
    <message id="lkeyFileIsMissing">
        <source>There is no such file.</source>
        <translation>There is no such file.</translation>
    </message>
    <message id="lkeyFileIsNoRecord">
        <source>This file is not a profile or macro that Skarn can read. It may be damaged, or made by another program.</source>
        <translation>This file is not a profile or macro that Skarn can read. It may be damaged, or made by another program.</translation>
    </message>
    <message id="lkeyFileIsNotReadable">
        <source>This file cannot be read: %1</source>
        <translation>This file cannot be read: %1</translation>
    </message>
    <message id="lkeyFileIsNotRegular">
        <source>This is not an ordinary file.</source>
        <translation>This is not an ordinary file.</translation>
    </message>
    <message id="lkeyFileIsNotWritable">
        <source>The file cannot be written: %1.</source>
        <translation>The file cannot be written: %1.</translation>
    </message>
    <message id="lkeyFileIsTooLarge">
        <source>This file is too large.</source>
        <translation>This file is too large.</translation>
    </message>
    <message id="lkeyFileLacksMember">
        <source>A part of this file is missing: “%1”. The file may be damaged.</source>
        <translation>A part of this file is missing: “%1”. The file may be damaged.</translation>
    </message>
    <message id="lkeyFileLacksName">
        <source>This file has no name for what it holds.</source>
        <translation>This file has no name for what it holds.</translation>
    </message>
    <message id="lkeyFileNotFoundDesc">
        <source>Check the name, or choose the file in the list.</source>
        <translation>Check the name, or choose the file in the list.</translation>
    </message>
    <message id="lkeyFileNotFoundTitle">
        <source>“%1” was not found</source>
        <translation>“%1” was not found</translation>
    </message>
    <message id="lkeyFileTypeDesc">
        <source>Choose a file of the kind that the list shows.</source>
        <translation>Choose a file of the kind that the list shows.</translation>
    </message>
    <message id="lkeyFileTypeTitle">
        <source>“%1” cannot be chosen here</source>
        <translation>“%1” cannot be chosen here</translation>
    </message>
    <message id="lkeyFindControl">
        <source>Find a control</source>
        <translation>Find a control</translation>
    </message>
    <message id="lkeyFindControlTip">
        <source>Finds controls by what they do or are called (%1)</source>
        <translation>Finds controls by what they do or are called (%1)</translation>
    </message>
    <message id="lkeyFinishNameFirst">
        <source>Finish typing the name of the macro first</source>
        <translation>Finish typing the name of the macro first</translation>
    </message>
    <message id="lkeyFirmwareBusy">
        <source>Reading the firmware version</source>
        <translation>Reading the firmware version</translation>
    </message>
    <message id="lkeyFirmwareVersion">
        <source>Firmware version</source>
        <translation>Firmware version</translation>
    </message>
    <message id="lkeyFixedColor">
        <source>Fixed colour</source>
        <translation>Fixed colour</translation>
    </message>
    <message id="lkeyFixedKeymap">
        <source>Keymap key</source>
        <translation>Keymap key</translation>
    </message>
    <message id="lkeyFixedStageDown">
        <source>Key for the stage before</source>
        <translation>Key for the stage before</translation>
    </message>
    <message id="lkeyFixedStageUp">
        <source>Key for the next sensitivity stage</source>
        <translation>Key for the next sensitivity stage</translation>
    </message>
    <message id="lkeyFlashFifteenPercent">
        <source>15 %</source>
        <translation>15 %</translation>
    </message>
    <message id="lkeyFlashFivePercent">
        <source>5 %</source>
        <translation>5 %</translation>
    </message>
    <message id="lkeyFlashScrollLight">
        <source>Flash the scroll wheel at</source>
        <translation>Flash the scroll wheel at</translation>
    </message>
    <message id="lkeyFlashTenPercent">
        <source>10 %</source>
        <translation>10 %</translation>
    </message>
    <message id="lkeyFlashTwentyFivePercent">
        <source>25 %</source>
        <translation>25 %</translation>
    </message>
    <message id="lkeyFlashTwentyPercent">
        <source>20 %</source>
        <translation>20 %</translation>
    </message>
    <message id="lkeyFolderHoldsNoProfiles">
        <source>The folder holds no profiles.</source>
        <translation>The folder holds no profiles.</translation>
    </message>
    <message id="lkeyFolderNotFoundDesc">
        <source>Choose a folder that exists.</source>
        <translation>Choose a folder that exists.</translation>
    </message>
    <message id="lkeyFolderNotFoundTitle">
        <source>There is no folder “%1”</source>
        <translation>There is no folder “%1”</translation>
    </message>
    <message id="lkeyFollowingKDE">
        <source>KDE Plasma</source>
        <translation>KDE Plasma</translation>
    </message>
    <message id="lkeyFollowingNeedsDesktop">
        <source>Auto switch does not work on this desktop, which does not tell which application is in front.</source>
        <translation>Auto switch does not work on this desktop, which does not tell which application is in front.</translation>
    </message>
    <message id="lkeyFollowingNeedsDisplay">
        <source>Auto switch does not work: the core engine cannot reach the desktop. Log out and in again.</source>
        <translation>Auto switch does not work: the core engine cannot reach the desktop. Log out and in again.</translation>
    </message>
    <message id="lkeyFollowingNeedsExtension">
        <source>Auto switch needs Skarn's extension for GNOME. Turn it on in the Extensions app; if it is not listed there, log out and in again first.</source>
        <translation>Auto switch needs Skarn's extension for GNOME. Turn it on in the Extensions app; if it is not listed there, log out and in again first.</translation>
    </message>
    <message id="lkeyFollowingNeedsKDE">
        <source>Auto switch does not work: KDE Plasma does not tell Skarn which application is in front. Log out and in again.</source>
        <translation>Auto switch does not work: KDE Plasma does not tell Skarn which application is in front. Log out and in again.</translation>
    </message>
    <message id="lkeyFollowingOffer">
        <source>Auto switch makes a profile active while its application is in front. It works on this desktop, by what %1 tells.</source>
        <translation>Auto switch makes a profile active while its application is in front. It works on this desktop, by what %1 tells.</translation>
    </message>
    <message id="lkeyFollowingProgram">
        <source>an extension of the desktop</source>
        <translation>an extension of the desktop</translation>
    </message>
    <message id="lkeyFollowingWayland">
        <source>the Wayland desktop</source>
        <translation>the Wayland desktop</translation>
    </message>
    <message id="lkeyFollowingWorks">
        <source>Auto switch works on this desktop: %1 tells which application is in front.</source>
        <translation>Auto switch works on this desktop: %1 tells which application is in front.</translation>
    </message>
    <message id="lkeyFollowingX11">
        <source>X11</source>
        <translation>X11</translation>
    </message>
    <message id="lkeyForgetTaught">
        <source>Forget What Was Taught</source>
        <translation>Forget What Was Taught</translation>
    </message>
    <message id="lkeyForgotten">
        <source>What this mouse was taught is forgotten</source>
        <translation>What this mouse was taught is forgotten</translation>
    </message>
    <message id="lkeyForward">
        <source>Forward</source>
        <translation>Forward</translation>
    </message>
    <message id="lkeyGuild">
        <source>Vorn Guild</source>
        <translation>Vorn Guild</translation>
    </message>
    <message id="lkeyGuildTip">
        <source>Open the Vorn Guild page in your browser</source>
        <translation>Open the Vorn Guild page in your browser</translation>
    </message>
    <message id="lkeyHeaderProfile">
        <source>Profile:</source>
        <translation>Profile:</translation>
    </message>
    <message id="lkeyHeldWithKey">
        <source>Held with the key</source>
        <translation>Held with the key</translation>
    </message>
    <message id="lkeyHelp">
        <source>Help</source>
        <translation>Help</translation>
    </message>
    <message id="lkeyHelpBack">
        <source>Back</source>
        <translation>Back</translation>
    </message>
    <message id="lkeyHelpContents">
        <source>Contents</source>
        <translation>Contents</translation>
    </message>
    <message id="lkeyHelpForward">
        <source>Forward</source>
        <translation>Forward</translation>
    </message>
    <message id="lkeyHelpNothingFound">
        <source>No page has the words “%1”.</source>
        <translation>No page has the words “%1”.</translation>
    </message>
    <message id="lkeyHelpResults">
        <source>Pages found</source>
        <translation>Pages found</translation>
    </message>
    <message id="lkeyHelpSearch">
        <source>Search the help</source>
        <translation>Search the help</translation>
    </message>
    <message id="lkeyHelpTip">
        <source>Open the help (F1: about this tab)</source>
        <translation>Open the help (F1: about this tab)</translation>
    </message>
    <message id="lkeyHistory">
        <source>History</source>
        <translation>History</translation>
    </message>
    <message id="lkeyHistoryAssignment">
        <source>An assignment</source>
        <translation>An assignment</translation>
    </message>
    <message id="lkeyHistoryAssignments">
        <source>%1 assignments</source>
        <translation>%1 assignments</translation>
    </message>
    <message id="lkeyHistoryBackupRestored">
        <source>Backup of %1 restored</source>
        <translation>Backup of %1 restored</translation>
    </message>
    <message id="lkeyHistoryBeforeAll">
        <source>Before these changes</source>
        <translation>Before these changes</translation>
    </message>
    <message id="lkeyHistoryByCommandLine">
        <source>vornctl</source>
        <translation>vornctl</translation>
    </message>
    <message id="lkeyHistoryByUnknown">
        <source>Another program</source>
        <translation>Another program</translation>
    </message>
    <message id="lkeyHistoryByWindow">
        <source>This window</source>
        <translation>This window</translation>
    </message>
    <message id="lkeyHistoryControlTo">
        <source>Button %1 to %2</source>
        <translation>Button %1 to %2</translation>
    </message>
    <message id="lkeyHistoryDeleted">
        <source>Deleted %1</source>
        <translation>Deleted %1</translation>
    </message>
    <message id="lkeyHistoryDeletedEvents">
        <source>Deleted events of %1</source>
        <translation>Deleted events of %1</translation>
    </message>
    <message id="lkeyHistoryEmpty">
        <source>Nothing has been changed yet.</source>
        <translation>Nothing has been changed yet.</translation>
    </message>
    <message id="lkeyHistoryGoBack">
        <source>Go Back to Here</source>
        <translation>Go Back to Here</translation>
    </message>
    <message id="lkeyHistoryGoForward">
        <source>Go Forward to Here</source>
        <translation>Go Forward to Here</translation>
    </message>
    <message id="lkeyHistoryInPlace">
        <source>%1 (%2)</source>
        <translation>%1 (%2)</translation>
    </message>
    <message id="lkeyHistoryIsHere">
        <source>The settings are as they were then</source>
        <translation>The settings are as they were then</translation>
    </message>
    <message id="lkeyHistoryMacroAdded">
        <source>Macro “%1” added</source>
        <translation>Macro “%1” added</translation>
    </message>
    <message id="lkeyHistoryMacroDelays">
        <source>Delays of macro “%1”</source>
        <translation>Delays of macro “%1”</translation>
    </message>
    <message id="lkeyHistoryMacroDeleted">
        <source>Macro “%1” deleted</source>
        <translation>Macro “%1” deleted</translation>
    </message>
    <message id="lkeyHistoryMacroEventRemoved">
        <source>1 event of macro “%1” deleted</source>
        <translation>1 event of macro “%1” deleted</translation>
    </message>
    <message id="lkeyHistoryMacroEvents">
        <source>Events of macro “%1”</source>
        <translation>Events of macro “%1”</translation>
    </message>
    <message id="lkeyHistoryMacroEventsRemoved">
        <source>All events of macro “%1” deleted</source>
        <translation>All events of macro “%1” deleted</translation>
    </message>
    <message id="lkeyHistoryMacroRecorded">
        <source>Macro “%1” recorded</source>
        <translation>Macro “%1” recorded</translation>
    </message>
    <message id="lkeyHistoryMacroRenamed">
        <source>Macro “%1” renamed to “%2”</source>
        <translation>Macro “%1” renamed to “%2”</translation>
    </message>
    <message id="lkeyHistoryMacroSomeEventsRemoved">
        <source>%1 events of macro “%2” deleted</source>
        <translation>%1 events of macro “%2” deleted</translation>
    </message>
    <message id="lkeyHistoryMacrosAdded">
        <source>%1 macros added</source>
        <translation>%1 macros added</translation>
    </message>
    <message id="lkeyHistoryMacrosDeleted">
        <source>%1 macros deleted</source>
        <translation>%1 macros deleted</translation>
    </message>
    <message id="lkeyHistoryMessages">
        <source>Messages on the screen</source>
        <translation>Messages on the screen</translation>
    </message>
    <message id="lkeyHistoryNoAnswer">
        <source>The core engine does not answer</source>
        <translation>The core engine does not answer</translation>
    </message>
    <message id="lkeyHistoryNoEngine">
        <source>No core engine runs</source>
        <translation>No core engine runs</translation>
    </message>
    <message id="lkeyHistoryNotKept">
        <source>This core engine keeps no history of changes</source>
        <translation>This core engine keeps no history of changes</translation>
    </message>
    <message id="lkeyHistoryOfProfile">
        <source>%1 of %2</source>
        <translation>%1 of %2</translation>
    </message>
    <message id="lkeyHistoryPower">
        <source>Power settings</source>
        <translation>Power settings</translation>
    </message>
    <message id="lkeyHistoryProfileAdded">
        <source>Profile “%1” added</source>
        <translation>Profile “%1” added</translation>
    </message>
    <message id="lkeyHistoryProfileDeleted">
        <source>Profile “%1” deleted</source>
        <translation>Profile “%1” deleted</translation>
    </message>
    <message id="lkeyHistoryProfileRenamed">
        <source>Profile “%1” renamed to “%2”</source>
        <translation>Profile “%1” renamed to “%2”</translation>
    </message>
    <message id="lkeyHistoryProfileRestored">
        <source>Profile “%1” restored to its factory settings</source>
        <translation>Profile “%1” restored to its factory settings</translation>
    </message>
    <message id="lkeyHistoryProfileSwitched">
        <source>Switched to profile “%1”</source>
        <translation>Switched to profile “%1”</translation>
    </message>
    <message id="lkeyHistoryProfilesAdded">
        <source>%1 profiles added</source>
        <translation>%1 profiles added</translation>
    </message>
    <message id="lkeyHistoryProfilesDeleted">
        <source>%1 profiles deleted</source>
        <translation>%1 profiles deleted</translation>
    </message>
    <message id="lkeyHistoryProfilesReordered">
        <source>Order of the profiles</source>
        <translation>Order of the profiles</translation>
    </message>
    <message id="lkeyHistoryRecording">
        <source>Nothing can be undone while a macro is recorded</source>
        <translation>Nothing can be undone while a macro is recorded</translation>
    </message>
    <message id="lkeyHistorySettings">
        <source>Settings</source>
        <translation>Settings</translation>
    </message>
    <message id="lkeyHistoryStages">
        <source>Sensitivity stages</source>
        <translation>Sensitivity stages</translation>
    </message>
    <message id="lkeyHistoryStarting">
        <source>The settings are being loaded</source>
        <translation>The settings are being loaded</translation>
    </message>
    <message id="lkeyHistorySwitchedTo">
        <source>Switched to %1</source>
        <translation>Switched to %1</translation>
    </message>
    <message id="lkeyHistoryThen">
        <source>%1. %2</source>
        <translation>%1. %2</translation>
    </message>
    <message id="lkeyHistoryThreeControls">
        <source>Buttons %1, %2 and %3</source>
        <translation>Buttons %1, %2 and %3</translation>
    </message>
    <message id="lkeyHistoryTime">
        <source>Time</source>
        <translation>Time</translation>
    </message>
    <message id="lkeyHistoryTip">
        <source>All changes of the settings (Ctrl+H)</source>
        <translation>All changes of the settings (Ctrl+H)</translation>
    </message>
    <message id="lkeyHistoryTitle">
        <source>Changes of the settings</source>
        <translation>Changes of the settings</translation>
    </message>
    <message id="lkeyHistoryTwoControls">
        <source>Buttons %1 and %2</source>
        <translation>Buttons %1 and %2</translation>
    </message>
    <message id="lkeyHistoryUndone">
        <source>%1 (undone)</source>
        <translation>%1 (undone)</translation>
    </message>
    <message id="lkeyHistoryUnknown">
        <source>The core engine has not told its changes yet</source>
        <translation>The core engine has not told its changes yet</translation>
    </message>
    <message id="lkeyHistoryWhat">
        <source>Change</source>
        <translation>Change</translation>
    </message>
    <message id="lkeyHistoryWho">
        <source>By</source>
        <translation>By</translation>
    </message>
    <message id="lkeyHowToBegin">
        <source>Press Record and type, or begin with one of these:</source>
        <translation>Press Record and type, or begin with one of these:</translation>
    </message>
    <message id="lkeyImport">
        <source>Import…</source>
        <translation>Import…</translation>
    </message>
    <message id="lkeyImportAction">
        <source>Import</source>
        <translation>Import</translation>
    </message>
    <message id="lkeyImportAll">
        <source>Import All…</source>
        <translation>Import All…</translation>
    </message>
    <message id="lkeyImportAllTitle">
        <source>Import All Profiles</source>
        <translation>Import All Profiles</translation>
    </message>
    <message id="lkeyImportControls">
        <source>%1 changed from the factory, in %2 of 8 keymaps</source>
        <translation>%1 changed from the factory, in %2 of 8 keymaps</translation>
    </message>
    <message id="lkeyImportFailedTitle">
        <source>“%1” could not be imported</source>
        <translation>“%1” could not be imported</translation>
    </message>
    <message id="lkeyImportFile">
        <source>File</source>
        <translation>File</translation>
    </message>
    <message id="lkeyImportHeading">
        <source>Import %1 profiles?</source>
        <translation>Import %1 profiles?</translation>
    </message>
    <message id="lkeyImportHeadingOne">
        <source>Import this profile?</source>
        <translation>Import this profile?</translation>
    </message>
    <message id="lkeyImportIsHere">
        <source>“%1” on this mouse</source>
        <translation>“%1” on this mouse</translation>
    </message>
    <message id="lkeyImportIsNothingHere">
        <source>Does not exist on this mouse</source>
        <translation>Does not exist on this mouse</translation>
    </message>
    <message id="lkeyImportList">
        <source>What the files hold</source>
        <translation>What the files hold</translation>
    </message>
    <message id="lkeyImportMacro">
        <source>Import Macro</source>
        <translation>Import Macro</translation>
    </message>
    <message id="lkeyImportNoControls">
        <source>All as from the factory</source>
        <translation>All as from the factory</translation>
    </message>
    <message id="lkeyImportNot">
        <source>Not imported: %1</source>
        <translation>Not imported: %1</translation>
    </message>
    <message id="lkeyImportNote">
        <source>A file brings no macros along. Its controls play the macros, and switch to the profiles, that have these numbers here.</source>
        <translation>A file brings no macros along. Its controls play the macros, and switch to the profiles, that have these numbers here.</translation>
    </message>
    <message id="lkeyImportNothingFits">
        <source>Nothing of it can be imported.</source>
        <translation>Nothing of it can be imported.</translation>
    </message>
    <message id="lkeyImportPlaysMacro">
        <source>Plays macro %1</source>
        <translation>Plays macro %1</translation>
    </message>
    <message id="lkeyImportProfile">
        <source>Import Profile</source>
        <translation>Import Profile</translation>
    </message>
    <message id="lkeyImportReason">
        <source>Why</source>
        <translation>Why</translation>
    </message>
    <message id="lkeyImportSheetTitle">
        <source>Import Profiles</source>
        <translation>Import Profiles</translation>
    </message>
    <message id="lkeyImportSwitchesTo">
        <source>Switches to profile %1</source>
        <translation>Switches to profile %1</translation>
    </message>
    <message id="lkeyImportUnusable">
        <source>Not usable, as from the factory</source>
        <translation>Not usable, as from the factory</translation>
    </message>
    <message id="lkeyImportedAll">
        <source>%1 profiles were imported.</source>
        <translation>%1 profiles were imported.</translation>
    </message>
    <message id="lkeyImportedOne">
        <source>1 profile was imported.</source>
        <translation>1 profile was imported.</translation>
    </message>
    <message id="lkeyImportedPartly">
        <source>Imported. Values that cannot be used are as from the factory.</source>
        <translation>Imported. Values that cannot be used are as from the factory.</translation>
    </message>
    <message id="lkeyIndependentXY">
        <source>Independent X and Y</source>
        <translation>Independent X and Y</translation>
    </message>
    <message id="lkeyInsertAKey">
        <source>Insert a Key…</source>
        <translation>Insert a Key…</translation>
    </message>
    <message id="lkeyInsertAction">
        <source>Insert</source>
        <translation>Insert</translation>
    </message>
    <message id="lkeyInsertAfter">
        <source>Insert After</source>
        <translation>Insert After</translation>
    </message>
    <message id="lkeyInsertBefore">
        <source>Insert Before</source>
        <translation>Insert Before</translation>
    </message>
    <message id="lkeyInsertDelay">
        <source>Delay…</source>
        <translation>Delay…</translation>
    </message>
    <message id="lkeyInsertKey">
        <source>Key…</source>
        <translation>Key…</translation>
    </message>
    <message id="lkeyInsertKeyTitle">
        <source>Insert a Key</source>
        <translation>Insert a Key</translation>
    </message>
    <message id="lkeyInsertLeftClick">
        <source>Left Click</source>
        <translation>Left Click</translation>
    </message>
    <message id="lkeyInsertMiddleClick">
        <source>Middle Click</source>
        <translation>Middle Click</translation>
    </message>
    <message id="lkeyInsertRightClick">
        <source>Right Click</source>
        <translation>Right Click</translation>
    </message>
    <message id="lkeyInstalledApplications">
        <source>Installed applications</source>
        <translation>Installed applications</translation>
    </message>
    <message id="lkeyIsFirstEvent">
        <source>It is the first event already</source>
        <translation>It is the first event already</translation>
    </message>
    <message id="lkeyIsLastEvent">
        <source>It is the last event already</source>
        <translation>It is the last event already</translation>
    </message>
    <message id="lkeyKeepPairs">
        <source>Move Press and Release Together</source>
        <translation>Move Press and Release Together</translation>
    </message>
    <message id="lkeyKeyMap">
        <source>Keymap</source>
        <translation>Keymap</translation>
    </message>
    <message id="lkeyKeymapClear">
        <source>Clear Keymap</source>
        <translation>Clear Keymap</translation>
    </message>
    <message id="lkeyKeymapCopy">
        <source>Copy Keymap</source>
        <translation>Copy Keymap</translation>
    </message>
    <message id="lkeyKeymapEight">
        <source>Keymap 8</source>
        <translation>Keymap 8</translation>
    </message>
    <message id="lkeyKeymapFive">
        <source>Keymap 5</source>
        <translation>Keymap 5</translation>
    </message>
    <message id="lkeyKeymapFour">
        <source>Keymap 4</source>
        <translation>Keymap 4</translation>
    </message>
    <message id="lkeyKeymapInUse">
        <source>in use</source>
        <translation>in use</translation>
    </message>
    <message id="lkeyKeymapIsClear">
        <source>Every control does what it does out of the box, but for a left click or a cycle of the keymaps that has to stay</source>
        <translation>Every control does what it does out of the box, but for a left click or a cycle of the keymaps that has to stay</translation>
    </message>
    <message id="lkeyKeymapMenu">
        <source>More for this keymap</source>
        <translation>More for this keymap</translation>
    </message>
    <message id="lkeyKeymapName">
        <source>Name…</source>
        <translation>Name…</translation>
    </message>
    <message id="lkeyKeymapNameTitle">
        <source>Name a keymap</source>
        <translation>Name a keymap</translation>
    </message>
    <message id="lkeyKeymapNamed">
        <source>%1 – %2</source>
        <translation>%1 – %2</translation>
    </message>
    <message id="lkeyKeymapNumbered">
        <source>Keymap %1</source>
        <translation>Keymap %1</translation>
    </message>
    <message id="lkeyKeymapOne">
        <source>Keymap 1</source>
        <translation>Keymap 1</translation>
    </message>
    <message id="lkeyKeymapPaste">
        <source>Paste Keymap</source>
        <translation>Paste Keymap</translation>
    </message>
    <message id="lkeyKeymapSeven">
        <source>Keymap 7</source>
        <translation>Keymap 7</translation>
    </message>
    <message id="lkeyKeymapSheet">
        <source>Switch Back When Let Go…</source>
        <translation>Switch Back When Let Go…</translation>
    </message>
    <message id="lkeyKeymapSheetBoth">
        <source>Keymap and Switch Back…</source>
        <translation>Keymap and Switch Back…</translation>
    </message>
    <message id="lkeyKeymapSix">
        <source>Keymap 6</source>
        <translation>Keymap 6</translation>
    </message>
    <message id="lkeyKeymapSubject">
        <source>%1 · %2</source>
        <translation>%1 · %2</translation>
    </message>
    <message id="lkeyKeymapSwitchBack">
        <source>Switch back when the control is let go</source>
        <translation>Switch back when the control is let go</translation>
    </message>
    <message id="lkeyKeymapThree">
        <source>Keymap 3</source>
        <translation>Keymap 3</translation>
    </message>
    <message id="lkeyKeymapTitle">
        <source>Switch to a keymap</source>
        <translation>Switch to a keymap</translation>
    </message>
    <message id="lkeyKeymapTwo">
        <source>Keymap 2</source>
        <translation>Keymap 2</translation>
    </message>
    <message id="lkeyKeymapsCycle">
        <source>Cycle Keymaps</source>
        <translation>Cycle Keymaps</translation>
    </message>
    <message id="lkeyKeys">
        <source>Keys</source>
        <translation>Keys</translation>
    </message>
    <message id="lkeyLastLeftClick">
        <source>One of the controls 1 to 5 has to stay the left click: give another of the controls 1 to 5 the left click first</source>
        <translation>One of the controls 1 to 5 has to stay the left click: give another of the controls 1 to 5 the left click first</translation>
    </message>
    <message id="lkeyLastProfileStays">
        <source>The last profile cannot be deleted.</source>
        <translation>The last profile cannot be deleted.</translation>
    </message>
    <message id="lkeyLastStage">
        <source>One stage must remain.</source>
        <translation>One stage must remain.</translation>
    </message>
    <message id="lkeyLaunchProgram">
        <source>Launch Program</source>
        <translation>Launch Program</translation>
    </message>
    <message id="lkeyLaunches">
        <source>Launch “%1”</source>
        <translation>Launch “%1”</translation>
    </message>
    <message id="lkeyLeftAsItIs">
        <source>Left as it is: %1</source>
        <translation>Left as it is: %1</translation>
    </message>
    <message id="lkeyLeftClick">
        <source>Left Click</source>
        <translation>Left Click</translation>
    </message>
    <message id="lkeyLeftOut">
        <source>Left out: %1</source>
        <translation>Left out: %1</translation>
    </message>
    <message id="lkeyLeftOutControl">
        <source>button %1 – %2</source>
        <translation>button %1 – %2</translation>
    </message>
    <message id="lkeyLeftOutControls">
        <source>buttons %1 – %2</source>
        <translation>buttons %1 – %2</translation>
    </message>
    <message id="lkeyLeftOutCycle">
        <source>it cycles the keymaps, which needs it in every one</source>
        <translation>it cycles the keymaps, which needs it in every one</translation>
    </message>
    <message id="lkeyLight">
        <source>Light</source>
        <translation>Light</translation>
    </message>
    <message id="lkeyLightAppliedElsewhereNote">
        <source>Takes effect with Apply, in the first profile.
For this profile, set the brightness to Off.</source>
        <translation>Takes effect with Apply, in the first profile.
For this profile, set the brightness to Off.</translation>
    </message>
    <message id="lkeyLightAppliedNote">
        <source>Takes effect with Apply, in the first profile</source>
        <translation>Takes effect with Apply, in the first profile</translation>
    </message>
    <message id="lkeyLightColor">
        <source>Colour</source>
        <translation>Colour</translation>
    </message>
    <message id="lkeyLightColorParts">
        <source>RGB %1, %2, %3</source>
        <translation>RGB %1, %2, %3</translation>
    </message>
    <message id="lkeyLightOffDescription">
        <source>Light off</source>
        <translation>Light off</translation>
    </message>
    <message id="lkeyLightPreview">
        <source>Preview of the light</source>
        <translation>Preview of the light</translation>
    </message>
    <message id="lkeyLineGoneDesc">
        <source>The events of “%1” were changed meanwhile, by another program. Nothing else was changed.</source>
        <translation>The events of “%1” were changed meanwhile, by another program. Nothing else was changed.</translation>
    </message>
    <message id="lkeyLineGoneTitle">
        <source>This line is no longer there</source>
        <translation>This line is no longer there</translation>
    </message>
    <message id="lkeyListSeparator">
        <source>, </source>
        <translation>, </translation>
    </message>
    <message id="lkeyLostAssignments">
        <source>These controls go back to their default: %1.</source>
        <translation>These controls go back to their default: %1.</translation>
    </message>
    <message id="lkeyLostAssignmentsOfProfile">
        <source>%1 of “%2”</source>
        <translation>%1 of “%2”</translation>
    </message>
    <message id="lkeyMacro">
        <source>Macro</source>
        <translation>Macro</translation>
    </message>
    <message id="lkeyMacroAssignment">
        <source>Choose what plays a macro on the Buttons tab.</source>
        <translation>Choose what plays a macro on the Buttons tab.</translation>
    </message>
    <message id="lkeyMacroEvents">
        <source>Events</source>
        <translation>Events</translation>
    </message>
    <message id="lkeyMacroEventsColumn">
        <source>Events</source>
        <translation>Events</translation>
    </message>
    <message id="lkeyMacroFiles">
        <source>Skarn macros (%1)</source>
        <translation>Skarn macros (%1)</translation>
    </message>
    <message id="lkeyMacroHasBadEvent">
        <source>Event %1 of this macro is no key and no mouse button that the mouse can play.</source>
        <translation>Event %1 of this macro is no key and no mouse button that the mouse can play.</translation>
    </message>
    <message id="lkeyMacroHasTooManyEvents">
        <source>This macro is too long: it has more than %1 events.</source>
        <translation>This macro is too long: it has more than %1 events.</translation>
    </message>
    <message id="lkeyMacroMenu">
        <source>More for macros</source>
        <translation>More for macros</translation>
    </message>
    <message id="lkeyMacroNameColumn">
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message id="lkeyMacroNamed">
        <source>Macro “%1”</source>
        <translation>Macro “%1”</translation>
    </message>
    <message id="lkeyMacroNumbered">
        <source>Macro %1, which does not exist</source>
        <translation>Macro %1, which does not exist</translation>
    </message>
    <message id="lkeyMacroPlayback">
        <source>Playback</source>
        <translation>Playback</translation>
    </message>
    <message id="lkeyMacroRepeat">
        <source>How often the macro plays</source>
        <translation>How often the macro plays</translation>
    </message>
    <message id="lkeyMacroRepeatCurrent">
        <source>Repeat mode</source>
        <translation>Repeat mode</translation>
    </message>
    <message id="lkeyMacroRepeatTitle">
        <source>Repeat the macro</source>
        <translation>Repeat the macro</translation>
    </message>
    <message id="lkeyMainLight">
        <source>Main light</source>
        <translation>Main light</translation>
    </message>
    <message id="lkeyManageMacro">
        <source>Manage Macros…</source>
        <translation>Manage Macros…</translation>
    </message>
    <message id="lkeyManageProfile">
        <source>Manage Profiles…</source>
        <translation>Manage Profiles…</translation>
    </message>
    <message id="lkeyMiceBusy">
        <source>Another program teaches this mouse just now</source>
        <translation>Another program teaches this mouse just now</translation>
    </message>
    <message id="lkeyMiceChoosing">
        <source>The core engine changes to another mouse just now</source>
        <translation>The core engine changes to another mouse just now</translation>
    </message>
    <message id="lkeyMiceFirstUse">
        <source>First use this mouse</source>
        <translation>First use this mouse</translation>
    </message>
    <message id="lkeyMiceIsInUse">
        <source>This mouse is in use</source>
        <translation>This mouse is in use</translation>
    </message>
    <message id="lkeyMiceNoAnswer">
        <source>The core engine did not answer</source>
        <translation>The core engine did not answer</translation>
    </message>
    <message id="lkeyMiceNoneSelected">
        <source>No mouse is selected</source>
        <translation>No mouse is selected</translation>
    </message>
    <message id="lkeyMiceNotAllowed">
        <source>You may not use this mouse</source>
        <translation>You may not use this mouse</translation>
    </message>
    <message id="lkeyMiceNotFound">
        <source>This mouse is no longer there</source>
        <translation>This mouse is no longer there</translation>
    </message>
    <message id="lkeyMiceNotOffered">
        <source>This core engine offers no choice of the mouse</source>
        <translation>This core engine offers no choice of the mouse</translation>
    </message>
    <message id="lkeyMiceNotPlugged">
        <source>This mouse is not plugged in</source>
        <translation>This mouse is not plugged in</translation>
    </message>
    <message id="lkeyMiceNotSaved">
        <source>This could not be saved, and is not changed</source>
        <translation>This could not be saved, and is not changed</translation>
    </message>
    <message id="lkeyMiceNotTeachable">
        <source>Only a mouse that is plugged in and in use can be told this</source>
        <translation>Only a mouse that is plugged in and in use can be told this</translation>
    </message>
    <message id="lkeyMiceNothingTaught">
        <source>This mouse was taught nothing</source>
        <translation>This mouse was taught nothing</translation>
    </message>
    <message id="lkeyMiceTitle">
        <source>Choose a Mouse</source>
        <translation>Choose a Mouse</translation>
    </message>
    <message id="lkeyMiceUnknown">
        <source>The core engine has not told its mice yet</source>
        <translation>The core engine has not told its mice yet</translation>
    </message>
    <message id="lkeyMiceUsed">
        <source>“%1” is in use. Teach it the controls that it lacks.</source>
        <translation>“%1” is in use. Teach it the controls that it lacks.</translation>
    </message>
    <message id="lkeyMiceVirtualKnown">
        <source>There is nothing to tell of the virtual mouse</source>
        <translation>There is nothing to tell of the virtual mouse</translation>
    </message>
    <message id="lkeyMiceVirtualUsed">
        <source>“%1” is in use.</source>
        <translation>“%1” is in use.</translation>
    </message>
    <message id="lkeyMilliseconds">
        <source>ms</source>
        <translation>ms</translation>
    </message>
    <message id="lkeyMinuteUnit">
        <source>min</source>
        <translation>min</translation>
    </message>
    <message id="lkeyMostStages">
        <source>The mouse holds five stages at most.</source>
        <translation>The mouse holds five stages at most.</translation>
    </message>
    <message id="lkeyMouseAbsent">
        <source>Not plugged in</source>
        <translation>Not plugged in</translation>
    </message>
    <message id="lkeyMouseBusy">
        <source>Another program keeps a part of it for itself (%1). What is assigned there does nothing until it is let go.</source>
        <translation>Another program keeps a part of it for itself (%1). What is assigned there does nothing until it is let go.</translation>
    </message>
    <message id="lkeyMouseButton">
        <source>Mouse Button</source>
        <translation>Mouse Button</translation>
    </message>
    <message id="lkeyMouseButtonEight">
        <source>Button 8</source>
        <translation>Button 8</translation>
    </message>
    <message id="lkeyMouseButtonFive">
        <source>Button 5</source>
        <translation>Button 5</translation>
    </message>
    <message id="lkeyMouseButtonFour">
        <source>Button 4</source>
        <translation>Button 4</translation>
    </message>
    <message id="lkeyMouseButtonSeven">
        <source>Button 7</source>
        <translation>Button 7</translation>
    </message>
    <message id="lkeyMouseButtonSix">
        <source>Button 6</source>
        <translation>Button 6</translation>
    </message>
    <message id="lkeyMouseButtonThree">
        <source>Button 3</source>
        <translation>Button 3</translation>
    </message>
    <message id="lkeyMouseColumnConnection">
        <source>Connection</source>
        <translation>Connection</translation>
    </message>
    <message id="lkeyMouseColumnName">
        <source>Mouse</source>
        <translation>Mouse</translation>
    </message>
    <message id="lkeyMouseColumnState">
        <source>State</source>
        <translation>State</translation>
    </message>
    <message id="lkeyMouseCommand">
        <source>The command that mends it</source>
        <translation>The command that mends it</translation>
    </message>
    <message id="lkeyMouseControls">
        <source>%1 of %2 controls are found on it; the others can be taught.</source>
        <translation>%1 of %2 controls are found on it; the others can be taught.</translation>
    </message>
    <message id="lkeyMouseControlsTaught">
        <source>%1 of %2 controls are found on it, counting those that it was taught; %3 taught in all.</source>
        <translation>%1 of %2 controls are found on it, counting those that it was taught; %3 taught in all.</translation>
    </message>
    <message id="lkeyMouseDoctor">
        <source>In a terminal, “vornctl doctor” explains what is missing.</source>
        <translation>In a terminal, “vornctl doctor” explains what is missing.</translation>
    </message>
    <message id="lkeyMouseForbidden">
        <source>Not allowed</source>
        <translation>Not allowed</translation>
    </message>
    <message id="lkeyMouseForbiddenWhy">
        <source>You may not use this mouse: your account may not open %1.
The device rules that come with the package allow it to whoever sits at the machine. With them installed, this command puts them in force at once:</source>
        <translation>You may not use this mouse: your account may not open %1.
The device rules that come with the package allow it to whoever sits at the machine. With them installed, this command puts them in force at once:</translation>
    </message>
    <message id="lkeyMouseHeld">
        <source>Something on it is held down, and what is assigned there does nothing until it is let go (%1). Press it once more, or plug the mouse in again.</source>
        <translation>Something on it is held down, and what is assigned there does nothing until it is let go (%1). Press it once more, or plug the mouse in again.</translation>
    </message>
    <message id="lkeyMouseInUse">
        <source>In use</source>
        <translation>In use</translation>
    </message>
    <message id="lkeyMouseInUseAbsent">
        <source>In use, not plugged in</source>
        <translation>In use, not plugged in</translation>
    </message>
    <message id="lkeyMouseInUseForbidden">
        <source>In use, not allowed</source>
        <translation>In use, not allowed</translation>
    </message>
    <message id="lkeyMouseLacksControl">
        <source>The mouse in use has no such control, as far as is known. It can be taught, behind the picture at the top.</source>
        <translation>The mouse in use has no such control, as far as is known. It can be taught, behind the picture at the top.</translation>
    </message>
    <message id="lkeyMouseLacksLight">
        <source>This mouse does not offer its light. The setting is kept for a mouse that does.</source>
        <translation>This mouse does not offer its light. The setting is kept for a mouse that does.</translation>
    </message>
    <message id="lkeyMouseLacksPollingRate">
        <source>This mouse does not offer a polling rate. It is kept for a mouse that does.</source>
        <translation>This mouse does not offer a polling rate. It is kept for a mouse that does.</translation>
    </message>
    <message id="lkeyMouseLacksPower">
        <source>This mouse does not offer power settings. They are kept for a mouse that does.</source>
        <translation>This mouse does not offer power settings. They are kept for a mouse that does.</translation>
    </message>
    <message id="lkeyMouseLacksSensitivity">
        <source>The sensitivity of this mouse cannot be changed. It is kept for a mouse where it can.</source>
        <translation>The sensitivity of this mouse cannot be changed. It is kept for a mouse where it can.</translation>
    </message>
    <message id="lkeyMouseLight">
        <source>light</source>
        <translation>light</translation>
    </message>
    <message id="lkeyMouseMoreInUse">
        <source>What else it can do shows when it is in use.</source>
        <translation>What else it can do shows when it is in use.</translation>
    </message>
    <message id="lkeyMouseOffer">
        <source>Use %1 here?</source>
        <translation>Use %1 here?</translation>
    </message>
    <message id="lkeyMouseOffers">
        <source>Set in the mouse: %1.</source>
        <translation>Set in the mouse: %1.</translation>
    </message>
    <message id="lkeyMouseOffersNot">
        <source>Not offered by it: %1. Those settings are kept for a mouse that does.</source>
        <translation>Not offered by it: %1. Those settings are kept for a mouse that does.</translation>
    </message>
    <message id="lkeyMousePicture">
        <source>The mouse with its numbered controls</source>
        <translation>The mouse with its numbered controls</translation>
    </message>
    <message id="lkeyMousePollingRate">
        <source>polling rate</source>
        <translation>polling rate</translation>
    </message>
    <message id="lkeyMousePower">
        <source>power settings</source>
        <translation>power settings</translation>
    </message>
    <message id="lkeyMouseSensitivityHardware">
        <source>Its sensitivity is set in the mouse itself.</source>
        <translation>Its sensitivity is set in the mouse itself.</translation>
    </message>
    <message id="lkeyMouseSensitivityMissing">
        <source>Its sensitivity cannot be changed.</source>
        <translation>Its sensitivity cannot be changed.</translation>
    </message>
    <message id="lkeyMouseSensitivityScaled">
        <source>Its sensitivity is made by scaling its motion, from %1 DPI.</source>
        <translation>Its sensitivity is made by scaling its motion, from %1 DPI.</translation>
    </message>
    <message id="lkeyMouseTellsBattery">
        <source>It tells its battery.</source>
        <translation>It tells its battery.</translation>
    </message>
    <message id="lkeyMouseVirtual">
        <source>None: to try things</source>
        <translation>None: to try things</translation>
    </message>
    <message id="lkeyMouseVirtualAbout">
        <source>The virtual mouse has every control and every setting, and nothing to hold: for trying things out, and for the command line.</source>
        <translation>The virtual mouse has every control and every setting, and nothing to hold: for trying things out, and for the command line.</translation>
    </message>
    <message id="lkeyMouseWired">
        <source>Cable</source>
        <translation>Cable</translation>
    </message>
    <message id="lkeyMouseWireless">
        <source>Wireless</source>
        <translation>Wireless</translation>
    </message>
    <message id="lkeyMoveDown">
        <source>Move Down</source>
        <translation>Move Down</translation>
    </message>
    <message id="lkeyMoveUp">
        <source>Move Up</source>
        <translation>Move Up</translation>
    </message>
    <message id="lkeyName">
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message id="lkeyNew">
        <source>New</source>
        <translation>New</translation>
    </message>
    <message id="lkeyNewMacro">
        <source>New macro</source>
        <translation>New macro</translation>
    </message>
    <message id="lkeyNewProfile">
        <source>New profile</source>
        <translation>New profile</translation>
    </message>
    <message id="lkeyNews">
        <source>News</source>
        <translation>News</translation>
    </message>
    <message id="lkeyNewsTip">
        <source>Open the news page in your browser</source>
        <translation>Open the news page in your browser</translation>
    </message>
    <message id="lkeyNoApplicationAssigned">
        <source>No application is assigned to this profile.</source>
        <translation>No application is assigned to this profile.</translation>
    </message>
    <message id="lkeyNoApplicationDesc">
        <source>What you chose is not an application, or it can no longer be read. The assignment stays as it was.</source>
        <translation>What you chose is not an application, or it can no longer be read. The assignment stays as it was.</translation>
    </message>
    <message id="lkeyNoApplicationFound">
        <source>No application is called “%1”.</source>
        <translation>No application is called “%1”.</translation>
    </message>
    <message id="lkeyNoApplicationSelected">
        <source>Select an application in the list first</source>
        <translation>Select an application in the list first</translation>
    </message>
    <message id="lkeyNoApplicationTitle">
        <source>This cannot be launched</source>
        <translation>This cannot be launched</translation>
    </message>
    <message id="lkeyNoApplications">
        <source>No installed applications were found. Choose Browse to look for one.</source>
        <translation>No installed applications were found. Choose Browse to look for one.</translation>
    </message>
    <message id="lkeyNoControlFound">
        <source>No control does this</source>
        <translation>No control does this</translation>
    </message>
    <message id="lkeyNoDelay">
        <source>Remove All Delays</source>
        <translation>Remove All Delays</translation>
    </message>
    <message id="lkeyNoDelayAfterLast">
        <source>A macro ends with its last event</source>
        <translation>A macro ends with its last event</translation>
    </message>
    <message id="lkeyNoDelayBeforeFirst">
        <source>A macro begins with its first event</source>
        <translation>A macro begins with its first event</translation>
    </message>
    <message id="lkeyNoEvents">
        <source>Record to add events.</source>
        <translation>Record to add events.</translation>
    </message>
    <message id="lkeyNoEventsTitle">
        <source>No events yet</source>
        <translation>No events yet</translation>
    </message>
    <message id="lkeyNoFileNamed">
        <source>Name a file or choose one in the list</source>
        <translation>Name a file or choose one in the list</translation>
    </message>
    <message id="lkeyNoKeyFound">
        <source>No key is called so</source>
        <translation>No key is called so</translation>
    </message>
    <message id="lkeyNoKeyNoChange">
        <source>Without a key, OK changes nothing</source>
        <translation>Without a key, OK changes nothing</translation>
    </message>
    <message id="lkeyNoKeyPressed">
        <source>No key has been pressed yet</source>
        <translation>No key has been pressed yet</translation>
    </message>
    <message id="lkeyNoKeymapCopied">
        <source>Copy a keymap first</source>
        <translation>Copy a keymap first</translation>
    </message>
    <message id="lkeyNoMacroFound">
        <source>No macro has this in its name.</source>
        <translation>No macro has this in its name.</translation>
    </message>
    <message id="lkeyNoMacroSelected">
        <source>Select a macro to see its events.</source>
        <translation>Select a macro to see its events.</translation>
    </message>
    <message id="lkeyNoMacrosNote">
        <source>A macro is a recorded sequence of keys and mouse buttons that one button plays back.</source>
        <translation>A macro is a recorded sequence of keys and mouse buttons that one button plays back.</translation>
    </message>
    <message id="lkeyNoMacrosTitle">
        <source>No macros yet</source>
        <translation>No macros yet</translation>
    </message>
    <message id="lkeyNoMouseConnected">
        <source>No mouse connected</source>
        <translation>No mouse connected</translation>
    </message>
    <message id="lkeyNoOtherProfile">
        <source>There is no other profile to compare it with.</source>
        <translation>There is no other profile to compare it with.</translation>
    </message>
    <message id="lkeyNoPartner">
        <source>What is selected has no press or release that belongs to it</source>
        <translation>What is selected has no press or release that belongs to it</translation>
    </message>
    <message id="lkeyNoRoomForMacro">
        <source>The mouse holds as many macros as it can. Delete one that you no longer need, then try again.</source>
        <translation>The mouse holds as many macros as it can. Delete one that you no longer need, then try again.</translation>
    </message>
    <message id="lkeyNoRoomForProfile">
        <source>The mouse holds five profiles. Delete one first.</source>
        <translation>The mouse holds five profiles. Delete one first.</translation>
    </message>
    <message id="lkeyNoStageSelected">
        <source>No stage is selected.</source>
        <translation>No stage is selected.</translation>
    </message>
    <message id="lkeyNoSuchKeymap">
        <source>This profile has no such keymap</source>
        <translation>This profile has no such keymap</translation>
    </message>
    <message id="lkeyNoSwitchBackCycle">
        <source>Cycling through the keymaps does not switch back</source>
        <translation>Cycling through the keymaps does not switch back</translation>
    </message>
    <message id="lkeyNoSwitchBackWheel">
        <source>Turning the wheel is over at once: there is nothing to let go</source>
        <translation>Turning the wheel is over at once: there is nothing to let go</translation>
    </message>
    <message id="lkeyNothingCopied">
        <source>Copy what another control does first</source>
        <translation>Copy what another control does first</translation>
    </message>
    <message id="lkeyNothingToAdd">
        <source>Enter more than 0 milliseconds</source>
        <translation>Enter more than 0 milliseconds</translation>
    </message>
    <message id="lkeyNothingToPaste">
        <source>Copy or cut events first, or a text in another program</source>
        <translation>Copy or cut events first, or a text in another program</translation>
    </message>
    <message id="lkeyNothingToRedo">
        <source>There is nothing to redo</source>
        <translation>There is nothing to redo</translation>
    </message>
    <message id="lkeyNothingToUndo">
        <source>There is nothing to undo</source>
        <translation>There is nothing to undo</translation>
    </message>
    <message id="lkeyOK">
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message id="lkeyOff">
        <source>Off</source>
        <translation>Off</translation>
    </message>
    <message id="lkeyOn">
        <source>On</source>
        <translation>On</translation>
    </message>
    <message id="lkeyOnTheFlySensitivity">
        <source>On-the-Fly Sensitivity</source>
        <translation>On-the-Fly Sensitivity</translation>
    </message>
    <message id="lkeyOpenFile">
        <source>Open File</source>
        <translation>Open File</translation>
    </message>
    <message id="lkeyPageNotOpenedDesc">
        <source>No web browser could be started. This is the address of the page:</source>
        <translation>No web browser could be started. This is the address of the page:</translation>
    </message>
    <message id="lkeyPageNotOpenedTitle">
        <source>The page could not be opened</source>
        <translation>The page could not be opened</translation>
    </message>
    <message id="lkeyPaste">
        <source>Paste</source>
        <translation>Paste</translation>
    </message>
    <message id="lkeyPlay">
        <source>Play…</source>
        <translation>Play…</translation>
    </message>
    <message id="lkeyPlayAction">
        <source>Play</source>
        <translation>Play</translation>
    </message>
    <message id="lkeyPlayEnded">
        <source>Played to the end: %1 events</source>
        <translation>Played to the end: %1 events</translation>
    </message>
    <message id="lkeyPlayEndedOne">
        <source>Played to the end: 1 event</source>
        <translation>Played to the end: 1 event</translation>
    </message>
    <message id="lkeyPlayField">
        <source>What the macro types</source>
        <translation>What the macro types</translation>
    </message>
    <message id="lkeyPlayMacro">
        <source>Play %1</source>
        <translation>Play %1</translation>
    </message>
    <message id="lkeyPlayMacroOnce">
        <source>Play Macro Once</source>
        <translation>Play Macro Once</translation>
    </message>
    <message id="lkeyPlayNote">
        <source>What the macro types appears here and nowhere else. Shortcuts and clicks are told below and not carried out.</source>
        <translation>What the macro types appears here and nowhere else. Shortcuts and clicks are told below and not carried out.</translation>
    </message>
    <message id="lkeyPlayProgress">
        <source>%1 of %2: %3</source>
        <translation>%1 of %2: %3</translation>
    </message>
    <message id="lkeyPlayStopped">
        <source>Stopped after %1 of %2 events</source>
        <translation>Stopped after %1 of %2 events</translation>
    </message>
    <message id="lkeyPlayTitle">
        <source>Play</source>
        <translation>Play</translation>
    </message>
    <message id="lkeyPlayedBy">
        <source>Controls that play it: %1</source>
        <translation>Controls that play it: %1</translation>
    </message>
    <message id="lkeyPointerGroup">
        <source>Pointer</source>
        <translation>Pointer</translation>
    </message>
    <message id="lkeyPollingRate">
        <source>Polling rate</source>
        <translation>Polling rate</translation>
    </message>
    <message id="lkeyPollingRateNote">
        <source>The same for every profile</source>
        <translation>The same for every profile</translation>
    </message>
    <message id="lkeyPowerGroup">
        <source>Power of the wireless mouse</source>
        <translation>Power of the wireless mouse</translation>
    </message>
    <message id="lkeyPressAKey">
        <source>Press a key…</source>
        <translation>Press a key…</translation>
    </message>
    <message id="lkeyPressedAtEnd">
        <source>Still pressed at the end: %1. The macro lets go of it when it ends.</source>
        <translation>Still pressed at the end: %1. The macro lets go of it when it ends.</translation>
    </message>
    <message id="lkeyProblemCycle">
        <source>What cycles the keymaps is the same in all of them and cannot be swapped</source>
        <translation>What cycles the keymaps is the same in all of them and cannot be swapped</translation>
    </message>
    <message id="lkeyProblemDefault">
        <source>It does what it does out of the box</source>
        <translation>It does what it does out of the box</translation>
    </message>
    <message id="lkeyProblemDiagonal">
        <source>What a diagonal of the direction pad does out of the box, no other control can do</source>
        <translation>What a diagonal of the direction pad does out of the box, no other control can do</translation>
    </message>
    <message id="lkeyProblemNeverHeld">
        <source>The wheel’s directions are never held: they have no switch back, and no repeat until something ends</source>
        <translation>The wheel’s directions are never held: they have no switch back, and no repeat until something ends</translation>
    </message>
    <message id="lkeyProblemNoChange">
        <source>It does that already</source>
        <translation>It does that already</translation>
    </message>
    <message id="lkeyProblemOwnProfile">
        <source>It would switch to the profile that it belongs to</source>
        <translation>It would switch to the profile that it belongs to</translation>
    </message>
    <message id="lkeyProfile">
        <source>Profile</source>
        <translation>Profile</translation>
    </message>
    <message id="lkeyProfileApplicationColumn">
        <source>Application</source>
        <translation>Application</translation>
    </message>
    <message id="lkeyProfileAutoSwitchColumn">
        <source>Auto switch</source>
        <translation>Auto switch</translation>
    </message>
    <message id="lkeyProfileCaption">
        <source>Profile</source>
        <translation>Profile</translation>
    </message>
    <message id="lkeyProfileFiles">
        <source>Skarn profiles (%1)</source>
        <translation>Skarn profiles (%1)</translation>
    </message>
    <message id="lkeyProfileFolders">
        <source>Folders of Skarn profiles (%1)</source>
        <translation>Folders of Skarn profiles (%1)</translation>
    </message>
    <message id="lkeyProfileIsFirst">
        <source>It is the first profile.</source>
        <translation>It is the first profile.</translation>
    </message>
    <message id="lkeyProfileIsLast">
        <source>It is the last profile.</source>
        <translation>It is the last profile.</translation>
    </message>
    <message id="lkeyProfileMenu">
        <source>More for profiles</source>
        <translation>More for profiles</translation>
    </message>
    <message id="lkeyProfileMoved">
        <source>“%1” is profile %2 now.</source>
        <translation>“%1” is profile %2 now.</translation>
    </message>
    <message id="lkeyProfileNameColumn">
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message id="lkeyProfileNamed">
        <source>Profile “%1”</source>
        <translation>Profile “%1”</translation>
    </message>
    <message id="lkeyProfileNotCurrentDesc">
        <source>Another profile is in force by now. Nothing was changed.</source>
        <translation>Another profile is in force by now. Nothing was changed.</translation>
    </message>
    <message id="lkeyProfileNotCurrentTitle">
        <source>“%1” is no longer the current profile</source>
        <translation>“%1” is no longer the current profile</translation>
    </message>
    <message id="lkeyProfileNotMoved">
        <source>“%1” was not moved. %2</source>
        <translation>“%1” was not moved. %2</translation>
    </message>
    <message id="lkeyProfileNumberColumn">
        <source>No.</source>
        <translation>No.</translation>
    </message>
    <message id="lkeyProfileNumbered">
        <source>Profile %1, which does not exist</source>
        <translation>Profile %1, which does not exist</translation>
    </message>
    <message id="lkeyProfileOnScreenDisplay">
        <source>Show the profile on screen when it changes</source>
        <translation>Show the profile on screen when it changes</translation>
    </message>
    <message id="lkeyProfilesChangedMeanwhile">
        <source>The profiles have changed meanwhile. None was moved.</source>
        <translation>The profiles have changed meanwhile. None was moved.</translation>
    </message>
    <message id="lkeyProfilesFolderName">
        <source>Skarn Profiles</source>
        <translation>Skarn Profiles</translation>
    </message>
    <message id="lkeyRecord">
        <source>Record</source>
        <translation>Record</translation>
    </message>
    <message id="lkeyRecordGoneDesc">
        <source>It was deleted or renamed meanwhile, by another program or on the mouse. Nothing was changed.</source>
        <translation>It was deleted or renamed meanwhile, by another program or on the mouse. Nothing was changed.</translation>
    </message>
    <message id="lkeyRecordGoneTitle">
        <source>“%1” is no longer there</source>
        <translation>“%1” is no longer there</translation>
    </message>
    <message id="lkeyRecordIsNotWritable">
        <source>This profile or macro cannot be put into a file.</source>
        <translation>This profile or macro cannot be put into a file.</translation>
    </message>
    <message id="lkeyRecordIsTooLarge">
        <source>This profile or macro is too large for the mouse.</source>
        <translation>This profile or macro is too large for the mouse.</translation>
    </message>
    <message id="lkeyRecordingDiscarded">
        <source>Recording discarded</source>
        <translation>Recording discarded</translation>
    </message>
    <message id="lkeyRecordingLostDesc">
        <source>“%1” was deleted while it was being recorded.</source>
        <translation>“%1” was deleted while it was being recorded.</translation>
    </message>
    <message id="lkeyRecordingLostTitle">
        <source>The recording has ended</source>
        <translation>The recording has ended</translation>
    </message>
    <message id="lkeyRecordingProgress">
        <source>Events: %1, %2:%3</source>
        <translation>Events: %1, %2:%3</translation>
    </message>
    <message id="lkeyRecordingTakenDesc">
        <source>Another program has begun to record. What was recorded for “%1” is lost; the macro is as it was.</source>
        <translation>Another program has begun to record. What was recorded for “%1” is lost; the macro is as it was.</translation>
    </message>
    <message id="lkeyRedo">
        <source>Redo</source>
        <translation>Redo</translation>
    </message>
    <message id="lkeyRedoChangedSince">
        <source>Not redone: all of it has been changed since</source>
        <translation>Not redone: all of it has been changed since</translation>
    </message>
    <message id="lkeyRedoDone">
        <source>Redone: %1</source>
        <translation>Redone: %1</translation>
    </message>
    <message id="lkeyRedoDoneSeveral">
        <source>%1 changes redone</source>
        <translation>%1 changes redone</translation>
    </message>
    <message id="lkeyRedoNotSaved">
        <source>Not redone: the settings cannot be saved</source>
        <translation>Not redone: the settings cannot be saved</translation>
    </message>
    <message id="lkeyRedoOtherBetween">
        <source>Not redone: another change has come in between</source>
        <translation>Not redone: another change has come in between</translation>
    </message>
    <message id="lkeyRedoTip">
        <source>Redo: %1</source>
        <translation>Redo: %1</translation>
    </message>
    <message id="lkeyReduceBrightness">
        <source>Light brightness on battery</source>
        <translation>Light brightness on battery</translation>
    </message>
    <message id="lkeyRemoveApplication">
        <source>Remove Application</source>
        <translation>Remove Application</translation>
    </message>
    <message id="lkeyRename">
        <source>Rename</source>
        <translation>Rename</translation>
    </message>
    <message id="lkeyRepeat10Times">
        <source>Repeat 10 Times</source>
        <translation>Repeat 10 Times</translation>
    </message>
    <message id="lkeyRepeat2Times">
        <source>Repeat 2 Times</source>
        <translation>Repeat 2 Times</translation>
    </message>
    <message id="lkeyRepeat3Times">
        <source>Repeat 3 Times</source>
        <translation>Repeat 3 Times</translation>
    </message>
    <message id="lkeyRepeat4Times">
        <source>Repeat 4 Times</source>
        <translation>Repeat 4 Times</translation>
    </message>
    <message id="lkeyRepeat5Times">
        <source>Repeat 5 Times</source>
        <translation>Repeat 5 Times</translation>
    </message>
    <message id="lkeyRepeat6Times">
        <source>Repeat 6 Times</source>
        <translation>Repeat 6 Times</translation>
    </message>
    <message id="lkeyRepeat7Times">
        <source>Repeat 7 Times</source>
        <translation>Repeat 7 Times</translation>
    </message>
    <message id="lkeyRepeat8Times">
        <source>Repeat 8 Times</source>
        <translation>Repeat 8 Times</translation>
    </message>
    <message id="lkeyRepeat9Times">
        <source>Repeat 9 Times</source>
        <translation>Repeat 9 Times</translation>
    </message>
    <message id="lkeyRepeatUntilPressedAgain">
        <source>Repeat Until Pressed Again</source>
        <translation>Repeat Until Pressed Again</translation>
    </message>
    <message id="lkeyRepeatUntilReleased">
        <source>Repeat Until Released</source>
        <translation>Repeat Until Released</translation>
    </message>
    <message id="lkeyReplace">
        <source>Replace</source>
        <translation>Replace</translation>
    </message>
    <message id="lkeyReplaceFileDesc">
        <source>Do you want to replace it? What it holds now will be lost.</source>
        <translation>Do you want to replace it? What it holds now will be lost.</translation>
    </message>
    <message id="lkeyReplaceFileTitle">
        <source>“%1” already exists</source>
        <translation>“%1” already exists</translation>
    </message>
    <message id="lkeyReset">
        <source>Reset</source>
        <translation>Reset</translation>
    </message>
    <message id="lkeyResolutionAbout">
        <source>What the mouse itself counts in an inch. Its sensitivity is scaled from this: where it is wrong, the pointer is too fast or too slow.</source>
        <translation>What the mouse itself counts in an inch. Its sensitivity is scaled from this: where it is wrong, the pointer is too fast or too slow.</translation>
    </message>
    <message id="lkeyResolutionAutomatic">
        <source>Automatic</source>
        <translation>Automatic</translation>
    </message>
    <message id="lkeyResolutionCleared">
        <source>The resolution is automatic again</source>
        <translation>The resolution is automatic again</translation>
    </message>
    <message id="lkeyResolutionEllipsis">
        <source>Correct Resolution…</source>
        <translation>Correct Resolution…</translation>
    </message>
    <message id="lkeyResolutionField">
        <source>Resolution of the mouse in DPI</source>
        <translation>Resolution of the mouse in DPI</translation>
    </message>
    <message id="lkeyResolutionNote">
        <source>0 is automatic: what the system knows of the mouse, or else 800 DPI.</source>
        <translation>0 is automatic: what the system knows of the mouse, or else 800 DPI.</translation>
    </message>
    <message id="lkeyResolutionRange">
        <source>A resolution is %1 to %2 DPI, or 0</source>
        <translation>A resolution is %1 to %2 DPI, or 0</translation>
    </message>
    <message id="lkeyResolutionSet">
        <source>The resolution is %1 DPI</source>
        <translation>The resolution is %1 DPI</translation>
    </message>
    <message id="lkeyResolutionSuffix">
        <source> DPI</source>
        <translation> DPI</translation>
    </message>
    <message id="lkeyResolutionTitle">
        <source>Correct the Resolution</source>
        <translation>Correct the Resolution</translation>
    </message>
    <message id="lkeyRestoreAction">
        <source>Restore</source>
        <translation>Restore</translation>
    </message>
    <message id="lkeyRestoreDefault">
        <source>Restore Defaults…</source>
        <translation>Restore Defaults…</translation>
    </message>
    <message id="lkeyRestoreDefaultDesc">
        <source>Assignments, sensitivity and lighting of the profile go back to the factory state, and its application is removed. So do the polling rate and the power settings, which are the same for all profiles. The profile keeps its name; everything else of the other profiles and your macros stay as they are.</source>
        <translation>Assignments, sensitivity and lighting of the profile go back to the factory state, and its application is removed. So do the polling rate and the power settings, which are the same for all profiles. The profile keeps its name; everything else of the other profiles and your macros stay as they are.</translation>
    </message>
    <message id="lkeyRestoreDefaultTitle">
        <source>Restore Profile “%1” to Its Factory Settings?</source>
        <translation>Restore Profile “%1” to Its Factory Settings?</translation>
    </message>
    <message id="lkeyRestoreNote">
        <source>Gives this profile its factory settings; it keeps its name. Polling rate and power settings go back for all profiles.</source>
        <translation>Gives this profile its factory settings; it keeps its name. Polling rate and power settings go back for all profiles.</translation>
    </message>
    <message id="lkeyRestoringState">
        <source>Waiting for the core engine and reading the settings of the mouse…</source>
        <translation>Waiting for the core engine and reading the settings of the mouse…</translation>
    </message>
    <message id="lkeyRightClick">
        <source>Right Click</source>
        <translation>Right Click</translation>
    </message>
    <message id="lkeyScrollDown">
        <source>Scroll Down</source>
        <translation>Scroll Down</translation>
    </message>
    <message id="lkeyScrollUp">
        <source>Scroll Up</source>
        <translation>Scroll Up</translation>
    </message>
    <message id="lkeySearchApplications">
        <source>Search applications</source>
        <translation>Search applications</translation>
    </message>
    <message id="lkeySearchKeys">
        <source>Search keys</source>
        <translation>Search keys</translation>
    </message>
    <message id="lkeySearchMacros">
        <source>Search macros</source>
        <translation>Search macros</translation>
    </message>
    <message id="lkeySearchMacrosTip">
        <source>Finds macros by their names (%1)</source>
        <translation>Finds macros by their names (%1)</translation>
    </message>
    <message id="lkeySelectDelayFirst">
        <source>Select a delay first</source>
        <translation>Select a delay first</translation>
    </message>
    <message id="lkeySelectEventFirst">
        <source>Select an event first</source>
        <translation>Select an event first</translation>
    </message>
    <message id="lkeySelectLineFirst">
        <source>Select an event or a delay first</source>
        <translation>Select an event or a delay first</translation>
    </message>
    <message id="lkeySelectMacroFirst">
        <source>Select a macro first</source>
        <translation>Select a macro first</translation>
    </message>
    <message id="lkeySelectOneEvent">
        <source>Select one event, or delays</source>
        <translation>Select one event, or delays</translation>
    </message>
    <message id="lkeySelectedStage">
        <source>Selected stage</source>
        <translation>Selected stage</translation>
    </message>
    <message id="lkeySensitivityGroup">
        <source>Sensitivity</source>
        <translation>Sensitivity</translation>
    </message>
    <message id="lkeySensitivityStageDown">
        <source>Sensitivity Stage Down</source>
        <translation>Sensitivity Stage Down</translation>
    </message>
    <message id="lkeySensitivityStageUp">
        <source>Sensitivity Stage Up</source>
        <translation>Sensitivity Stage Up</translation>
    </message>
    <message id="lkeySensitivityX">
        <source>X sensitivity in DPI</source>
        <translation>X sensitivity in DPI</translation>
    </message>
    <message id="lkeySensitivityY">
        <source>Y sensitivity in DPI</source>
        <translation>Y sensitivity in DPI</translation>
    </message>
    <message id="lkeySheetSubject">
        <source>%1 · %2, %3</source>
        <translation>%1 · %2, %3</translation>
    </message>
    <message id="lkeySideStrips">
        <source>Side strips</source>
        <translation>Side strips</translation>
    </message>
    <message id="lkeySingleKey">
        <source>Single Key</source>
        <translation>Single Key</translation>
    </message>
    <message id="lkeySingleKeyDesc">
        <source>Press the key, with modifiers if you like, whichever it is; then Return confirms it and Escape cancels.</source>
        <translation>Press the key, with modifiers if you like, whichever it is; then Return confirms it and Escape cancels.</translation>
    </message>
    <message id="lkeySingleKeyField">
        <source>Key</source>
        <translation>Key</translation>
    </message>
    <message id="lkeySingleKeyNameless">
        <source>A key without a name</source>
        <translation>A key without a name</translation>
    </message>
    <message id="lkeySingleKeyPlaceholder">
        <source>No key yet</source>
        <translation>No key yet</translation>
    </message>
    <message id="lkeySingleKeyTitle">
        <source>Assign a single key</source>
        <translation>Assign a single key</translation>
    </message>
    <message id="lkeySoManyTimes">
        <source>%1, %2 times</source>
        <translation>%1, %2 times</translation>
    </message>
    <message id="lkeySourceBack">
        <source>Back button</source>
        <translation>Back button</translation>
    </message>
    <message id="lkeySourceButton">
        <source>Button %1</source>
        <translation>Button %1</translation>
    </message>
    <message id="lkeySourceExtra">
        <source>Second side button</source>
        <translation>Second side button</translation>
    </message>
    <message id="lkeySourceForward">
        <source>Forward button</source>
        <translation>Forward button</translation>
    </message>
    <message id="lkeySourceKey">
        <source>%1 key</source>
        <translation>%1 key</translation>
    </message>
    <message id="lkeySourceKeypad">
        <source>Keypad %1</source>
        <translation>Keypad %1</translation>
    </message>
    <message id="lkeySourceLeft">
        <source>Left button</source>
        <translation>Left button</translation>
    </message>
    <message id="lkeySourceMiddle">
        <source>Middle button</source>
        <translation>Middle button</translation>
    </message>
    <message id="lkeySourceRight">
        <source>Right button</source>
        <translation>Right button</translation>
    </message>
    <message id="lkeySourceSide">
        <source>Side button</source>
        <translation>Side button</translation>
    </message>
    <message id="lkeySourceTask">
        <source>Task button</source>
        <translation>Task button</translation>
    </message>
    <message id="lkeySourceWheelDown">
        <source>Wheel down</source>
        <translation>Wheel down</translation>
    </message>
    <message id="lkeySourceWheelLeft">
        <source>Wheel to the left</source>
        <translation>Wheel to the left</translation>
    </message>
    <message id="lkeySourceWheelRight">
        <source>Wheel to the right</source>
        <translation>Wheel to the right</translation>
    </message>
    <message id="lkeySourceWheelUp">
        <source>Wheel up</source>
        <translation>Wheel up</translation>
    </message>
    <message id="lkeySpectrumCycling">
        <source>Spectrum cycling</source>
        <translation>Spectrum cycling</translation>
    </message>
    <message id="lkeyStageColumn">
        <source>Stage</source>
        <translation>Stage</translation>
    </message>
    <message id="lkeyStageSensitivityX">
        <source>X sensitivity of the stage in DPI</source>
        <translation>X sensitivity of the stage in DPI</translation>
    </message>
    <message id="lkeyStageSensitivityY">
        <source>Y sensitivity of the stage in DPI</source>
        <translation>Y sensitivity of the stage in DPI</translation>
    </message>
    <message id="lkeyStageValueColumn">
        <source>Sensitivity</source>
        <translation>Sensitivity</translation>
    </message>
    <message id="lkeyStages">
        <source>Stages (DPI)</source>
        <translation>Stages (DPI)</translation>
    </message>
    <message id="lkeyStagesOfProfile">
        <source>Sensitivity Stages of “%1”</source>
        <translation>Sensitivity Stages of “%1”</translation>
    </message>
    <message id="lkeyStagesTable">
        <source>Stages</source>
        <translation>Stages</translation>
    </message>
    <message id="lkeyStagesTitle">
        <source>Sensitivity Stages</source>
        <translation>Sensitivity Stages</translation>
    </message>
    <message id="lkeyStagesUnchanged">
        <source>Nothing has been changed</source>
        <translation>Nothing has been changed</translation>
    </message>
    <message id="lkeyStartEngine">
        <source>Start the Core Engine</source>
        <translation>Start the Core Engine</translation>
    </message>
    <message id="lkeyStartEngineHint">
        <source>Has the desktop start vorn-core-engine in the background</source>
        <translation>Has the desktop start vorn-core-engine in the background</translation>
    </message>
    <message id="lkeyStartFailedNotInstalled">
        <source>vorn-core-engine is not installed as a service of your session. Start it in a terminal, or install Skarn.</source>
        <translation>vorn-core-engine is not installed as a service of your session. Start it in a terminal, or install Skarn.</translation>
    </message>
    <message id="lkeyStartFailedReason">
        <source>The reason that the session gives: “%1”. Start vorn-core-engine in a terminal to learn more.</source>
        <translation>The reason that the session gives: “%1”. Start vorn-core-engine in a terminal to learn more.</translation>
    </message>
    <message id="lkeyStartFailedTimeout">
        <source>It was asked to start, but it is not there yet. If it still comes, your settings appear by themselves. If not, start vorn-core-engine in a terminal to see what keeps it.</source>
        <translation>It was asked to start, but it is not there yet. If it still comes, your settings appear by themselves. If not, start vorn-core-engine in a terminal to see what keeps it.</translation>
    </message>
    <message id="lkeyStartFailedTitle">
        <source>The core engine could not be started</source>
        <translation>The core engine could not be started</translation>
    </message>
    <message id="lkeyStateDeviceGone">
        <source>No mouse connected.</source>
        <translation>No mouse connected.</translation>
    </message>
    <message id="lkeyStateEngineGone">
        <source>The core engine has stopped.</source>
        <translation>The core engine has stopped.</translation>
    </message>
    <message id="lkeyStateEngineSilent">
        <source>The core engine does not answer; nothing was changed.</source>
        <translation>The core engine does not answer; nothing was changed.</translation>
    </message>
    <message id="lkeyStateEngineStarting">
        <source>Starting the core engine…</source>
        <translation>Starting the core engine…</translation>
    </message>
    <message id="lkeyStateNoDevice">
        <source>No mouse connected; these are the default settings.</source>
        <translation>No mouse connected; these are the default settings.</translation>
    </message>
    <message id="lkeyStateNoEngine">
        <source>No core engine: these are the default settings.</source>
        <translation>No core engine: these are the default settings.</translation>
    </message>
    <message id="lkeyStateStarting">
        <source>Waiting for the core engine…</source>
        <translation>Waiting for the core engine…</translation>
    </message>
    <message id="lkeyStopAction">
        <source>Stop</source>
        <translation>Stop</translation>
    </message>
    <message id="lkeyStopRecordingFirst">
        <source>Stop the recording first</source>
        <translation>Stop the recording first</translation>
    </message>
    <message id="lkeySwap">
        <source>Swap</source>
        <translation>Swap</translation>
    </message>
    <message id="lkeySwapCaption">
        <source>With</source>
        <translation>With</translation>
    </message>
    <message id="lkeySwapTitle">
        <source>Swap two controls</source>
        <translation>Swap two controls</translation>
    </message>
    <message id="lkeySwapWith">
        <source>Swap With…</source>
        <translation>Swap With…</translation>
    </message>
    <message id="lkeySwitchBackItem">
        <source>Switch Back When Let Go</source>
        <translation>Switch Back When Let Go</translation>
    </message>
    <message id="lkeySwitchesFor">
        <source>Comes into force when “%1” is in front</source>
        <translation>Comes into force when “%1” is in front</translation>
    </message>
    <message id="lkeySwitchesForNone">
        <source>Tick to choose the application that this profile is for</source>
        <translation>Tick to choose the application that this profile is for</translation>
    </message>
    <message id="lkeySwitchesNotFor">
        <source>Tick to have this profile come into force when “%1” is in front</source>
        <translation>Tick to have this profile come into force when “%1” is in front</translation>
    </message>
    <message id="lkeyTabButtons">
        <source>Buttons</source>
        <translation>Buttons</translation>
    </message>
    <message id="lkeyTabLighting">
        <source>Lighting</source>
        <translation>Lighting</translation>
    </message>
    <message id="lkeyTabMacros">
        <source>Macros</source>
        <translation>Macros</translation>
    </message>
    <message id="lkeyTabMaintenance">
        <source>Maintenance</source>
        <translation>Maintenance</translation>
    </message>
    <message id="lkeyTabPerformance">
        <source>Performance</source>
        <translation>Performance</translation>
    </message>
    <message id="lkeyTabProfiles">
        <source>Profiles</source>
        <translation>Profiles</translation>
    </message>
    <message id="lkeyTabs">
        <source>Settings of the mouse</source>
        <translation>Settings of the mouse</translation>
    </message>
    <message id="lkeyTeachEllipsis">
        <source>Teach the Controls…</source>
        <translation>Teach the Controls…</translation>
    </message>
    <message id="lkeyTeachingAgain">
        <source>Ask Again</source>
        <translation>Ask Again</translation>
    </message>
    <message id="lkeyTeachingBack">
        <source>Back</source>
        <translation>Back</translation>
    </message>
    <message id="lkeyTeachingDone">
        <source>%1 is now: %2</source>
        <translation>%1 is now: %2</translation>
    </message>
    <message id="lkeyTeachingFinish">
        <source>Finish</source>
        <translation>Finish</translation>
    </message>
    <message id="lkeyTeachingKeys">
        <source>Ctrl+Right skips, Ctrl+Left goes back, Ctrl+Down asks again, Ctrl+Return finishes. Other keys do nothing here, as they may come from the mouse.</source>
        <translation>Ctrl+Right skips, Ctrl+Left goes back, Ctrl+Down asks again, Ctrl+Return finishes. Other keys do nothing here, as they may come from the mouse.</translation>
    </message>
    <message id="lkeyTeachingList">
        <source>What was taught</source>
        <translation>What was taught</translation>
    </message>
    <message id="lkeyTeachingListLine">
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
    <message id="lkeyTeachingListLost">
        <source>%1: lost what it was</source>
        <translation>%1: lost what it was</translation>
    </message>
    <message id="lkeyTeachingLost">
        <source>%1 was that before, and has lost it.</source>
        <translation>%1 was that before, and has lost it.</translation>
    </message>
    <message id="lkeyTeachingNext">
        <source>Taught. The next one follows.</source>
        <translation>Taught. The next one follows.</translation>
    </message>
    <message id="lkeyTeachingNothing">
        <source>Nothing was taught. The mouse is as it was.</source>
        <translation>Nothing was taught. The mouse is as it was.</translation>
    </message>
    <message id="lkeyTeachingNowNothing">
        <source>Nothing on this mouse is this control yet.</source>
        <translation>Nothing on this mouse is this control yet.</translation>
    </message>
    <message id="lkeyTeachingNowTaught">
        <source>It has been taught.</source>
        <translation>It has been taught.</translation>
    </message>
    <message id="lkeyTeachingNowUsual">
        <source>The mouse has it by itself. Skip it where it is right.</source>
        <translation>The mouse has it by itself. Skip it where it is right.</translation>
    </message>
    <message id="lkeyTeachingOf">
        <source>Teach the controls of %1</source>
        <translation>Teach the controls of %1</translation>
    </message>
    <message id="lkeyTeachingPaused">
        <source>Nothing is asked for now.</source>
        <translation>Nothing is asked for now.</translation>
    </message>
    <message id="lkeyTeachingPlace">
        <source>%1 of %2</source>
        <translation>%1 of %2</translation>
    </message>
    <message id="lkeyTeachingPrompt">
        <source>Press this control on your mouse.</source>
        <translation>Press this control on your mouse.</translation>
    </message>
    <message id="lkeyTeachingResume">
        <source>Go On Teaching</source>
        <translation>Go On Teaching</translation>
    </message>
    <message id="lkeyTeachingSkip">
        <source>Skip</source>
        <translation>Skip</translation>
    </message>
    <message id="lkeyTeachingSummary">
        <source>This was taught, and is kept for this mouse:</source>
        <translation>This was taught, and is kept for this mouse:</translation>
    </message>
    <message id="lkeyTeachingTimeout">
        <source>Nothing was pressed for a minute.</source>
        <translation>Nothing was pressed for a minute.</translation>
    </message>
    <message id="lkeyTeachingTitle">
        <source>Teach the Controls</source>
        <translation>Teach the Controls</translation>
    </message>
    <message id="lkeyTeachingWait">
        <source>One moment…</source>
        <translation>One moment…</translation>
    </message>
    <message id="lkeyTemporaryDPISwitch">
        <source>Temporary DPI Switch</source>
        <translation>Temporary DPI Switch</translation>
    </message>
    <message id="lkeyTextIsTooLong">
        <source>A macro has at most 15,000 events</source>
        <translation>A macro has at most 15,000 events</translation>
    </message>
    <message id="lkeyTextMakesEvents">
        <source>Events: %1</source>
        <translation>Events: %1</translation>
    </message>
    <message id="lkeyTextMakesEventsAndBreaks">
        <source>Events: %1. Line breaks are typed as Return.</source>
        <translation>Events: %1. Line breaks are typed as Return.</translation>
    </message>
    <message id="lkeyTextToType">
        <source>Text to type</source>
        <translation>Text to type</translation>
    </message>
    <message id="lkeyThumbGrid">
        <source>Thumb grid</source>
        <translation>Thumb grid</translation>
    </message>
    <message id="lkeyTrayHiddenText">
        <source>Its icon in the tray opens the window again. To quit, use the icon's menu or Ctrl+Q in the window.</source>
        <translation>Its icon in the tray opens the window again. To quit, use the icon's menu or Ctrl+Q in the window.</translation>
    </message>
    <message id="lkeyTrayHiddenTitle">
        <source>Skarn is still there</source>
        <translation>Skarn is still there</translation>
    </message>
    <message id="lkeyTrayMissing">
        <source>This desktop has no tray</source>
        <translation>This desktop has no tray</translation>
    </message>
    <message id="lkeyTrayOpen">
        <source>Open Skarn</source>
        <translation>Open Skarn</translation>
    </message>
    <message id="lkeyTrayQuit">
        <source>Quit</source>
        <translation>Quit</translation>
    </message>
    <message id="lkeyTrayShow">
        <source>Show in the Tray</source>
        <translation>Show in the Tray</translation>
    </message>
    <message id="lkeyTrayShowTip">
        <source>Battery and profiles stand in the tray of the desktop, and the close button only hides the window</source>
        <translation>Battery and profiles stand in the tray of the desktop, and the close button only hides the window</translation>
    </message>
    <message id="lkeyTypeAName">
        <source>Type a name first</source>
        <translation>Type a name first</translation>
    </message>
    <message id="lkeyTypeAnotherName">
        <source>It is called so already: type another name, or none to take the name away</source>
        <translation>It is called so already: type another name, or none to take the name away</translation>
    </message>
    <message id="lkeyTypeEvents">
        <source>Type what the macro shall do.</source>
        <translation>Type what the macro shall do.</translation>
    </message>
    <message id="lkeyTypeText">
        <source>Type a Text…</source>
        <translation>Type a Text…</translation>
    </message>
    <message id="lkeyTypeTextTitle">
        <source>Type a Text</source>
        <translation>Type a Text</translation>
    </message>
    <message id="lkeyTypedDelay">
        <source>Before each press and release</source>
        <translation>Before each press and release</translation>
    </message>
    <message id="lkeyUnderglow">
        <source>Underglow</source>
        <translation>Underglow</translation>
    </message>
    <message id="lkeyUndo">
        <source>Undo</source>
        <translation>Undo</translation>
    </message>
    <message id="lkeyUndoChangedSince">
        <source>Not undone: all of it has been changed since</source>
        <translation>Not undone: all of it has been changed since</translation>
    </message>
    <message id="lkeyUndoConflict">
        <source>; one value has been changed since and stays</source>
        <translation>; one value has been changed since and stays</translation>
    </message>
    <message id="lkeyUndoConflicts">
        <source>; %1 values have been changed since and stay</source>
        <translation>; %1 values have been changed since and stay</translation>
    </message>
    <message id="lkeyUndoDiscard">
        <source>Undo</source>
        <translation>Undo</translation>
    </message>
    <message id="lkeyUndoDiscardTip">
        <source>Save the discarded recording after all</source>
        <translation>Save the discarded recording after all</translation>
    </message>
    <message id="lkeyUndoDone">
        <source>Undone: %1</source>
        <translation>Undone: %1</translation>
    </message>
    <message id="lkeyUndoDoneSeveral">
        <source>%1 changes undone</source>
        <translation>%1 changes undone</translation>
    </message>
    <message id="lkeyUndoNotSaved">
        <source>Not undone: the settings cannot be saved</source>
        <translation>Not undone: the settings cannot be saved</translation>
    </message>
    <message id="lkeyUndoOtherBetween">
        <source>Not undone: another change has come in between</source>
        <translation>Not undone: another change has come in between</translation>
    </message>
    <message id="lkeyUndoTip">
        <source>Undo: %1</source>
        <translation>Undo: %1</translation>
    </message>
    <message id="lkeyUnknownAssignment">
        <source>Nothing that is known</source>
        <translation>Nothing that is known</translation>
    </message>
    <message id="lkeyUntilPressedAgain">
        <source>%1, until pressed again</source>
        <translation>%1, until pressed again</translation>
    </message>
    <message id="lkeyUntilReleased">
        <source>%1, until let go</source>
        <translation>%1, until let go</translation>
    </message>
    <message id="lkeyUnusableValues">
        <source>Values that cannot be used in them are as from the factory.</source>
        <translation>Values that cannot be used in them are as from the factory.</translation>
    </message>
    <message id="lkeyUseThisMouse">
        <source>Use This Mouse</source>
        <translation>Use This Mouse</translation>
    </message>
    <message id="lkeyVersionsGroup">
        <source>Versions and updates</source>
        <translation>Versions and updates</translation>
    </message>
    <message id="lkeyVirtualMouse">
        <source>Virtual mouse</source>
        <translation>Virtual mouse</translation>
    </message>
    <message id="lkeyWheel">
        <source>Wheel</source>
        <translation>Wheel</translation>
    </message>
    <message id="lkeyWhileRecording">
        <source>Type; mouse buttons count over the list of events. Stop ends the recording, and so does the Pause key.</source>
        <translation>Type; mouse buttons count over the list of events. Stop ends the recording, and so does the Pause key.</translation>
    </message>
    <message id="lkeyWholeNumberWithin">
        <source>A whole number from %1 to %2</source>
        <translation>A whole number from %1 to %2</translation>
    </message>
    <message id="lkeyWindowSettings">
        <source>Settings</source>
        <translation>Settings</translation>
    </message>
    <message id="lkeyWindowSettingsTip">
        <source>Settings of this window</source>
        <translation>Settings of this window</translation>
    </message>
    <message id="lkeyX">
        <source>X</source>
        <translation>X</translation>
    </message>
    <message id="lkeyY">
        <source>Y</source>
        <translation>Y</translation>
    </message>
</context>
</TS>
