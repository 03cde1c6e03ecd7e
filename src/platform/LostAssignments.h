// Which controls are assigned to a macro or a profile, and lose that by its deletion, in the user's words. Main thread.
#pragma once

#include <QString>

#include "model/References.h"

namespace skarn {

// The numbers of the controls by profile: "4, 5 of “Work”; 7 of “Play”". Empty where there are none. entry: as if it
// were to be deleted.
QString assignmentsTo(const vorn::PropertyList& profiles, const vorn::Deletion& entry);

// The text of an alert that asks before the deletion: text, and below it the numbers of the controls by profile, where
// there are any.
QString withLostAssignments(const QString& text, const vorn::PropertyList& profiles, const vorn::Deletion& deletion);

}  // namespace skarn
