#include "profiles/ProfileTarget.h"

#include <utility>

#include "model/SettingsKeys.h"

namespace skarn {

using vorn::PropertyList;

void ProfileTarget::remember(const PropertyList& profiles, int row) {
  mNext.emplace(profiles, row, vorn::keys::ProfileName);
}

int ProfileTarget::row(const PropertyList& profiles, int selectedRow) const {
  const auto place = mNext ? mNext->placeIn(profiles) : std::nullopt;
  return place ? static_cast<int>(*place) : selectedRow;
}

int ProfileTarget::takeRow(const PropertyList& profiles, int selectedRow) {
  const int result = row(profiles, selectedRow);
  mNext.reset();
  return result;
}

std::optional<std::string> ProfileTarget::takeGone(const PropertyList& profiles) {
  if (!mNext || mNext->placeIn(profiles)) return std::nullopt;
  return std::exchange(mNext, std::nullopt)->name();
}

void ProfileTarget::openSheet(const PropertyList& profiles, int row) {
  mSheet.emplace(profiles, row, vorn::keys::ProfileName);
}

std::optional<int> ProfileTarget::takeSheet(const PropertyList& profiles) {
  const auto sheet = std::exchange(mSheet, std::nullopt);
  const auto place = sheet ? sheet->placeIn(profiles) : std::nullopt;
  return place ? std::optional(static_cast<int>(*place)) : std::nullopt;
}

}  // namespace skarn
