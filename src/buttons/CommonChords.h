// What well-known chords mean in most programs, for those who look for a control by what it does. Main thread.
#pragma once

#include <QString>

#include "model/PropertyList.h"

namespace skarn {

// "copy" for Ctrl+C: the words of the language that is set. record: a single key. Left and right modifiers count alike.
// Empty for a chord that means something else from program to program.
QString commonMeaning(const vorn::PropertyList& record);

}  // namespace skarn
