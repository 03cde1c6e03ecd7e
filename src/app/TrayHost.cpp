#include "app/TrayHost.h"

#include <utility>

#include "ports/BusService.h"

namespace skarn {

namespace {

constexpr const char* watcherName = "org.kde.StatusNotifierWatcher";
constexpr const char* watcherPath = "/StatusNotifierWatcher";
constexpr const char* watcherInterface = "org.kde.StatusNotifierWatcher";

}  // namespace

TrayHost::TrayHost() {
  mWatcher = std::make_unique<vorn::BusService>(vorn::Bus::Session, watcherName, [this] { follow(); });
}

TrayHost::~TrayHost() = default;

void TrayHost::follow() {
  mWatcher->unwatch(watcherPath);
  if (!mWatcher->isThere()) return set(false);
  for (const char* news : {"StatusNotifierHostRegistered", "StatusNotifierHostUnregistered"})
    mWatcher->watch(watcherPath, watcherInterface, news, [this](const vorn::ReceivedSignal&) { ask(); });
  ask();
}

void TrayHost::ask() {
  mWatcher->getProperties(watcherPath, watcherInterface, [this](const vorn::PropertyList& properties) {
    set(properties["IsStatusNotifierHostRegistered"].toBool());
  });
}

void TrayHost::set(bool isThere) {
  if (std::exchange(mIsThere, isThere) != isThere) emit changed();
}

}  // namespace skarn
