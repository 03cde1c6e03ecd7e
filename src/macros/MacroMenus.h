// The entries of the two menus of the Macros tab, and which of them can be chosen when. The gear menu and the
// right-click menu of a table have the same entries.
#pragma once

#include <QAction>
#include <QString>
#include <span>
#include <vector>

#include "widgets/PullDownButton.h"

namespace skarn {

// What the enabling of the entries depends on.
struct MacroMenuState {
  int macro = -1;            // row of the selected macro, -1 for none
  int line = -1;             // row of the selected line, -1 for none
  int lineCount = 0;         // lines of the selected macro
  bool isRecording = false;  // a recording or a capture runs; the lines are not the macro's
};

// Odd rows of the details table are delays, even rows events.
bool isDelayLine(int row);

// An event is read and replaced by 8-bit row numbers, so one beyond row 255, in either table, would be mistaken for
// another: it cannot be edited. Delays are addressed by ordinary integers.
bool isEventWithinReach(int macro, int line);

struct MacroMenuEntry {
  int tag;
  const char* titleKey;
  // The key of the text that says what it needs and has not; null when it can be chosen.
  const char* (*missing)(const MacroMenuState& state);
};

namespace macroMenuTags {
enum Tag { Rename = 1, New, Import, Export, Delete };
}
namespace macroDetailsMenuTags {
enum Tag { Record = 1, Edit, DeleteEvent, DeleteAllEvents, CopyDelay, NoDelay };
}

std::span<const MacroMenuEntry> macroMenuEntries();
std::span<const MacroMenuEntry> macroDetailsMenuEntries();
std::vector<TaggedItem> itemsOf(std::span<const MacroMenuEntry> entries);

// An item is known by its title. One that is in neither menu is disabled.
bool isMenuItemEnabled(const QAction& item, const MacroMenuState& state);
// Why an item is disabled; empty for one that is enabled, or in neither menu.
QString whyMenuItemIsDisabled(const QAction& item, const MacroMenuState& state);

}  // namespace skarn
