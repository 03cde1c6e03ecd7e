#include "core-engine/focus/ProfileFollower.h"

#include <algorithm>
#include <utility>

#include "model/SettingsKeys.h"

namespace vorn::engine {

namespace {

bool isSame(const Application& left, const Application& right) {
  const bool isNamed = !left.identifier.empty() || !left.executable.empty() || !left.instance.empty();
  return left.identifier == right.identifier && left.executable == right.executable &&
         left.instance == right.instance && (isNamed || left.name.empty() == right.name.empty());
}

// Where each profile of before stands now; negative where it is gone. One that is as it was is found first, then one of
// its name, then one that has only got another name.
std::vector<std::int64_t> placesAfter(const PropertyList& before, const PropertyList& after) {
  const auto count = static_cast<std::int64_t>(before.size());
  const auto countNow = static_cast<std::int64_t>(after.size());
  std::vector<std::int64_t> places(before.size(), -1);
  std::vector<bool> isTaken(after.size(), false);
  const auto match = [&](std::int64_t from, std::int64_t to, const auto& isSame) {
    std::int64_t& place = places[static_cast<std::size_t>(from)];
    if (place >= 0 || isTaken[static_cast<std::size_t>(to)] || !isSame(before.at(from), after.at(to))) return;
    place = to;
    isTaken[static_cast<std::size_t>(to)] = true;
  };
  const auto matchInPlace = [&](const auto& isSame) {
    for (std::int64_t each = 0; each < std::min(count, countNow); ++each) match(each, each, isSame);
  };
  const auto matchAnywhere = [&](const auto& isSame) {
    matchInPlace(isSame);
    for (std::int64_t each = 0; each < count; ++each) {
      for (std::int64_t other = 0; other < countNow; ++other) match(each, other, isSame);
    }
  };
  matchAnywhere([](const PropertyList& left, const PropertyList& right) { return left == right; });
  matchAnywhere([](const PropertyList& left, const PropertyList& right) {
    return left[keys::ProfileName] == right[keys::ProfileName];
  });
  if (count == countNow) matchInPlace([](const PropertyList&, const PropertyList&) { return true; });
  return places;
}

}  // namespace

ProfileFollower::ProfileFollower(Scheduler& scheduler, ApplicationMatch::Entries entries, std::function<void()> due)
    : mScheduler(scheduler), mEntries(std::move(entries)), mDue(std::move(due)) {}

ProfileFollower::~ProfileFollower() {
  mScheduler.cancel(mTicket);
}

void ProfileFollower::begin(const PropertyList& bundle, std::optional<std::int64_t> former) {
  mBundle = bundle;
  readRules();
  const auto count = static_cast<std::int64_t>(mRules.size());
  if (former && *former >= 0 && *former < count) keepFormer(former);
  if (mFormer) wait();
}

void ProfileFollower::settingsChanged(const PropertyList& before, const PropertyList& after, bool isOwn) {
  mBundle = before;
  const std::int64_t wasActive = active();
  mBundle = after;
  if (before[keys::Profiles] != after[keys::Profiles]) readRules();
  if (isOwn && mStep) return keepFormer(mStep->former);
  const std::vector<std::int64_t> places = placesAfter(before[keys::Profiles], after[keys::Profiles]);
  const auto placeOf = [&places](std::int64_t profile) {
    const bool isKnown = profile >= 0 && profile < static_cast<std::int64_t>(places.size());
    return isKnown ? places[static_cast<std::size_t>(profile)] : -1;
  };
  if (mFormer) mFormer = placeOf(*mFormer);
  if (mFormer && *mFormer < 0) mFormer.reset();
  // One that takes the place of a deleted one was not chosen.
  const std::int64_t place = placeOf(wasActive);
  if (place >= 0 && place != active()) {
    mChosenIn = mFront;
    if (!isUsed()) mFormer.reset();
  }
  keepFormer(mFormer);
  if (isUsed() || mFormer) return wait();
  forget();
}

void ProfileFollower::setApplication(const std::optional<Application>& application) {
  const bool isKnown = mFront.has_value() && application.has_value();
  const bool isOther = isKnown ? !isSame(*mFront, *application) : mFront.has_value() != application.has_value();
  mFront = application;
  if (isOther) wait();
}

bool ProfileFollower::isUsed() const {
  return std::any_of(mRules.begin(), mRules.end(), [](const Rule& rule) { return rule.isOn && rule.match.isTied(); });
}

std::optional<std::int64_t> ProfileFollower::choice() const {
  if (!mFront) return std::nullopt;
  const auto fits = [this](const Rule& rule) { return rule.isOn && rule.match.fits(*mFront); };
  const std::int64_t now = active();
  if (now >= 0 && now < static_cast<std::int64_t>(mRules.size()) && fits(mRules[static_cast<std::size_t>(now)])) {
    return now;
  }
  const auto found = std::find_if(mRules.begin(), mRules.end(), fits);
  if (found == mRules.end()) return std::nullopt;
  return found - mRules.begin();
}

std::optional<ProfileFollower::Step> ProfileFollower::next() {
  mStep.reset();
  if (mTicket != 0) return std::nullopt;
  const bool mayDecide = mFront.has_value() || !isUsed();
  if (!mayDecide) return std::nullopt;
  const bool isChosen = mChosenIn && (!mFront || isSame(*mChosenIn, *mFront));
  if (isChosen) {
    // Where nothing is followed any more, nothing will go back.
    if (!isUsed()) forget();
    return std::nullopt;
  }
  mChosenIn.reset();
  const auto chosen = choice();
  if (chosen && *chosen != active()) mStep = Step{*chosen, mFormer ? mFormer : active()};
  if (!chosen && mFormer) mStep = Step{*mFormer};
  // At home again.
  if (mStep && mStep->former == mStep->profile) mStep->former.reset();
  return mStep;
}

void ProfileFollower::readRules() {
  const PropertyList& profiles = mBundle[keys::Profiles];
  std::vector<Rule> rules;
  for (std::size_t each = 0; each < profiles.size(); ++each) {
    const PropertyList& profile = profiles.at(static_cast<std::int64_t>(each));
    const PropertyList& appInfo = profile[keys::AppInfo];
    const bool isOn = profile[keys::AutoSwitchOn].toInt() != 0;
    // Entries are read once, and only of applications that matter.
    const auto known = std::find_if(mRules.begin(), mRules.end(),
                                    [&](const Rule& rule) { return rule.appInfo == appInfo && rule.isOn == isOn; });
    if (known != mRules.end()) {
      rules.push_back(*known);
    } else {
      rules.push_back({appInfo, ApplicationMatch(isOn ? appInfo : PropertyList(), mEntries), isOn});
    }
  }
  mRules = std::move(rules);
}

std::int64_t ProfileFollower::active() const {
  return mBundle[keys::DeviceSettings][keys::ActiveProfile].toInt64();
}

void ProfileFollower::keepFormer(std::optional<std::int64_t> former) {
  mFormer = former == active() ? std::nullopt : former;
}

void ProfileFollower::forget() {
  mFormer.reset();
  mChosenIn.reset();
}

// A stream of changes costs one timer a moment.
void ProfileFollower::wait() {
  mQuietFrom = mScheduler.now() + quietTime;
  if (mTicket == 0) mTicket = mScheduler.after(quietTime, [this] { waited(); });
}

void ProfileFollower::waited() {
  mTicket = 0;
  const Scheduler::Duration left = mQuietFrom - mScheduler.now();
  if (left > Scheduler::Duration::zero()) {
    mTicket = mScheduler.after(left, [this] { waited(); });
    return;
  }
  mDue();
}

}  // namespace vorn::engine
