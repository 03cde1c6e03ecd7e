// Where news is observed and posted by name. The controllers see only this interface; src/ports implements it over
// the bus, tests implement it in memory.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "model/PropertyList.h"

namespace vorn {

struct Notification {
  std::string name;
  std::string object;     // the sender's identifier; empty for none
  PropertyList userInfo;  // a dictionary; none when the notification carries nothing
};

class NotificationCenter {
 public:
  using Handler = std::function<void(const Notification&)>;
  // Identifies who observes, so that its observations can be removed; never dereferenced.
  using Observer = const void*;

  virtual ~NotificationCenter() = default;

  // Handlers run on the thread that owns the centre, from its event loop, in the order of their registration. An
  // observer that is added twice for one name is called twice. A handler may add and remove observers, itself
  // included; what it adds does not see the notification that is being delivered.
  virtual void addObserver(Observer observer, std::string_view name, Handler handler) = 0;
  // Removes every registration of this observer for this name; nothing when there is none.
  virtual void removeObserver(Observer observer, std::string_view name) = 0;
  // Removes every registration of this observer.
  virtual void removeObserver(Observer observer) = 0;

  virtual void post(std::string_view name, std::string_view object, const PropertyList& userInfo) = 0;
};

}  // namespace vorn
