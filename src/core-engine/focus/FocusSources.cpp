#include "core-engine/focus/FocusSources.h"

#include <array>
#include <chrono>
#include <utility>

#include "protocol/Focus.h"

namespace vorn::engine {

namespace {

using std::chrono::milliseconds;
using State = ApplicationInFront::State;

// A display may have its socket before it listens there, and a service its name before it serves. After these, only
// what comes anew is tried.
constexpr std::array<milliseconds, 6> retryDelays = {milliseconds(100),  milliseconds(200),  milliseconds(500),
                                                     milliseconds(1000), milliseconds(3000), milliseconds(10000)};
// A source that has worked for so long begins with the first of them again.
constexpr std::chrono::seconds steadyTime{10};

}  // namespace

FocusSources::FocusSources(Scheduler& scheduler, Displays& displays, Makers makers, std::function<void()> changed)
    : mScheduler(scheduler), mDisplays(displays), mMakers(std::move(makers)), mChanged(std::move(changed)) {}

FocusSources::~FocusSources() {
  stop();
}

void FocusSources::setUsed(bool isUsed) {
  if (mIsUsed == isUsed) return;
  mIsUsed = isUsed;
  if (isUsed) {
    if (mTold) watchTeller(false);
    mRetries = 0;
    find();
  } else {
    stop();
  }
  mChanged();
}

void FocusSources::setTold(const std::string& connection, const Application& application) {
  if (mSource && mSource->takeTold(connection, application)) {
    // What it told before the source was there counts no more.
    if (!mTold || mTold->connection != connection) return;
    mTold.reset();
    mTeller.reset();
    return mChanged();
  }
  const bool isOther = !mTold || mTold->connection != connection;
  if (!isOther && mTold->application == application) return;
  mTold = Told{connection, application};
  if (!mIsUsed) return;
  if (isOther) watchTeller(true);
  mChanged();
}

std::optional<Application> FocusSources::application() const {
  if (!mIsUsed || (mTeller && !mIsTellerKnown)) return std::nullopt;
  if (isToldNow()) return mTold->application;
  if (mSource && mSource->state() == State::Works) return mFront;
  return mIsSettled ? std::optional(Application()) : std::nullopt;
}

std::string_view FocusSources::source() const {
  if (isToldNow()) return focus::sources::Bus;
  return mSource && mSource->state() == State::Works ? mSource->name() : std::string_view();
}

std::string_view FocusSources::needs() const {
  if (!mIsSettled || !source().empty()) return {};
  if (!mFound.waylandSocket.empty()) {
    if (mFound.hasGnomeShell) return focus::needs::GnomeExtension;
    return mFound.hasKWin ? focus::needs::KDE : focus::needs::Compositor;
  }
  // An X server whose window manager says nothing.
  return mSource ? focus::needs::Compositor : focus::needs::Display;
}

void FocusSources::watchTeller(bool isThere) {
  mIsTellerKnown = mIsTellerThere = isThere;
  mTeller = std::make_unique<NameWatch>(Bus::Session, mTold->connection, [this](const std::string& owner) {
    mIsTellerKnown = true;
    mIsTellerThere = !owner.empty();
    if (!mIsTellerThere) {
      mTold.reset();
      mTeller.reset();
    }
    mChanged();
  });
}

void FocusSources::find() {
  mScheduler.cancel(std::exchange(mRetry, 0));
  if (mIsFinding) return;
  mIsFinding = true;
  mDisplays.watch([this] {
    if (mSource && mSource->state() == State::Works) return;
    // What has come is not kept waiting for what has failed.
    mScheduler.cancel(std::exchange(mRetry, 0));
    mRetries = 0;
    retryLater();
  });
  mDisplays.find([this, round = ++mRound](const FoundDisplays& found) {
    if (round != mRound) return;
    mIsFinding = false;
    if (mSource && mSource->state() == State::Works) return;
    mFound = found;
    mNext.clear();
    if (!found.waylandSocket.empty()) {
      mNext = {&mMakers.wlroots, &mMakers.kwin};
    } else if (!found.x11Display.empty()) {
      mNext = {&mMakers.x11};
    }
    tryNext();
  });
}

void FocusSources::tryNext() {
  mSource.reset();
  mFront.reset();
  while (!mNext.empty()) {
    const Maker& maker = *mNext.front();
    mNext.pop_front();
    if (maker) return begin(maker);
  }
  settle();
  retryLater();
}

void FocusSources::begin(const Maker& maker) {
  mWorkedSince.reset();
  mSource = maker(mFound, {.changed =
                               [this](const Application& application) {
                                 mFront = application;
                                 mChanged();
                               },
                           .stateChanged =
                               [this](State) {
                                 // Not within the source.
                                 if (mStateTicket != 0) return;
                                 mStateTicket = mScheduler.after(Scheduler::Duration::zero(), [this] {
                                   mStateTicket = 0;
                                   noteState();
                                 });
                               }});
  mSource->start();
}

void FocusSources::noteState() {
  if (!mSource) return;
  switch (mSource->state()) {
    case State::Trying:
      return;
    case State::Works:
      // One that works says itself when it ends.
      mDisplays.watch({});
      [[fallthrough]];
    case State::Silent:
      if (mSource->state() == State::Silent) mFront.reset();
      if (!mWorkedSince) mWorkedSince = mScheduler.now();
      return settle();
    case State::Failed:
      return noteFailure();
  }
}

void FocusSources::noteFailure() {
  if (!mWorkedSince) return tryNext();
  // Its display is gone, and another one may come in its place.
  mSource.reset();
  mFront.reset();
  if (mScheduler.now() - *mWorkedSince >= steadyTime) mRetries = 0;
  mIsSettled = false;
  retryLater();
  if (mRetry == 0) settle();
}

void FocusSources::settle() {
  mIsSettled = true;
  mChanged();
}

void FocusSources::retryLater() {
  if (mRetry != 0 || mIsFinding || mRetries >= retryDelays.size()) return;
  mRetry = mScheduler.after(retryDelays[mRetries++], [this] {
    mRetry = 0;
    find();
  });
}

void FocusSources::stop() {
  mScheduler.cancel(std::exchange(mRetry, 0));
  mScheduler.cancel(std::exchange(mStateTicket, 0));
  mDisplays.watch({});
  ++mRound;
  mIsFinding = false;
  mSource.reset();
  mFront.reset();
  mNext.clear();
  mTeller.reset();
  mIsSettled = false;
}

}  // namespace vorn::engine
