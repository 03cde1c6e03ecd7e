// For which profile an action or a sheet of the Profiles tab is, while the mouse, other programs and the action itself
// change the list and the selection. Pure; main thread.
#pragma once

#include <optional>
#include <string>

#include "model/PropertyList.h"
#include "model/RememberedRecord.h"

namespace skarn {

class ProfileTarget {
 public:
  // --- The next action. It is for the selected row, unless another one is remembered: the one that its menu was opened
  // on, or the one whose name was being edited when the mouse was pressed on the action's control.
  void remember(const vorn::PropertyList& profiles, int row);
  void forget() { mNext.reset(); }
  // -1 for none.
  int row(const vorn::PropertyList& profiles, int selectedRow) const;
  // The same, once: the action after it is for the selected row again.
  int takeRow(const vorn::PropertyList& profiles, int selectedRow);
  // The name of the profile that the action was to be for, where that is gone; it is forgotten then.
  std::optional<std::string> takeGone(const vorn::PropertyList& profiles);

  // --- The open sheet.
  void openSheet(const vorn::PropertyList& profiles, int row);
  void closeSheet() { mSheet.reset(); }
  bool hasSheet() const { return mSheet.has_value(); }
  // The name that the profile of the sheet had when it opened; empty without a sheet.
  std::string nameOfSheet() const { return mSheet ? mSheet->name() : std::string(); }
  // Where the profile of the sheet stands now, nothing when it is gone; the sheet is over then.
  std::optional<int> takeSheet(const vorn::PropertyList& profiles);

 private:
  std::optional<vorn::RememberedRecord> mNext;
  std::optional<vorn::RememberedRecord> mSheet;
};

}  // namespace skarn
