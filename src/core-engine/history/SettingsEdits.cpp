#include "core-engine/history/SettingsEdits.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <numeric>
#include <optional>
#include <span>
#include <string_view>
#include <utility>

#include "core-engine/rules/SensitivityRules.h"
#include "model/SettingsKeys.h"

namespace vorn::engine {

namespace {

using Elements = std::vector<PropertyList>;
using ElementsView = std::span<const PropertyList>;

// What the mouse itself puts into a profile: another keymap with its groups, and another sensitivity.
constexpr std::array keymapInForce = {keys::KeymapID, keys::Keys, keys::Buttons};

template <typename Function>
void forEachSwitchedByMouse(const Function& function) {
  for (const keys::Key key : keymapInForce) function(key);
  for (const keys::Key key : sensitivityInForce) function(key);
}

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
      : mFormer(bundle[keys::DeviceSettings][keys::ActiveProfile].toInt64()), mPosition(mFormer) {}

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
  // places: where the profiles stand now. In the place of one that is gone it is the one before.
  std::int64_t positionIn(const std::vector<std::int64_t>& places) const {
    const bool isThere = mFormer >= 0 && std::cmp_less(mFormer, places.size());
    const std::int64_t place = isThere ? places[static_cast<std::size_t>(mFormer)] : -1;
    return place >= 0 ? place : mPosition;
  }

 private:
  std::int64_t mFormer;
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
    if (before[key] == after[key]) return;
    const Span span = differing(before[key].elements(), after[key].elements());
    Elements elementsBefore = copied(span.before);
    Elements elementsAfter = copied(span.after);
    for (std::size_t each = 0; each < elementsBefore.size(); ++each) forget(elementsBefore[each], span.start + each);
    for (std::size_t each = 0; each < elementsAfter.size(); ++each) forget(elementsAfter[each], span.start + each);
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

// --- Editing

PropertyList withoutSwitched(PropertyList profile) {
  forEachSwitchedByMouse([&profile](keys::Key key) { profile = profile.without(key); });
  return profile;
}

bool isSameProfile(const PropertyList& left, const PropertyList& right) {
  return left == right ||
         (left.isDictionary() && right.isDictionary() && withoutSwitched(left) == withoutSwitched(right));
}

// An edit in one of its directions.
struct Step {
  const Edit* edit;
  PropertyList from;
  PropertyList to;
  bool isLeftOut = false;
  std::vector<std::int64_t> origins{};  // of profiles that come: where each stood before; none, or negative, if nowhere

  bool isOfProfiles() const { return ActiveProfile::isMovedBy(*edit); }
};

// What went in a step.
struct Gone {
  PropertyList elements;
  std::vector<std::int64_t> origins;  // of profiles: where each stood before the first step
};

// The container with the edit of its element or entry; nothing where from does not stand there.
std::optional<PropertyList> edited(const PropertyList& container, const PropertyList& key, const Step& step,
                                   Gone& gone) {
  const PropertyList& from = step.from;
  const PropertyList& to = step.to;
  if (step.edit->isSplice) {
    const ElementsView elements = container.elements();
    const std::size_t start = key.toUnsigned();
    if (!container.isArray() || start > elements.size() || from.size() > elements.size() - start) return std::nullopt;
    const ElementsView there = elements.subspan(start, from.size());
    const auto isSame = [&step](const PropertyList& left, const PropertyList& right) {
      return step.isOfProfiles() ? isSameProfile(left, right) : left == right;
    };
    if (!std::equal(there.begin(), there.end(), from.elements().begin(), isSame)) return std::nullopt;
    gone.elements = PropertyList::array(copied(there));
    Elements result = copied(elements.first(start));
    result.insert(result.end(), to.elements().begin(), to.elements().end());
    const ElementsView rest = elements.subspan(start + from.size());
    result.insert(result.end(), rest.begin(), rest.end());
    return PropertyList::array(std::move(result));
  }
  if (key.isString()) {
    if (!container.isDictionary() || container[key.string()] != from) return std::nullopt;
    return to.isNone() ? container.without(key.string()) : container.with(key.string(), to);
  }
  if (!container.isArray() || container.at(key.toInt64()) != from) return std::nullopt;
  return container.replacing(key.toInt64(), to);
}

std::optional<PropertyList> editedBelow(const PropertyList& container, ElementsView place, const Step& step,
                                        Gone& gone) {
  const PropertyList& key = place.front();
  if (place.size() == 1) return edited(container, key, step, gone);
  const PropertyList& inner = key.isString() ? container[key.string()] : container.at(key.toInt64());
  const auto changed = editedBelow(inner, place.subspan(1), step, gone);
  if (!changed) return std::nullopt;
  return key.isString() ? container.with(key.string(), *changed) : container.replacing(key.toInt64(), *changed);
}

// Which profile stands where while they come and go.
class ProfilePlaces {
 public:
  explicit ProfilePlaces(std::size_t count) : mCount(count), mOrigins(count) {
    std::iota(mOrigins.begin(), mOrigins.end(), 0);
  }

