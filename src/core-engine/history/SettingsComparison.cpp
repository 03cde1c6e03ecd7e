#include "core-engine/history/SettingsComparison.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

#include "core-engine/history/DerivedSettings.h"
#include "model/SettingsKeys.h"

namespace vorn::engine {

namespace {

using Elements = std::vector<PropertyList>;
using ElementsView = std::span<const PropertyList>;

// Where more elements than these differ, they are kept whole instead of being matched.
constexpr std::size_t maximumMatched = 64;

Elements copied(ElementsView elements) {
  return {elements.begin(), elements.end()};
}

std::optional<std::string_view> nameOf(const PropertyList& record) {
  for (const keys::Key key : {keys::ProfileName, keys::MacroName}) {
    if (record[key].isString()) return record[key].string();
  }
  return std::nullopt;
}

// The elements of two arrays without those that are the same at the beginning and at the end.
struct Span {
  std::size_t start;
  ElementsView before;
  ElementsView after;
};

Span differing(ElementsView before, ElementsView after) {
  const auto first = std::mismatch(before.begin(), before.end(), after.begin(), after.end()).first;
  const auto start = static_cast<std::size_t>(first - before.begin());
  before = before.subspan(start);
  after = after.subspan(start);
  while (!before.empty() && !after.empty() && before.back() == after.back()) {
    before = before.first(before.size() - 1);
    after = after.first(after.size() - 1);
  }
  return {start, before, after};
}

struct Match {
  std::size_t before;
  std::size_t after;
};

// The records of both that have the same name, as many as possible without changing their order.
std::vector<Match> matchedByName(ElementsView before, ElementsView after) {
  // longest[i][j]: how many of those from i and j on match.
  std::vector<std::vector<std::size_t>> longest(before.size() + 1, std::vector<std::size_t>(after.size() + 1));
  const auto isMatch = [&](std::size_t i, std::size_t j) {
    const auto name = nameOf(before[i]);
    return name && name == nameOf(after[j]);
  };
  for (std::size_t i = before.size(); i-- > 0;) {
    for (std::size_t j = after.size(); j-- > 0;) {
      longest[i][j] = isMatch(i, j) ? longest[i + 1][j + 1] + 1 : std::max(longest[i + 1][j], longest[i][j + 1]);
    }
  }
  std::vector<Match> matches;
  for (std::size_t i = 0, j = 0; i < before.size() && j < after.size();) {
    if (isMatch(i, j)) {
      matches.push_back({i++, j++});
    } else if (longest[i + 1][j] >= longest[i][j + 1]) {
      ++i;
    } else {
      ++j;
    }
  }
  return matches;
}

// Each key that one of two dictionaries has, with the value of both; in the order of the keys.
template <typename Function>
void forEachKey(const PropertyList& left, const PropertyList& right, const Function& function) {
  for (std::size_t i = 0, j = 0; i < left.size() || j < right.size();) {
    const bool isInLeft = i < left.size() && (j == right.size() || left.keyAt(i) <= right.keyAt(j));
    const bool isInRight = j < right.size() && (!isInLeft || left.keyAt(i) == right.keyAt(j));
    const std::string_view key = isInLeft ? left.keyAt(i) : right.keyAt(j);
    function(key, isInLeft ? left.valueAt(i++) : PropertyList(), isInRight ? right.valueAt(j++) : PropertyList());
  }
}

class Comparison {
 public:
  void compareBundles(const PropertyList& before, const PropertyList& after) {
    forEachKey(before, after, [this](std::string_view key, const PropertyList& left, const PropertyList& right) {
      if (key != keys::Profiles && key != keys::Macros) compareAt(key, left, right);
    });
    compareRecords(keys::Profiles, before, after,
                   [](const PropertyList& profile, std::size_t) { return withoutGroupsInForce(profile); });
    compareRecords(keys::Macros, before, after, withoutPosition);
    // Where profiles come and go, it tells whether the mouse has gone to another one since.
    if (std::any_of(mEdits.begin(), mEdits.end(), isOfProfiles) &&
        std::none_of(mEdits.begin(), mEdits.end(), isOfActiveProfile)) {
      mEdits.push_back({placeOfActiveProfile(), before[keys::DeviceSettings][keys::ActiveProfile],
                        after[keys::DeviceSettings][keys::ActiveProfile]});
    }
  }

