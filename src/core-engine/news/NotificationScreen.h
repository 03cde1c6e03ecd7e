// Messages on the screen by the notification service of the desktop (Desktop Notifications Specification,
// org.freedesktop.Notifications on the session bus). Nobody waits for it. Where there is none, the bus is asked to
// start one, once in a while; where none can be started, nothing is shown and nothing is said about it.
//
// Nothing is watched or scheduled but within a minute after a message.
#pragma once

#include <array>
#include <cstdint>
#include <optional>

#include "core-engine/Scheduler.h"
#include "core-engine/news/MessageScreen.h"
#include "ports/BusService.h"

namespace vorn::engine {

class NotificationScreen : public MessageScreen {
 public:
  // From one message of a kind to the next one; what comes between them is passed over for what comes last.
  static constexpr Scheduler::Duration interval = std::chrono::milliseconds(250);
  // So long a change is of interest, while no service is there or it does not answer; a warning until the rest.
  static constexpr Scheduler::Duration interestInChanges = std::chrono::seconds(5);
  // So long after the last message, the service is followed.
  static constexpr Scheduler::Duration untilRest = std::chrono::minutes(1);

  explicit NotificationScreen(Scheduler& scheduler) : mScheduler(scheduler) {}  // which outlives the screen
  ~NotificationScreen() override;
  NotificationScreen(const NotificationScreen&) = delete;
  NotificationScreen& operator=(const NotificationScreen&) = delete;

  void show(const ScreenMessage& message) override;

 private:
  // The messages of one kind.
  struct Place {
    std::optional<ScreenMessage> next;
    Scheduler::Duration nextEnds{};  // nobody is interested in it any more
    std::int64_t shown = 0;          // the service's number of the one that is replaced; 0 for none
    // What the service has not answered to yet.
    std::optional<ScreenMessage> asked;
    Scheduler::Ticket pause = 0;
  };

  void serviceChanged();
  // The service has gone before it could take what it was asked for.
  static void takeBack(Place& place);
  void send(Place& place);
  void startService();
  void rest();

  Scheduler& mScheduler;
  std::array<Place, 2> mPlaces;
  std::optional<BusService> mService;
  bool mIsKnown = false;  // whether the service is there
  std::optional<Scheduler::Duration> mStarted;
  Scheduler::Ticket mRest = 0;
};

}  // namespace vorn::engine
