#include "model/MacroEdits.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <utility>

#include "model/SettingsKeys.h"
#include "model/eventParser.h"

namespace vorn {

namespace {

using UsageKey = std::pair<hid::UsagePage, hid::Usage>;

bool isPress(const PropertyList& event) {
  return event[keys::Command].toInt() == eventParser::pressCommand;
}

UsageKey keyOf(const PropertyList& event) {
  const HidUsage usage = usageOfEvent(event);
  return {usage.page, usage.usage};
}

// The chosen places that the list has.
Places within(const MacroEventList& events, const Places& chosen) {
  return {chosen.begin(), chosen.lower_bound(events.size())};
}

PropertyList withDelay(const PropertyList& event, const PropertyList& delay) {
  return event.with(keys::Delay, delay);
}

// The pairs of events that carry marks: a press and its release, by the marks.
using Marks = std::vector<std::size_t>;
std::vector<std::pair<std::size_t, std::size_t>> markedPairs(const MacroEventList& events, const Marks& marks) {
  std::vector<std::pair<std::size_t, std::size_t>> pairs;
  const auto partners = pairsOf(events);
  for (std::size_t place = 0; place < events.size(); ++place) {
    if (partners[place] && *partners[place] > place) pairs.emplace_back(marks[place], marks[*partners[place]]);
  }
  std::ranges::sort(pairs);
  return pairs;
}

// A list in which runs of chosen events move. Towards the beginning; a move towards the end is one in the reversed
// list.
class Mover {
 public:
  Mover(const MacroEventList& events, Places chosen) : mEvents(events), mChosen(std::move(chosen)) {
    mMarks.resize(events.size());
    for (std::size_t place = 0; place < mMarks.size(); ++place) mMarks[place] = place;
  }

  const MacroEventList& events() const { return mEvents; }
  const Places& chosen() const { return mChosen; }
  const Marks& marks() const { return mMarks; }

  // False where the first run stands at the beginning.
  bool moveUp() {
    if (mChosen.empty() || *mChosen.begin() == 0) return false;
    Places moved;
    for (auto run = mChosen.begin(); run != mChosen.end();) {
      const std::size_t first = *run;
      std::size_t behind = first;
      while (run != mChosen.end() && *run == behind) {
        moved.insert(behind - 1);
        ++run;
        ++behind;
      }
      passUp(first, behind);
    }
    mChosen = std::move(moved);
    return true;
  }

  bool moveDown() {
    if (mChosen.empty() || *mChosen.rbegin() + 1 >= mEvents.size()) return false;
    Places moved;
    for (auto run = mChosen.rbegin(); run != mChosen.rend();) {
      const std::size_t last = *run;
      std::size_t first = last;
      moved.insert(first + 1);
      for (++run; run != mChosen.rend() && *run + 1 == first; ++run) moved.insert(first--);
      passDown(first, last + 1);
    }
    mChosen = std::move(moved);
    return true;
  }

 private:
  // The run [first, behind) goes before the event above it.
  void passUp(std::size_t first, std::size_t behind) {
    exchangeDelays(first - 1, first);
    rotate(first - 1, first, behind);
  }
  void passDown(std::size_t first, std::size_t behind) {
    exchangeDelays(first, behind);
    rotate(first, behind, behind + 1);
  }
  void exchangeDelays(std::size_t one, std::size_t other) {
    const PropertyList delay = mEvents[one][keys::Delay];
    mEvents[one] = withDelay(mEvents[one], mEvents[other][keys::Delay]);
    mEvents[other] = withDelay(mEvents[other], delay);
  }
  void rotate(std::size_t first, std::size_t middle, std::size_t behind) {
    const auto turn = [=](auto& list) {
      const auto at = [&list](std::size_t place) { return list.begin() + static_cast<std::ptrdiff_t>(place); };
      std::rotate(at(first), at(middle), at(behind));
    };
    turn(mEvents);
    turn(mMarks);
  }