  void take(const Step& step, Gone& gone) {
    const std::size_t start = step.edit->place.at(1).toUnsigned();
    // Edits that nobody makes may have put other profiles in the place of all.
    if (start > mOrigins.size() || step.from.size() > mOrigins.size() - start) return;
    const auto first = mOrigins.begin() + static_cast<std::ptrdiff_t>(start);
    const auto last = first + static_cast<std::ptrdiff_t>(step.from.size());
    gone.origins.assign(first, last);
    std::vector<std::int64_t> come = step.origins;
    come.resize(step.to.size(), -1);
    mOrigins.insert(mOrigins.erase(first, last), come.begin(), come.end());
  }

  // For each profile of before where it stands; negative where it is gone.
  std::vector<std::int64_t> places() const {
    std::vector<std::int64_t> result(mCount, -1);
    for (std::size_t place = 0; place < mOrigins.size(); ++place) {
      if (mOrigins[place] >= 0) result[static_cast<std::size_t>(mOrigins[place])] = static_cast<std::int64_t>(place);
    }
    return result;
  }

 private:
  std::size_t mCount;
  std::vector<std::int64_t> mOrigins;
};

struct Attempt {
  EditedBundle result;
  std::vector<Gone> gone;          // of each step
  std::vector<std::size_t> unfit;  // the steps that did not fit
};

Attempt attempted(const PropertyList& bundle, const std::vector<Step>& steps) {
  Attempt attempt{{withoutDerived(bundle)}, std::vector<Gone>(steps.size()), {}};
  EditedBundle& result = attempt.result;
  ActiveProfile active(bundle);
  ProfilePlaces places(bundle[keys::Profiles].size());
  bool isActiveGiven = false;
  for (std::size_t each = 0; each < steps.size(); ++each) {
    const Step& step = steps[each];
    const Edit& edit = *step.edit;
    std::optional<PropertyList> changed;
    if (!step.isLeftOut) changed = editedBelow(result.bundle, edit.place.elements(), step, attempt.gone[each]);
    if (!changed) {
      if (!step.isLeftOut) attempt.unfit.push_back(each);
      if (edit.before != edit.after) result.conflicts.push_back(edit);
      continue;
    }
    result.bundle = *std::move(changed);
    active.follow(edit, step.from, step.to);
    if (step.isOfProfiles()) places.take(step, attempt.gone[each]);
    if (isOfRecords(edit, keys::Macros)) result.macroMoves.push_back(moveOf(edit, step.from, step.to));
    if (ActiveProfile::is(edit)) isActiveGiven = true;
  }
  result.profilePlaces = places.places();
  if (active.hasMoved() && !isActiveGiven) {
    const PropertyList device = result.bundle[keys::DeviceSettings];
    const PropertyList position = active.positionIn(result.profilePlaces);
    result.bundle = result.bundle.with(keys::DeviceSettings, device.with(keys::ActiveProfile, position));
    std::erase_if(result.conflicts, ActiveProfile::is);
  }
  result.bundle = withDerived(result.bundle);
  return attempt;
}

// What comes and goes in one array does so together, and with it what was changed between; so does the active profile
// with the profiles.
void leaveOutWith(const Edit& splice, std::vector<Step>& steps) {
  const ElementsView array = splice.place.elements().first(splice.place.size() - 1);
  for (Step& each : steps) {
    const ElementsView place = each.edit->place.elements();
    const bool isBelow = place.size() > array.size() && std::equal(array.begin(), array.end(), place.begin());
    if (isBelow || (ActiveProfile::isMovedBy(splice) && ActiveProfile::is(*each.edit))) each.isLeftOut = true;
  }
}

// The profile that comes, with what the mouse has switched since it was as it was expected to go.
PropertyList withSwitchedSince(PropertyList profile, const PropertyList& expected, const PropertyList& gone) {
  forEachSwitchedByMouse([&](keys::Key key) {
    if (gone[key] == expected[key]) return;
    profile = gone.contains(key) ? profile.with(key, gone[key]) : profile.without(key);
  });
  return profile;
}

// A profile that goes at one place and comes at another is the same one: it keeps what the mouse has switched in it.
// False where none does.
bool followMoved(std::vector<Step>& steps, std::vector<Gone>& gone) {
  bool hasMoved = false;
  const auto follow = [&](Step& come, std::size_t position) {
    const PropertyList profile = come.to.at(static_cast<std::int64_t>(position));
    for (std::size_t each = 0; each < steps.size(); ++each) {
      std::vector<std::int64_t>& origins = gone[each].origins;
      for (std::size_t other = 0; other < origins.size(); ++other) {
        const auto index = static_cast<std::int64_t>(other);
        const PropertyList& expected = steps[each].from.at(index);
        if (origins[other] < 0 || !isSameProfile(profile, expected)) continue;
        const PropertyList now = withSwitchedSince(profile, expected, gone[each].elements.at(index));
        come.to = come.to.replacing(static_cast<std::int64_t>(position), now);
        come.origins[position] = std::exchange(origins[other], -1);
        hasMoved = true;
        return;
      }
    }
  };
  for (Step& each : steps) {
    if (each.isLeftOut || !each.isOfProfiles()) continue;
    each.origins.assign(each.to.size(), -1);
    for (std::size_t position = 0; position < each.origins.size(); ++position) follow(each, position);
  }
  return hasMoved;
}

EditedBundle withEdits(const PropertyList& bundle, std::vector<Step> steps) {
  for (;;) {
    Attempt attempt = attempted(bundle, steps);
    bool hasLeftOut = false;
    for (const std::size_t each : attempt.unfit) {
      if (!steps[each].edit->isSplice) continue;
      leaveOutWith(*steps[each].edit, steps);
      hasLeftOut = true;
    }
    if (hasLeftOut) continue;
    return followMoved(steps, attempt.gone) ? attempted(bundle, steps).result : std::move(attempt.result);
  }
}

// Whether what an edit is about is told by another one, for whoever sees the settings.
bool isToldBy(const Edit& other, const Edit& edit) {
  const ElementsView place = edit.place.elements();
  const ElementsView otherPlace = other.place.elements();
  // What comes and goes in one array does so together, and the active profile with the profiles.
  if (edit.isSplice) {
    return other.isSplice && &other < &edit &&
           std::ranges::equal(place.first(place.size() - 1), otherPlace.first(otherPlace.size() - 1));
  }
  if (ActiveProfile::is(edit)) return ActiveProfile::isMovedBy(other);
  // A device-wide value is in the profile and in the device settings.
  return place.front().string() == keys::DeviceSettings && otherPlace.size() > 2 &&
         otherPlace.front().string() == keys::Profiles && std::ranges::equal(place.subspan(1), otherPlace.subspan(2));
}

}  // namespace

std::size_t valueCount(const Edits& edits) {
  return static_cast<std::size_t>(std::count_if(edits.begin(), edits.end(), [&edits](const Edit& edit) {
    return std::none_of(edits.begin(), edits.end(), [&edit](const Edit& other) { return isToldBy(other, edit); });
  }));
}

Edits editsBetween(const PropertyList& before, const PropertyList& after) {
  Comparison comparison;
  comparison.compareBundles(before, after);
  return comparison.take();
}

EditedBundle withEditsTakenBack(const PropertyList& bundle, const Edits& edits) {
  std::vector<Step> steps;
  std::transform(edits.rbegin(), edits.rend(), std::back_inserter(steps), [](const Edit& each) {
    return Step{&each, each.after, each.before};
  });
  return withEdits(bundle, std::move(steps));
}

EditedBundle withEditsMadeAgain(const PropertyList& bundle, const Edits& edits) {
  std::vector<Step> steps;
  std::transform(edits.begin(), edits.end(), std::back_inserter(steps), [](const Edit& each) {
    return Step{&each, each.before, each.after};
  });
  return withEdits(bundle, std::move(steps));
}

}  // namespace vorn::engine
