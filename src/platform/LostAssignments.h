// Which controls lose their assignment by a deletion, in the user's words. Main thread.
#pragma once

#include <QString>

#include "model/References.h"

namespace skarn {

// The text of an alert that asks before the deletion: text, and below it the numbers of the controls by profile, where
// there are any.
QString withLostAssignments(const QString& text, const vorn::PropertyList& profiles, const vorn::Deletion& deletion);

}  // namespace skarn
