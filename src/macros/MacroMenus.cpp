#include "macros/MacroMenus.h"

#include <array>
#include <limits>

#include "platform/Localization.h"

namespace skarn {

namespace {

using State = MacroMenuState;

constexpr int lastRowWithinReach = std::numeric_limits<std::uint8_t>::max();

bool always(const State&) {
  return true;
}

bool hasMacro(const State& state) {
  return state.macro >= 0;
}

bool hasLines(const State& state) {
  return hasMacro(state) && state.lineCount > 0 && !state.isRecording;
}

bool hasLine(const State& state) {
  return hasLines(state) && state.line >= 0;
}

bool hasDelayLine(const State& state) {
  return hasLine(state) && isDelayLine(state.line);
}

bool isOutOfReach(const State& state) {
  return hasLine(state) && !isDelayLine(state.line) && !isEventWithinReach(state.macro, state.line);
}

bool hasEditableLine(const State& state) {
  return hasLine(state) && !isOutOfReach(state);
}

constexpr std::array<MacroMenuEntry, 5> macroEntries = {{
    {macroMenuTags::Rename, "lkeyRename", hasMacro},
    {macroMenuTags::New, "lkeyNew", always},
    {macroMenuTags::Import, "lkeyImport", always},
    {macroMenuTags::Export, "lkeyExport", hasMacro},
    {macroMenuTags::Delete, "lkeyDelete", hasMacro},
}};

constexpr std::array<MacroMenuEntry, 6> detailsEntries = {{
    {macroDetailsMenuTags::Record, "lkeyRecord", hasMacro},
    {macroDetailsMenuTags::Edit, "lkeyEdit", hasEditableLine},
    {macroDetailsMenuTags::DeleteEvent, "lkeyDeleteEvent", hasLine},
    {macroDetailsMenuTags::DeleteAllEvents, "lkeyDeleteAllEvents", hasLines},
    {macroDetailsMenuTags::CopyDelay, "lkeyCopyDelay", hasDelayLine},
    {macroDetailsMenuTags::NoDelay, "lkeyNoDelay", hasLines},
}};

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
  const QString title = titleOf(item);
  for (const auto entries : {macroMenuEntries(), macroDetailsMenuEntries()}) {
    for (const MacroMenuEntry& entry : entries) {
      if (localized(entry.titleKey) == title) return entry.isEnabled(state);
    }
  }
  return false;
}

QString whyMenuItemIsDisabled(const QAction& item, const MacroMenuState& state) {
  if (titleOf(item) != localized("lkeyEdit") || !isOutOfReach(state)) return {};
  return localized("lkeyEventOutOfReach");
}

}  // namespace skarn
