// The changes of the settings that can be undone: object, members and words by which the engine tells its clients of
// them. resources/dbus/org.vorn.History1.xml says what each member takes, docs/core-engine.md what the words mean.
#pragma once

#include <array>
#include <string_view>

namespace vorn::history {

inline constexpr const char* busName = "org.vorn.History";
inline constexpr const char* objectPath = "/org/vorn/History";
inline constexpr const char* interface = "org.vorn.History1";

namespace methods {
inline constexpr const char* Undo = "Undo";
inline constexpr const char* Redo = "Redo";
inline constexpr const char* GoTo = "GoTo";
inline constexpr const char* Entries = "Entries";
inline constexpr const char* Backups = "Backups";
inline constexpr const char* RestoreBackup = "RestoreBackup";
}  // namespace methods

namespace signalNames {
inline constexpr const char* Changed = "Changed";
}  // namespace signalNames

namespace errors {
// Nothing is left to be undone, or to be made again; or no change has this ID.
inline constexpr const char* NothingLeft = "org.vorn.History1.Error.NothingLeft";
// All that the change had changed has been changed again since. The change is no longer offered.
inline constexpr const char* ChangedSince = "org.vorn.History1.Error.ChangedSince";
// Another change comes next than the one that was to be undone or made again; nothing has changed.
inline constexpr const char* Outdated = "org.vorn.History1.Error.Outdated";
// The disk did not take it; nothing has changed.
inline constexpr const char* NotSaved = "org.vorn.History1.Error.NotSaved";
// There is no such backup, or it is damaged; the text says which.
inline constexpr const char* NoBackup = "org.vorn.History1.Error.NoBackup";
// Too many requests of the caller wait.
inline constexpr const char* LimitsExceeded = "org.freedesktop.DBus.Error.LimitsExceeded";
}  // namespace errors

// The keys of an entry.
namespace keys {
using Key = std::string_view;
inline constexpr Key ID = "id";                // integer, larger than those of earlier changes
inline constexpr Key Time = "time";            // integer, seconds since 1970-01-01 00:00:00 UTC
inline constexpr Key SourceApp = "sourceApp";  // string; missing where the client gave none
inline constexpr Key IsUndone = "isUndone";    // boolean: can be made again
inline constexpr Key Kind = "kind";            // string, one of the kinds below
inline constexpr Key Profile = "profile";      // string: the name of the profile that it is about
inline constexpr Key Macro = "macro";          // string: the name of the macro that it is about
inline constexpr Key NewName = "newName";      // string, of a renamed record
inline constexpr Key Date = "date";            // string: the date of the restored backup, "2026-11-22"
inline constexpr Key Count = "count";  // integer: how many profiles, macros, controls, keymaps or events, where not one
inline constexpr Key Control = "control";    // string: the identifier of the control, where it is one
inline constexpr Key Keymap = "keymap";      // integer, 0 to 7: the keymap, where it is one
inline constexpr Key Controls = "controls";  // array of strings: their identifiers, where they are two or three
// The new assignment of that one control; target: the name of the macro or profile that it points at.
inline constexpr Key Command = "command";  // integer
inline constexpr Key Param1 = "param1";    // string
inline constexpr Key Param2 = "param2";    // string
inline constexpr Key Target = "target";    // string
}  // namespace keys

// The keys of a backup, beside Date.
namespace backupKeys {
using Key = std::string_view;
inline constexpr Key Time = "time";  // integer, seconds since 1970-01-01 00:00:00 UTC: when it was written
inline constexpr Key Size = "size";  // integer: bytes of its file
}  // namespace backupKeys

namespace kinds {
using Kind = std::string_view;
inline constexpr Kind Assignment = "assignment";
inline constexpr Kind KeymapInForce = "keymapInForce";
inline constexpr Kind ProfileAdded = "profileAdded";
inline constexpr Kind ProfileDeleted = "profileDeleted";
inline constexpr Kind ProfileRenamed = "profileRenamed";
inline constexpr Kind ProfileSwitched = "profileSwitched";
inline constexpr Kind ProfilesReordered = "profilesReordered";
inline constexpr Kind ProfileRestored = "profileRestored";  // to its factory settings
inline constexpr Kind ProfileChanged = "profileChanged";    // several of its settings at once
inline constexpr Kind MacroAdded = "macroAdded";
inline constexpr Kind MacroDeleted = "macroDeleted";
inline constexpr Kind MacroRenamed = "macroRenamed";
inline constexpr Kind MacroEvents = "macroEvents";
inline constexpr Kind MacroDelays = "macroDelays";
inline constexpr Kind MacroRecorded = "macroRecorded";
inline constexpr Kind MacroEventsRemoved = "macroEventsRemoved";  // and nothing else; Count: how many, where not all
inline constexpr Kind Sensitivity = "sensitivity";
inline constexpr Kind Stages = "stages";
inline constexpr Kind PollingRate = "pollingRate";
inline constexpr Kind Acceleration = "acceleration";
inline constexpr Kind Light = "light";
inline constexpr Kind Power = "power";
inline constexpr Kind Application = "application";
inline constexpr Kind Messages = "messages";
inline constexpr Kind BackupRestored = "backupRestored";
inline constexpr Kind Settings = "settings";  // anything else, or several of the above at once

inline constexpr std::array all = {Assignment,     KeymapInForce,   ProfileAdded,      ProfileDeleted,
                                   ProfileRenamed, ProfileSwitched, ProfilesReordered, ProfileRestored,
                                   ProfileChanged, MacroAdded,      MacroDeleted,      MacroRenamed,
                                   MacroEvents,    MacroDelays,     MacroRecorded,     MacroEventsRemoved,
                                   Sensitivity,    Stages,          PollingRate,       Acceleration,
                                   Light,          Power,           Application,       Messages,
                                   BackupRestored, Settings};
}  // namespace kinds

}  // namespace vorn::history
