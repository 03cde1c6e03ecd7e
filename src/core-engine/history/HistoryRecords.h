// The history as property lists, for its file. Pure; any thread.
#pragma once

#include <optional>

#include "core-engine/history/HistoryEntries.h"
#include "model/PropertyList.h"

namespace vorn::engine {

PropertyList recordOf(const HistoryStep& step);
PropertyList recordOf(const HistoryEntries& entries);

// Nothing for a record that is none of these, whatever it holds.
std::optional<HistoryStep> stepIn(const PropertyList& record);
std::optional<HistoryEntries> entriesIn(const PropertyList& record);

}  // namespace vorn::engine
