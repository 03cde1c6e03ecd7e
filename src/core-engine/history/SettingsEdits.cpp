#include "core-engine/history/SettingsEdits.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <utility>

#include "model/SettingsKeys.h"

namespace vorn::engine {

namespace {

using Elements = std::vector<PropertyList>;
using ElementsView = std::span<const PropertyList>;

// What the mouse itself changes in play.
constexpr std::array volatileKeys = {keys::KeymapID, keys::StageValue, keys::DPIX, keys::DPIY};

// Where more elements than these differ, they are kept whole instead of being matched.
constexpr std::size_t maximumMatched = 64;

Elements copied(ElementsView elements) {
  return {elements.begin(), elements.end()};
}

// --- What follows from other values

// Stands for it.
constexpr std::string_view derived = "derived from other values";

template <typename Function>
PropertyList withEach(const PropertyList& array, const Function& function) {
  Elements elements = copied(array.elements());
  for (std::size_t position = 0; position < elements.size(); ++position) function(elements[position], position);
  return PropertyList::array(std::move(elements));
}

void forgetGroupsInForce(PropertyList& profile, std::size_t) {
  const PropertyList keymap = profile[keys::Keymap].at(profile[keys::KeymapID].toInt64());
  for (const keys::Key group : {keys::Keys, keys::Buttons}) {
    if (profile.contains(group) && profile[group] == keymap[group]) profile = profile.with(group, derived);
  }
}

void takeGroupsInForce(PropertyList& profile, std::size_t) {
  const PropertyList keymap = profile[keys::Keymap].at(profile[keys::KeymapID].toInt64());
  for (const keys::Key group : {keys::Keys, keys::Buttons}) {
    if (profile[group].string() == derived) profile = profile.with(group, keymap[group]);
  }
}

void forgetPosition(PropertyList& macro, std::size_t position) {
  if (macro[keys::MacroID] == PropertyList(position)) macro = macro.with(keys::MacroID, derived);
}

void takePosition(PropertyList& macro, std::size_t position) {
  if (macro[keys::MacroID].string() == derived) macro = macro.with(keys::MacroID, position);
}

PropertyList withoutDerived(const PropertyList& bundle) {
  return bundle.with(keys::Profiles, withEach(bundle[keys::Profiles], forgetGroupsInForce))
      .with(keys::Macros, withEach(bundle[keys::Macros], forgetPosition));
}

PropertyList withDerived(const PropertyList& bundle) {
  return bundle.with(keys::Profiles, withEach(bundle[keys::Profiles], takeGroupsInForce))
      .with(keys::Macros, withEach(bundle[keys::Macros], takePosition));
}

// Whether records of this array come and go.
bool isOfRecords(const Edit& edit, keys::Key key) {
  return edit.isSplice && edit.place.size() == 2 && edit.place.at(0).string() == key;
}

ArrayMove moveOf(const Edit& edit, const PropertyList& from, const PropertyList& to) {
  return {edit.place.at(1).toInt64(), static_cast<std::int64_t>(from.size()), static_cast<std::int64_t>(to.size())};
}

// Which profile is active after profiles have come and gone.
class ActiveProfile {
 public:
  explicit ActiveProfile(const PropertyList& bundle)
      : mPosition(bundle[keys::DeviceSettings][keys::ActiveProfile].toInt64()) {}

  void follow(const Edit& edit, const PropertyList& from, const PropertyList& to) {
    if (!isMovedBy(edit)) return;
    mHasMoved = true;
    const ArrayMove move = moveOf(edit, from, to);
    if (mPosition >= move.start + move.gone) {
      mPosition += move.come - move.gone;
    } else if (mPosition >= move.start) {
      mPosition = std::max<std::int64_t>(0, std::min(mPosition, move.start + move.come - 1));
    }
  }

  static PropertyList place() { return PropertyList::array({keys::DeviceSettings, keys::ActiveProfile}); }
  static bool is(const Edit& edit) { return edit.place == place(); }
  static bool isMovedBy(const Edit& edit) { return isOfRecords(edit, keys::Profiles); }

  bool hasMoved() const { return mHasMoved; }
  std::int64_t position() const { return mPosition; }

 private:
  std::int64_t mPosition;
  bool mHasMoved = false;
};

// --- Comparing

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

class Comparison {
 public:
  void compareBundles(const PropertyList& before, const PropertyList& after) {
    const auto withoutRecords = [](const PropertyList& bundle) {
      return bundle.without(keys::Profiles).without(keys::Macros);
    };
    compareDictionaries(withoutRecords(before), withoutRecords(after));
    compareRecords(keys::Profiles, before, after, forgetGroupsInForce);
    compareRecords(keys::Macros, before, after, forgetPosition);
    // Where profiles come and go, it tells whether the mouse has gone to another one since.
    const auto isMove = [](const Edit& edit) { return ActiveProfile::isMovedBy(edit); };
    if (std::any_of(mEdits.begin(), mEdits.end(), isMove) &&
        std::none_of(mEdits.begin(), mEdits.end(), ActiveProfile::is)) {
      mEdits.push_back({ActiveProfile::place(), before[keys::DeviceSettings][keys::ActiveProfile],
                        after[keys::DeviceSettings][keys::ActiveProfile]});
    }
  }

  Edits take() { return std::move(mEdits); }

