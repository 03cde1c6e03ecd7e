// Events of a macro on the clipboard of the desktop: for this program under a type of its own, for others as the lines
// that the table shows. What lies there may come from anywhere. Main thread.
#pragma once

#include <QString>
#include <optional>

#include "model/MacroEdits.h"

namespace skarn::macroClipboard {

// A property list, binary: an array of events as in a macro's sequence.
inline constexpr const char* mimeType = "application/x-skarn-macro-events";

void put(const vorn::MacroEventList& events);
// Whether it holds something of the type; cheap, and true for what is damaged.
bool holdsEvents();
// Nothing where it holds no events, or what is none among them.
std::optional<vorn::MacroEventList> events();

}  // namespace skarn::macroClipboard
