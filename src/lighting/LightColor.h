// The colour of a lit zone, an element of "LEDColors": "Red", "Green" and "Blue" as numbers from 0.0 to 1.0.
#pragma once

#include <QColor>

#include "model/PropertyList.h"

namespace skarn {

// In 8 bits a component, opaque. Components outside 0 to 1 are brought back into the range; an invalid colour unless
// all three are numbers.
QColor colorOfZone(const vorn::PropertyList& zone);

// The zone in another colour; its further keys are kept. A component that 8 bits cannot tell from the one that was
// there keeps its exact value, so that a colour chosen unchanged is sent back unchanged.
vorn::PropertyList zoneInColor(const vorn::PropertyList& zone, const QColor& color);

}  // namespace skarn
