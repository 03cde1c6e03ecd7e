// Which source of the application in front is used. One thread, the engine's.
//
// A program that tells it on the bus counts before all others while its connection is there. Else, where there is a
// Wayland display: its compositor's protocol, or KWin; else the X server. There is no source, and nothing is watched or
// due, while nobody uses them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "core-engine/Scheduler.h"
#include "core-engine/focus/ApplicationInFront.h"
#include "core-engine/focus/Displays.h"
#include "ports/NameWatch.h"

namespace vorn::engine {

class FocusSources {
 public:
  // Makes a source for the displays that were found; one that is missing is passed over.
  using Maker = std::function<std::unique_ptr<ApplicationInFront>(const FoundDisplays& displays,
                                                                  ApplicationInFront::Handlers handlers)>;
  struct Makers {
    Maker x11;
    Maker wlroots;
    Maker kwin;
  };

  // changed is called, from the scheduler or a source, when any of what is asked below has become another. All outlive
  // the sources.
  FocusSources(Scheduler& scheduler, Displays& displays, Makers makers, std::function<void()> changed);
  ~FocusSources();
  FocusSources(const FocusSources&) = delete;
  FocusSources& operator=(const FocusSources&) = delete;

  // From now on they are used, or no longer.
  void setUsed(bool isUsed);
  bool isUsed() const { return mIsUsed; }
  // The connection tells what is in front.
  void setTold(const std::string& connection, const Application& application);

  // Nothing while that is not known yet; none where nobody tells it.
  std::optional<Application> application() const;
  // One of the words of protocol/Focus.h; empty while nothing works.
  std::string_view source() const;
  // Likewise; empty where something works, or that is not known yet.
  std::string_view needs() const;

 private:
  struct Told {
    std::string connection;
    Application application;
  };

  void find();
  void tryNext();
  void begin(const Maker& maker);
  void noteState();
  void noteFailure();
  void settle();
  void retryLater();
  void stop();
  bool isToldNow() const { return mTold && mTeller && mIsTellerThere; }
  void watchTeller(bool isThere);

  Scheduler& mScheduler;
  Displays& mDisplays;
  Makers mMakers;
  std::function<void()> mChanged;
  bool mIsUsed = false;
  FoundDisplays mFound;
  std::deque<const Maker*> mNext;
  std::unique_ptr<ApplicationInFront> mSource;
  std::optional<Application> mFront;                // as the source tells it
  std::optional<Scheduler::Duration> mWorkedSince;  // or was silent
  bool mIsFinding = false;
  std::uint64_t mRound = 0;  // of the search under way
  bool mIsSettled = false;   // it is known whether one works
  std::size_t mRetries = 0;
  Scheduler::Ticket mRetry = 0;
  Scheduler::Ticket mStateTicket = 0;
  std::optional<Told> mTold;  // kept while unused, for a later use
  std::unique_ptr<NameWatch> mTeller;
  bool mIsTellerThere = false;
  bool mIsTellerKnown = false;
};

}  // namespace vorn::engine
