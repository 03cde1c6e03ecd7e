// News between processes by name: the signal Posted(s name, s object, ay userInfo) of
// org.vorn.DistributedNotificationCenter1 from /org/vorn/DistributedNotificationCenter. One match rule per observed
// name (with arg0) makes the bus filter, so that nobody is woken by other names.
#pragma once

#include <cstdint>
#include <memory>

#include "model/NotificationCenter.h"

namespace vorn {

inline constexpr const char* notificationCenterObjectPath = "/org/vorn/DistributedNotificationCenter";
inline constexpr const char* notificationCenterInterface = "org.vorn.DistributedNotificationCenter1";

class DistributedNotificationCenter : public NotificationCenter {
 public:
  // The centre of this thread's connection. Handlers run from BusConnection::process() of that connection.
  static DistributedNotificationCenter& defaultCenter();
  ~DistributedNotificationCenter() override;

  // From now on only what the owner of that message port posts is delivered: anybody on the bus can post. That holds
  // on a new connection too.
  void believeOnly(std::string_view portName);

  void addObserver(Observer observer, std::string_view name, Handler handler) override;
  void removeObserver(Observer observer, std::string_view name) override;
  void removeObserver(Observer observer) override;
  // Never waits. A post that cannot be sent (no bus, userInfo that cannot be encoded, maximumUnwritten messages that
  // the bus has not taken yet) is dropped, with a line in the log.
  static constexpr std::uint64_t maximumUnwritten = 1024;
  void post(std::string_view name, std::string_view object, const PropertyList& userInfo) override;
  // The same for the observers of one connection alone; receiver: its unique bus name.
  void postTo(std::string_view receiver, std::string_view name, std::string_view object, const PropertyList& userInfo);

 private:
  DistributedNotificationCenter();
  struct State;
  std::unique_ptr<State> mState;
};

}  // namespace vorn