  MacroEventList mEvents;
  Places mChosen;
  Marks mMarks;  // where each event stood at first
};

std::optional<EditedEvents> moved(const MacroEventList& events, const Places& chosen, bool keepsPairs,
                                  bool (Mover::*step)()) {
  Mover mover(events, within(events, chosen));
  const auto before =
      keepsPairs ? markedPairs(events, mover.marks()) : std::vector<std::pair<std::size_t, std::size_t>>();
  while ((mover.*step)()) {
    if (!keepsPairs || markedPairs(mover.events(), mover.marks()) == before)
      return EditedEvents{mover.events(), mover.chosen()};
  }
  return std::nullopt;
}

template <typename Change>
std::optional<EditedEvents> changed(const MacroEventList& events, const Places& chosen, const Change& change) {
  EditedEvents result{events, within(events, chosen)};
  for (const std::size_t place : result.chosen) result.events[place] = change(events[place]);
  if (result.events == events) return std::nullopt;
  return result;
}

}  // namespace

PropertyList macroEvent(bool isPress, std::int64_t delay, HidUsage usage) {
  return PropertyList::dictionary({{keys::Command, isPress ? eventParser::pressCommand : eventParser::releaseCommand},
                                   {keys::Delay, delay},
                                   {keys::Page, usage.page},
                                   {keys::Argument, usage.usage}});
}

HidUsage usageOfEvent(const PropertyList& event) {
  return {static_cast<hid::UsagePage>(event[keys::Page].toInt()),
          static_cast<hid::Usage>(event[keys::Argument].toInt())};
}

MacroEventList stroke(HidUsage usage, std::int64_t delay) {
  return {macroEvent(true, delay, usage), macroEvent(false, delay, usage)};
}

std::vector<std::optional<std::size_t>> pairsOf(const MacroEventList& events) {
  std::vector<std::optional<std::size_t>> partners(events.size());
  std::map<UsageKey, std::size_t> open;
  for (std::size_t place = 0; place < events.size(); ++place) {
    const UsageKey key = keyOf(events[place]);
    if (isPress(events[place])) {
      open[key] = place;
    } else if (const auto press = open.find(key); press != open.end()) {
      partners[place] = press->second;
      partners[press->second] = place;
      open.erase(press);
    }
  }
  return partners;
}

Places withPartners(const MacroEventList& events, const Places& chosen) {
  Places all = within(events, chosen);
  const auto partners = pairsOf(events);
  for (const std::size_t place : within(events, chosen)) {
    if (partners[place]) all.insert(*partners[place]);
  }
  return all;
}

std::vector<HidUsage> pressedAtEnd(const MacroEventList& events) {
  std::vector<HidUsage> pressed;
  for (const PropertyList& event : events) {
    const HidUsage usage = usageOfEvent(event);
    const auto found = std::ranges::find(pressed, usage);
    if (isPress(event)) {
      if (found == pressed.end()) pressed.push_back(usage);
    } else if (found != pressed.end()) {
      pressed.erase(found);
    }
  }
  return pressed;
}

std::optional<EditedEvents> withoutEvents(const MacroEventList& events, const Places& chosen) {
  const Places removed = within(events, chosen);
  if (removed.empty()) return std::nullopt;
  EditedEvents result;
  for (std::size_t place = 0; place < events.size(); ++place) {
    if (!removed.contains(place)) result.events.push_back(events[place]);
  }
  // What has come into the place of the first one.
  if (!result.events.empty()) result.chosen = {std::min(*removed.begin(), result.events.size() - 1)};
  return result;
}

std::optional<EditedEvents> withDelays(const MacroEventList& events, const Places& chosen, std::int64_t delay) {
  return changed(events, chosen, [delay](const PropertyList& event) { return withDelay(event, delay); });
}

std::optional<EditedEvents> withInserted(const MacroEventList& events, std::size_t place, const MacroEventList& added) {
  if (added.empty()) return std::nullopt;
  const std::size_t first = std::min(place, events.size());
  EditedEvents result{events, {}};
  result.events.insert(result.events.begin() + static_cast<std::ptrdiff_t>(first), added.begin(), added.end());
  for (std::size_t index = 0; index < added.size(); ++index) result.chosen.insert(first + index);
  return result;
}

std::optional<EditedEvents> withDuplicates(const MacroEventList& events, const Places& chosen) {
  const Places copied = within(events, chosen);
  if (copied.empty()) return std::nullopt;
  MacroEventList copies;
  for (const std::size_t place : copied) copies.push_back(events[place]);
  return withInserted(events, *copied.rbegin() + 1, copies);
}

std::optional<EditedEvents> withUsage(const MacroEventList& events, const Places& chosen, HidUsage usage) {
  return changed(events, chosen, [usage](const PropertyList& event) {
    return event.with(keys::Page, usage.page).with(keys::Argument, usage.usage);
  });
}

std::optional<EditedEvents> movedUp(const MacroEventList& events, const Places& chosen, bool keepsPairs) {
  return moved(events, chosen, keepsPairs, &Mover::moveUp);
}

std::optional<EditedEvents> movedDown(const MacroEventList& events, const Places& chosen, bool keepsPairs) {
  return moved(events, chosen, keepsPairs, &Mover::moveDown);
}

}  // namespace vorn