  Edits take() { return std::move(mEdits); }

 private:
  // Where there are a thousand records, only those between the first and the last that differ are copied.
  template <typename Forget>
  void compareRecords(keys::Key key, const PropertyList& before, const PropertyList& after, const Forget& forget) {
    if (before[key] == after[key]) return;
    const Span span = differing(before[key].elements(), after[key].elements());
    Elements elementsBefore = copied(span.before);
    Elements elementsAfter = copied(span.after);
    const auto forgetIn = [&](Elements& elements) {
      for (std::size_t each = 0; each < elements.size(); ++each) {
        elements[each] = forget(elements[each], span.start + each);
      }
    };
    forgetIn(elementsBefore);
    forgetIn(elementsAfter);
    mPlace.emplace_back(key);
    compareArrays(span.start, elementsBefore, elementsAfter);
    mPlace.pop_back();
  }

  // Of two that differ.
  void compare(const PropertyList& before, const PropertyList& after) {
    if (before.isDictionary() && after.isDictionary()) {
      compareDictionaries(before, after);
    } else if (before.isArray() && after.isArray()) {
      compareArrays(0, before.elements(), after.elements());
    } else {
      mEdits.push_back({PropertyList::array(mPlace), before, after});
    }
  }

  template <typename Step>
  void compareAt(Step step, const PropertyList& before, const PropertyList& after) {
    if (before == after) return;
    mPlace.emplace_back(step);
    compare(before, after);
    mPlace.pop_back();
  }

  void compareDictionaries(const PropertyList& before, const PropertyList& after) {
    forEachKey(before, after, [this](std::string_view key, const PropertyList& left, const PropertyList& right) {
      compareAt(key, left, right);
    });
  }

  // first: the position of the first elements.
  void compareArrays(std::size_t first, ElementsView before, ElementsView after) {
    const Span span = differing(before, after);
    if (span.before.size() > maximumMatched || span.after.size() > maximumMatched) {
      splice(first + span.start, span.before, span.after);
    } else {
      compareMatched(first + span.start, span.before, span.after);
    }
  }

  // start: the position of the first element. What comes before a splice keeps its position, so the last one is first.
  void compareMatched(std::size_t start, ElementsView before, ElementsView after) {
    std::vector<Match> matches = matchedByName(before, after);
    matches.push_back({before.size(), after.size()});
    std::vector<Span> gaps;
    Match last{0, 0};
    for (const Match& match : matches) {
      const ElementsView gone = before.subspan(last.before, match.before - last.before);
      const ElementsView come = after.subspan(last.after, match.after - last.after);
      if (gone.size() == come.size()) {
        for (std::size_t each = 0; each < gone.size(); ++each) {
          compareAt(start + last.before + each, gone[each], come[each]);
        }
      } else {
        gaps.push_back({start + last.before, gone, come});
      }
      if (match.before < before.size()) compareAt(start + match.before, before[match.before], after[match.after]);
      last = {match.before + 1, match.after + 1};
    }
    std::reverse(gaps.begin(), gaps.end());
    for (const Span& gap : gaps) splice(gap.start, gap.before, gap.after);
  }

  void splice(std::size_t start, ElementsView before, ElementsView after) {
    mPlace.emplace_back(start);
    mEdits.push_back(
        {PropertyList::array(mPlace), PropertyList::array(copied(before)), PropertyList::array(copied(after)), true});
    mPlace.pop_back();
  }

  Elements mPlace;
  Edits mEdits;
};

}  // namespace

Edits editsBetween(const PropertyList& before, const PropertyList& after) {
  Comparison comparison;
  comparison.compareBundles(before, after);
  return comparison.take();
}

}  // namespace vorn::engine
