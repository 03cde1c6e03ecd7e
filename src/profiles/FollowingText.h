// Whether profiles can follow applications here, in a line for people.
#pragma once

#include <QString>

#include "model/PropertyList.h"

namespace skarn {

// focus: what the engine tells (protocol/Focus.h). isAskedFor: whether a profile is to follow its application. Empty
// while nothing is known.
QString followingText(const vorn::PropertyList& focus, bool isAskedFor);

}  // namespace skarn
