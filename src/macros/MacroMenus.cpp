#include "macros/MacroMenus.h"

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
  return isDelayLine(state.line) ? nullptr : "lkeySelectDelayFirst";
}

const char* editableLine(const State& state) {
  if (const char* missing = selectedLine(state)) return missing;
  const bool isEditable = isDelayLine(state.line) || isEventWithinReach(state.macro, state.line);
  return isEditable ? nullptr : "lkeyEventOutOfReach";
}

constexpr std::array<MacroMenuEntry, 5> macroEntries = {{
    {macroMenuTags::Rename, "lkeyRename", macro},
    {macroMenuTags::New, "lkeyNew", nothing},
    {macroMenuTags::Import, "lkeyImport", nothing},
    {macroMenuTags::Export, "lkeyExport", macro},
    {macroMenuTags::Delete, "lkeyDelete", macro},
}};

constexpr std::array<MacroMenuEntry, 6> detailsEntries = {{
    {macroDetailsMenuTags::Record, "lkeyRecord", macro},
    {macroDetailsMenuTags::Edit, "lkeyEdit", editableLine},
    {macroDetailsMenuTags::DeleteEvent, "lkeyDeleteEvent", selectedLine},
    {macroDetailsMenuTags::DeleteAllEvents, "lkeyDeleteAllEvents", lines},
    {macroDetailsMenuTags::CopyDelay, "lkeyCopyDelay", delayLine},
    {macroDetailsMenuTags::NoDelay, "lkeyNoDelay", lines},
}};

// Null for an item of neither menu.
const MacroMenuEntry* entryOf(const QAction& item) {
  const QString title = titleOf(item);
  for (const auto entries : {macroMenuEntries(), macroDetailsMenuEntries()}) {
    for (const MacroMenuEntry& entry : entries) {
      if (localized(entry.titleKey) == title) return &entry;
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
  for (const MacroMenuEntry& entry : entries) items.push_back({entry.tag, localized(entry.titleKey)});
  return items;
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
