// What differs between two profiles, in the user's words. Main thread.
#pragma once

#include <QString>
#include <string_view>

#include "model/ProfileComparison.h"

namespace skarn {

struct ComparisonWords {
  QString title;  // what the difference is in: "Sensitivity X", "Keymap 2, 4 (E)"
  QString left;
  QString right;
};

// What a setting is called; the key itself of one that no tab shows.
QString settingTitle(std::string_view key);
QString partWords(vorn::ProfilePart part);
// bundle: its "Macros" and "Profiles" are what the positions of assignments mean.
ComparisonWords comparisonWords(const vorn::ProfileDifference& difference, const vorn::PropertyList& bundle);

}  // namespace skarn
