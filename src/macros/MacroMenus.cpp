#include "macros/MacroMenus.h"

#include <algorithm>
#include <array>
#include <limits>

#include "platform/Localization.h"

namespace skarn {

namespace {

using State = MacroMenuState;

constexpr int lastRowWithinReach = std::numeric_limits<std::uint8_t>::max();

// Each says what is missing, as the key of a text; null when nothing is.

const char* nothing(const State&) {
  return nullptr;
}

const char* macro(const State& state) {
  return state.macro < 0 ? "lkeySelectMacroFirst" : nullptr;
}

const char* lines(const State& state) {
  if (const char* missing = macro(state)) return missing;
  if (state.isRecording) return "lkeyStopRecordingFirst";
  return state.lineCount == 0 ? "lkeyNoEvents" : nullptr;
}

const char* selectedLine(const State& state) {
  if (const char* missing = lines(state)) return missing;
  return state.line < 0 ? "lkeySelectLineFirst" : nullptr;
}

const char* delayLine(const State& state) {
  if (const char* missing = selectedLine(state)) return missing;
  return isDelayLine(state.line) && state.selectedEvents + state.selectedDelays <= 1 ? nullptr : "lkeySelectDelayFirst";
}

const char* editableLine(const State& state) {
  if (const char* missing = selectedLine(state)) return missing;
  return state.selectedEvents > 1 && state.selectedDelays == 0 ? "lkeySelectOneEvent" : nullptr;
}

const char* selectedEvents(const State& state) {
  if (const char* missing = lines(state)) return missing;
  return state.selectedEvents == 0 ? "lkeySelectEventFirst" : nullptr;
}

const char* pair(const State& state) {
  if (const char* missing = selectedEvents(state)) return missing;
  return state.hasPair ? nullptr : "lkeyNoPartner";
}

const char* roomAbove(const State& state) {
  if (const char* missing = selectedEvents(state)) return missing;
  return state.touchesFirst ? "lkeyIsFirstEvent" : nullptr;
}

const char* roomBelow(const State& state) {
  if (const char* missing = selectedEvents(state)) return missing;
  return state.touchesLast ? "lkeyIsLastEvent" : nullptr;
}

const char* editableMacro(const State& state) {
  if (const char* missing = macro(state)) return missing;
  return state.isRecording ? "lkeyStopRecordingFirst" : nullptr;
}

const char* copiedEvents(const State& state) {
  if (const char* missing = editableMacro(state)) return missing;
  return state.canPaste ? nullptr : "lkeyNothingToPaste";
}

// The first event has no delay that anybody sees, and nothing follows the last one.
const char* delayBefore(const State& state) {
  if (const char* missing = selectedLine(state)) return missing;
  return state.line == 0 ? "lkeyNoDelayBeforeFirst" : nullptr;
}

const char* delayAfter(const State& state) {
  if (const char* missing = selectedLine(state)) return missing;
  return state.hasLastLine ? "lkeyNoDelayAfterLast" : nullptr;
}

constexpr int keyOf(QKeyCombination combination) {
  return combination.toCombined();
}

constexpr std::array<MacroMenuEntry, 6> macroEntries = {{
    {macroMenuTags::Rename, "lkeyRename", macro},
    {macroMenuTags::New, "lkeyNew", nothing},
    {macroMenuTags::Import, "lkeyImport", nothing},
    {macroMenuTags::Export, "lkeyExport", macro},
    {macroMenuTags::Delete, "lkeyDelete", macro},
    {macroMenuTags::Duplicate, "lkeyDuplicateMacro", editableMacro, keyOf(Qt::CTRL | Qt::Key_D), nullptr, true},
}};

namespace tags = macroDetailsMenuTags;
constexpr const char* before = "lkeyInsertBefore";
constexpr const char* after = "lkeyInsertAfter";

constexpr std::array<MacroMenuEntry, 26> detailsEntries = {{
    {tags::Record, "lkeyRecord", macro},
    {tags::Edit, "lkeyEdit", editableLine, Qt::Key_F2},
    {tags::DeleteEvent, "lkeyDeleteEvent", selectedLine, Qt::Key_Delete},
    {tags::DeleteAllEvents, "lkeyDeleteAllEvents", lines},
    {tags::CopyDelay, "lkeyCopyDelay", delayLine},
    {tags::NoDelay, "lkeyNoDelay", lines},
    {tags::Cut, "lkeyCutEvents", selectedEvents, keyOf(Qt::CTRL | Qt::Key_X), nullptr, true},
    {tags::Copy, "lkeyCopy", selectedEvents, keyOf(Qt::CTRL | Qt::Key_C)},
    {tags::Paste, "lkeyPaste", copiedEvents, keyOf(Qt::CTRL | Qt::Key_V)},
    {tags::DuplicateEvents, "lkeyDuplicateEvents", selectedEvents, keyOf(Qt::CTRL | Qt::Key_D)},
    {tags::DeletePair, "lkeyDeletePair", pair, keyOf(Qt::SHIFT | Qt::Key_Delete)},
    {tags::MoveUp, "lkeyMoveUp", roomAbove, keyOf(Qt::ALT | Qt::Key_Up), nullptr, true},
    {tags::MoveDown, "lkeyMoveDown", roomBelow, keyOf(Qt::ALT | Qt::Key_Down)},
    {tags::KeepPairs, "lkeyKeepPairs", macro, 0, nullptr, false, true},
    {tags::TypeText, "lkeyTypeText", editableMacro, 0, nullptr, true},
    {tags::insertBefore + tags::Key, "lkeyInsertKey", editableMacro, 0, before},
    {tags::insertBefore + tags::LeftClick, "lkeyInsertLeftClick", editableMacro, 0, before},
    {tags::insertBefore + tags::RightClick, "lkeyInsertRightClick", editableMacro, 0, before},
    {tags::insertBefore + tags::MiddleClick, "lkeyInsertMiddleClick", editableMacro, 0, before},
    {tags::insertBefore + tags::Delay, "lkeyInsertDelay", delayBefore, 0, before},
    {tags::insertAfter + tags::Key, "lkeyInsertKey", editableMacro, Qt::Key_Insert, after},
    {tags::insertAfter + tags::LeftClick, "lkeyInsertLeftClick", editableMacro, 0, after},
    {tags::insertAfter + tags::RightClick, "lkeyInsertRightClick", editableMacro, 0, after},
    {tags::insertAfter + tags::MiddleClick, "lkeyInsertMiddleClick", editableMacro, 0, after},
    {tags::insertAfter + tags::Delay, "lkeyInsertDelay", delayAfter, 0, after},
    {tags::Play, "lkeyPlay", lines, 0, nullptr, true},
}};

// Null for an item of neither menu.
const MacroMenuEntry* entryOf(const QAction& item) {
  const QString title = titleOf(item);
  for (const auto entries : {macroMenuEntries(), macroDetailsMenuEntries()}) {
    for (const MacroMenuEntry& entry : entries) {
      const bool isTagged = tagOf(item) == 0 || tagOf(item) == entry.tag;
      if (isTagged && localized(entry.titleKey) == title) return &entry;
    }
  }
  return nullptr;
}

}  // namespace

bool isDelayLine(int row) {
  return row % 2 == 1;
}

bool isEventWithinReach(int macro, int line) {
  return macro <= lastRowWithinReach && line <= lastRowWithinReach;
}

std::span<const MacroMenuEntry> macroMenuEntries() {
  return macroEntries;
}

std::span<const MacroMenuEntry> macroDetailsMenuEntries() {
  return detailsEntries;
}

std::vector<TaggedItem> itemsOf(std::span<const MacroMenuEntry> entries) {
  std::vector<TaggedItem> items;
  for (const MacroMenuEntry& entry : entries) {
    items.push_back({entry.tag, localized(entry.titleKey), QKeySequence(entry.shortcut),
                     entry.submenuKey == nullptr ? QString() : localized(entry.submenuKey), entry.beginsGroup,
                     entry.isCheckable});
  }
  return items;
}

const MacroMenuEntry* entryOfKey(std::span<const MacroMenuEntry> entries, const QKeyEvent& key) {
  // An arrow of the number pad is one, too.
  const int pressed = key.key() | static_cast<int>(key.modifiers() & ~Qt::KeyboardModifiers(Qt::KeypadModifier));
  const auto found = std::ranges::find_if(
      entries, [pressed](const MacroMenuEntry& entry) { return entry.shortcut != 0 && entry.shortcut == pressed; });
  return found == entries.end() ? nullptr : &*found;
}

bool isMenuItemEnabled(const QAction& item, const MacroMenuState& state) {
  const MacroMenuEntry* entry = entryOf(item);
  return entry != nullptr && entry->missing(state) == nullptr;
}

QString whyMenuItemIsDisabled(const QAction& item, const MacroMenuState& state) {
  const MacroMenuEntry* entry = entryOf(item);
  const char* missing = entry == nullptr ? nullptr : entry->missing(state);
  return missing == nullptr ? QString() : localized(missing);
}

}  // namespace skarn
