// What controls and their assignments are called, in the user's words. Records are read as they come: what is missing
// or of another type reads as 0 or as an empty text, and a control without a record does what it does from the factory.
// Main thread.
#pragma once

#include <QString>
#include <array>

#include "model/Assignments.h"
#include "model/Controls.h"

namespace skarn {

// Keys of what each control sends by default, in the order of the controls.
inline constexpr std::array<const char*, vorn::controls.size()> controlNameKeys = {
    "lkeyControlOne",        "lkeyControlTwo",       "lkeyControlThree",       "lkeyControlFour",
    "lkeyControlFive",       "lkeyControlSix",       "lkeyControlSeven",       "lkeyControlEight",
    "lkeyControlNine",       "lkeyControlTen",       "lkeyControlEleven",      "lkeyControlTwelve",
    "lkeyControlThirteen",   "lkeyControlFourteen",  "lkeyControlFifteen",     "lkeyControlSixteen",
    "lkeyControlSeventeen",  "lkeyControlEighteen",  "lkeyControlNineteen",    "lkeyControlTwenty",
    "lkeyControlTwentyOne",  "lkeyControlTwentyTwo", "lkeyControlTwentyThree", "lkeyControlTwentyFour",
    "lkeyControlTwentyFive", "lkeyControlTwentySix", "lkeyControlTwentySeven"};

// "4 (E)"
QString controlWords(const vorn::Control& control);

// The key of a command's name, where that says all of it; nullptr for any other.
const char* commandNameKey(vorn::AssignmentCommand command);

// "Ctrl+Shift+K"; empty for a record without modifiers.
QString chordText(const vorn::PropertyList& record);
// The last component of a path without its extension.
QString applicationName(QString path);

// What the control does with this record: "Ctrl+K", "Macro “Copy”, until released", "Profile “Work”", "Default". A
// macro or profile that does not exist is told with its number. bundle: its "Macros" and "Profiles" are what the
// positions of the record mean.
QString assignmentWords(const vorn::PropertyList& record, const vorn::Control& control,
                        const vorn::PropertyList& bundle);

}  // namespace skarn