 private:
  // Where there are a thousand records, only those between the first and the last that differ are copied.
  template <typename Forget>
  void compareRecords(keys::Key key, const PropertyList& before, const PropertyList& after, const Forget& forget) {
    const Span span = differing(before[key].elements(), after[key].elements());
    Elements elementsBefore = copied(span.before);
    Elements elementsAfter = copied(span.after);
    for (std::size_t each = 0; each < elementsBefore.size(); ++each) forget(elementsBefore[each], span.start + each);
    for (std::size_t each = 0; each < elementsAfter.size(); ++each) forget(elementsAfter[each], span.start + each);
    mPlace.emplace_back(key);
    compareArrays(span.start, elementsBefore, elementsAfter);
    mPlace.pop_back();
  }

  void compare(const PropertyList& before, const PropertyList& after) {
    if (before == after) return;
    if (before.isDictionary() && after.isDictionary()) {
      compareDictionaries(before, after);
    } else if (before.isArray() && after.isArray()) {
      compareArrays(0, before.elements(), after.elements());
    } else {
      mEdits.push_back({PropertyList::array(mPlace), before, after});
    }
  }

  void compareAt(const PropertyList& step, const PropertyList& before, const PropertyList& after) {
    mPlace.push_back(step);
    compare(before, after);
    mPlace.pop_back();
  }

  void compareDictionaries(const PropertyList& before, const PropertyList& after) {
    for (const std::string_view key : before.keys()) compareAt(key, before[key], after[key]);
    for (const std::string_view key : after.keys()) {
      if (!before.contains(key)) compareAt(key, {}, after[key]);
    }
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

// --- Editing

PropertyList withoutVolatile(PropertyList record) {
  for (const keys::Key key : volatileKeys) record = record.without(key);
  return record;
}

bool isSameRecord(const PropertyList& left, const PropertyList& right) {
  return left == right ||
         (left.isDictionary() && right.isDictionary() && withoutVolatile(left) == withoutVolatile(right));
}

// The container with the edit of its element or entry; nothing where from does not stand there.
std::optional<PropertyList> edited(const PropertyList& container, const PropertyList& step, const PropertyList& from,
                                   const PropertyList& to, bool isSplice) {
  if (isSplice) {
    const ElementsView elements = container.elements();
    const std::size_t start = step.toUnsigned();
    if (!container.isArray() || start > elements.size() || from.size() > elements.size() - start) return std::nullopt;
    const ElementsView there = elements.subspan(start, from.size());
    if (!std::equal(there.begin(), there.end(), from.elements().begin(), isSameRecord)) return std::nullopt;
    Elements result = copied(elements.first(start));
    result.insert(result.end(), to.elements().begin(), to.elements().end());
    const ElementsView rest = elements.subspan(start + from.size());
    result.insert(result.end(), rest.begin(), rest.end());
    return PropertyList::array(std::move(result));
  }
  if (step.isString()) {
    if (!container.isDictionary() || container[step.string()] != from) return std::nullopt;
    return to.isNone() ? container.without(step.string()) : container.with(step.string(), to);
  }
  if (!container.isArray() || container.at(step.toInt64()) != from) return std::nullopt;
  return container.replacing(step.toInt64(), to);
}

std::optional<PropertyList> editedBelow(const PropertyList& container, ElementsView place, const PropertyList& from,
                                        const PropertyList& to, bool isSplice) {
  const PropertyList& step = place.front();
  if (place.size() == 1) return edited(container, step, from, to, isSplice);
  const PropertyList& inner = step.isString() ? container[step.string()] : container.at(step.toInt64());
  const auto changed = editedBelow(inner, place.subspan(1), from, to, isSplice);
  if (!changed) return std::nullopt;
  return step.isString() ? container.with(step.string(), *changed) : container.replacing(step.toInt64(), *changed);
}

// edits in the order in which they are to be made; isBack: what was before is to come.
template <typename Range>
EditedBundle withEdits(const PropertyList& bundle, const Range& edits, bool isBack) {
  EditedBundle result{withoutDerived(bundle)};
  ActiveProfile active(bundle);
  bool isActiveGiven = false;
  for (const Edit& edit : edits) {
    const PropertyList& from = isBack ? edit.after : edit.before;
    const PropertyList& to = isBack ? edit.before : edit.after;
    auto changed = editedBelow(result.bundle, edit.place.elements(), from, to, edit.isSplice);
    if (!changed) {
      result.conflicts.push_back(edit);
      continue;
    }
    result.bundle = *std::move(changed);
    active.follow(edit, from, to);
    if (isOfRecords(edit, keys::Macros)) result.macroMoves.push_back(moveOf(edit, from, to));
    if (ActiveProfile::is(edit)) isActiveGiven = true;
  }
  if (active.hasMoved() && !isActiveGiven) {
    const PropertyList device = result.bundle[keys::DeviceSettings];
    result.bundle = result.bundle.with(keys::DeviceSettings, device.with(keys::ActiveProfile, active.position()));
    std::erase_if(result.conflicts, ActiveProfile::is);
  }
  result.bundle = withDerived(result.bundle);
  return result;
}

}  // namespace

Edits editsBetween(const PropertyList& before, const PropertyList& after) {
  Comparison comparison;
  comparison.compareBundles(before, after);
  return comparison.take();
}

EditedBundle withEditsTakenBack(const PropertyList& bundle, const Edits& edits) {
  return withEdits(bundle, Edits(edits.rbegin(), edits.rend()), true);
}

EditedBundle withEditsMadeAgain(const PropertyList& bundle, const Edits& edits) {
  return withEdits(bundle, edits, false);
}

}  // namespace vorn::engine
