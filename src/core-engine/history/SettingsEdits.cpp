#include "core-engine/history/SettingsEdits.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <numeric>
#include <optional>
#include <span>
#include <utility>

#include "core-engine/history/DerivedSettings.h"
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

Elements copied(ElementsView elements) {
  return {elements.begin(), elements.end()};
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
    if (!isOfProfiles(edit)) return;
    mHasMoved = true;
    const ArrayMove move = moveOf(edit, from, to);
    if (mPosition >= move.start + move.gone) {
      mPosition += move.come - move.gone;
    } else if (mPosition >= move.start) {
      mPosition = std::max<std::int64_t>(0, std::min(mPosition, move.start + move.come - 1));
    }
  }

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

  bool isOfProfiles() const { return engine::isOfProfiles(*edit); }
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
    if (isOfMacros(edit)) result.macroMoves.push_back(moveOf(edit, step.from, step.to));
    if (isOfActiveProfile(edit)) isActiveGiven = true;
  }
  result.profilePlaces = places.places();
  if (active.hasMoved() && !isActiveGiven) {
    const PropertyList device = result.bundle[keys::DeviceSettings];
    const PropertyList position = active.positionIn(result.profilePlaces);
    result.bundle = result.bundle.with(keys::DeviceSettings, device.with(keys::ActiveProfile, position));
    std::erase_if(result.conflicts, isOfActiveProfile);
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
    if (isBelow || (isOfProfiles(splice) && isOfActiveProfile(*each.edit))) each.isLeftOut = true;
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
  if (isOfActiveProfile(edit)) return isOfProfiles(other);
  // A device-wide value is in the profile and in the device settings.
  return place.front().string() == keys::DeviceSettings && otherPlace.size() > 2 &&
         otherPlace.front().string() == keys::Profiles && std::ranges::equal(place.subspan(1), otherPlace.subspan(2));
}

bool isOfRecords(const Edit& edit, keys::Key key) {
  return edit.isSplice && edit.place.size() == 2 && edit.place.at(0).string() == key;
}

}  // namespace

bool isOfProfiles(const Edit& edit) {
  return isOfRecords(edit, keys::Profiles);
}

bool isOfMacros(const Edit& edit) {
  return isOfRecords(edit, keys::Macros);
}

PropertyList placeOfActiveProfile() {
  return PropertyList::array({keys::DeviceSettings, keys::ActiveProfile});
}

bool isOfActiveProfile(const Edit& edit) {
  return edit.place == placeOfActiveProfile();
}

std::size_t valueCount(const Edits& edits) {
  return static_cast<std::size_t>(std::count_if(edits.begin(), edits.end(), [&edits](const Edit& edit) {
    return std::none_of(edits.begin(), edits.end(), [&edit](const Edit& other) { return isToldBy(other, edit); });
  }));
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
