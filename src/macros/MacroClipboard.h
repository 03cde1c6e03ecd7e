// Events of a macro on the clipboard of the desktop: for this program under a type of its own, for others as the lines
// that the table shows. A text from another program can be typed by a macro. What lies there may come from anywhere.
// Main thread.
#pragma once

#include <QString>
#include <optional>

#include "model/MacroEdits.h"

namespace skarn::macroClipboard {

// A property list, binary: an array of events as in a macro's sequence.
inline constexpr const char* mimeType = "application/x-skarn-macro-events";

void put(const vorn::MacroEventList& events);
// What it can give a macro; cheap, and true of events that are damaged. Where it holds events, the text beside them is
// only what other programs are shown.
enum class Held { Nothing, Events, Text };
Held held();
// Nothing where it holds no events, or what is none among them.
std::optional<vorn::MacroEventList> events();
// What another program has put there; empty where it holds events.
QString foreignText();

}  // namespace skarn::macroClipboard
