// Sensitivities in words. Values are in DPI; a text whose values are not all there is empty.
#pragma once

#include <QString>
#include <optional>

#include "model/PropertyList.h"

namespace skarn {

// One value for both axes, or one for each.
QString sensitivityText(std::optional<int> x, std::optional<int> y, bool isIndependent);

// What stands between a click on the box of independent axes and the reload that follows: X, twice.
QString pendingAxesText(int x);

// A stage as the table of stages names it.
QString stageText(const vorn::PropertyList& stage);

// The same in few characters, without the unit: both axes only where they differ.
QString stageChipText(const vorn::PropertyList& stage);

// Does this stage give this sensitivity? Of locked axes X counts for both.
bool hasSensitivity(const vorn::PropertyList& stage, int x, int y, bool areApart);

}  // namespace skarn
