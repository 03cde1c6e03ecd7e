// The entries of the two menus of the Macros tab, and which of them can be chosen when. The gear menu and the
// right-click menu of a table have the same entries.
#pragma once

#include <QAction>
#include <QKeyEvent>
#include <QString>
#include <span>
#include <vector>

#include "widgets/PullDownButton.h"

namespace skarn {

// What the enabling of the entries depends on.
struct MacroMenuState {
  int macro = -1;            // row of the selected macro, -1 for none
  int line = -1;             // row of the selected line, the first of several; -1 for none
  int lineCount = 0;         // lines of the selected macro
  bool isRecording = false;  // a recording or a capture runs; the lines are not the macro's
  int selectedEvents = 0;
  int selectedDelays = 0;
  bool hasPair = false;       // one of the selected events has a partner
  bool touchesFirst = false;  // the first or the last event is among those that a move would move
  bool touchesLast = false;
  bool hasLastLine = false;  // the last line is selected
  bool canPaste = false;     // the clipboard holds events, or a text that can be typed
};

// Odd rows of the details table are delays, even rows events.
bool isDelayLine(int row);

// An event is read and replaced by 8-bit row numbers: one beyond row 255, in either table, would be mistaken for
// another, and is edited by replacing the whole sequence. Delays are addressed by ordinary integers.
bool isEventWithinReach(int macro, int line);

struct MacroMenuEntry {
  int tag;
  const char* titleKey;
  // The key of the text that says what it needs and has not; null when it can be chosen.
  const char* (*missing)(const MacroMenuState& state);
  int shortcut = 0;  // a combined key; 0 for none
  const char* submenuKey = nullptr;
  bool beginsGroup = false;
  bool isCheckable = false;
};

namespace macroMenuTags {
enum Tag { Rename = 1, New, Import, Export, Delete, Duplicate };
}
namespace macroDetailsMenuTags {
enum Tag {
  Record = 1,
  Edit,
  DeleteEvent,
  DeleteAllEvents,
  CopyDelay,
  NoDelay,
  Cut = 10,
  Copy,
  Paste,
  DuplicateEvents,
  MoveUp,
  MoveDown,
  KeepPairs,
  DeletePair,
  TypeText,
  Play
};
// The entries of the two submenus: one of these and one of Inserted.
inline constexpr int insertBefore = 30;
inline constexpr int insertAfter = 40;
enum Inserted { Key, LeftClick, RightClick, MiddleClick, Delay };
}  // namespace macroDetailsMenuTags

std::span<const MacroMenuEntry> macroMenuEntries();
std::span<const MacroMenuEntry> macroDetailsMenuEntries();
std::vector<TaggedItem> itemsOf(std::span<const MacroMenuEntry> entries);
// The entry whose shortcut the key is; null for any other key.
const MacroMenuEntry* entryOfKey(std::span<const MacroMenuEntry> entries, const QKeyEvent& key);

// An item is known by its title, and by its tag where it has one. One that is in neither menu is disabled.
bool isMenuItemEnabled(const QAction& item, const MacroMenuState& state);
// Why an item is disabled; empty for one that is enabled, or in neither menu.
QString whyMenuItemIsDisabled(const QAction& item, const MacroMenuState& state);

}  // namespace skarn
