// The changes of the engine's history in the user's words. entry: with the keys of protocol/History.h; what is missing
// in it is left out, and a kind that is not known has a general sentence. Main thread.
#pragma once

#include <QString>

#include "model/PropertyList.h"

namespace skarn {

// "Button 4 to Copy", "Buttons 4 and 6", "Profile “Work” deleted", "Sensitivity of Work".
QString changeText(const vorn::PropertyList& entry);

// The same with the profile and the keymap that changeText leaves out: "Button 4 to Copy (Work, Keymap 2)".
QString changeTextWithPlace(const vorn::PropertyList& entry);

// The same with the profile and the keymap where they are not those that are shown. shownProfile: the record of the
// profile that is, with the keymap in force.
QString changeTextBeside(const vorn::PropertyList& entry, const vorn::PropertyList& shownProfile);

// Of a change that has deleted something: "Deleted Copy and Paste".
QString deletionText(const vorn::PropertyList& entry);

// Who has made it: "This window".
QString authorText(const vorn::PropertyList& entry);

}  // namespace skarn
