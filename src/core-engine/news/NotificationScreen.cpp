#include "core-engine/news/NotificationScreen.h"

#include <string_view>
#include <utility>
#include <vector>

#include "protocol/EngineProtocol.h"

namespace vorn::engine {

namespace {

constexpr const char* busName = "org.freedesktop.Notifications";
constexpr const char* path = "/org/freedesktop/Notifications";
constexpr const char* interface = "org.freedesktop.Notifications";

// How one kind of message is shown.
struct Style {
  std::string_view icon;  // of the icon theme; that of the application, or one of the Icon Naming Specification
  std::int32_t milliseconds;
  std::int32_t urgency;  // 1 normal, 2 critical
  bool isTransient;      // goes without a trace
};

Style styleOf(ScreenMessage::Kind kind) {
  // A low urgency would keep it off the screen of some desktops.
  if (kind == ScreenMessage::Kind::Change) return {configuratorIdentifier, 2000, 1, true};
  return {"battery-caution", 15000, 2, false};
}

std::vector<BusInput> inputsOf(const ScreenMessage& message, std::int64_t replaced) {
  const Style style = styleOf(message.kind);
  const PropertyList hints = PropertyList::dictionary({{"category", "device"},
                                                       {"desktop-entry", configuratorIdentifier},
                                                       {"transient", style.isTransient},
                                                       {"urgency", style.urgency}});
  return {{"s", "Skarn"},
          {"u", replaced},
          {"s", style.icon},
          {"s", message.title},
          {"s", message.text},
          {"as", PropertyList::array()},
          {"a{sv}", hints, {{"urgency", "y"}}},
          {"i", style.milliseconds}};
}

}  // namespace

NotificationScreen::~NotificationScreen() {
  mScheduler.cancel(mRest);
  for (const Place& place : mPlaces) mScheduler.cancel(place.pause);
}

void NotificationScreen::show(const ScreenMessage& message) {
  const bool isChange = message.kind == ScreenMessage::Kind::Change;
  Place& place = mPlaces[isChange ? 0 : 1];
  place.next = message;
  place.nextEnds = mScheduler.now() + (isChange ? interestInChanges : untilRest);
  mScheduler.cancel(mRest);
  mRest = mScheduler.after(untilRest, [this] { rest(); });
  if (mService) return send(place);
  mIsKnown = false;
  mService.emplace(Bus::Session, busName, [this] { serviceChanged(); });
}

// What another service has shown is none of this one's.
void NotificationScreen::serviceChanged() {
  mIsKnown = true;
  for (Place& place : mPlaces) {
    place.shown = 0;
    takeBack(place);
    send(place);
  }
}

void NotificationScreen::takeBack(Place& place) {
  if (!place.next) place.next = place.asked;
  place.asked.reset();
}

void NotificationScreen::send(Place& place) {
  if (place.next && mScheduler.now() > place.nextEnds) place.next.reset();
  if (!place.next || place.asked || place.pause != 0 || !mIsKnown) return;
  if (!mService->isThere()) return startService();
  place.asked = std::exchange(place.next, std::nullopt);
  place.pause = mScheduler.after(interval, [this, &place] {
    place.pause = 0;
    send(place);
  });
  mService->call(path, interface, "Notify", inputsOf(*place.asked, place.shown),
                 [this, &place](const BusAnswer& answer) {
                   if (answer.status == BusAnswer::Status::NoOwner) takeBack(place);
                   place.asked.reset();
                   place.shown = answer.values.size() == 1 ? answer.values.front().toInt64() : 0;
                   send(place);
                 });
}

// One that cannot be started, or ends at once, is not started with every turn of a wheel.
void NotificationScreen::startService() {
  if (mStarted && mScheduler.now() - *mStarted < untilRest) return;
  mStarted = mScheduler.now();
  mService->start([](const ServiceStart&) {});
}

void NotificationScreen::rest() {
  mRest = 0;
  mService.reset();
  for (Place& place : mPlaces) {
    mScheduler.cancel(place.pause);
    place = {};
  }
}

}  // namespace vorn::engine
