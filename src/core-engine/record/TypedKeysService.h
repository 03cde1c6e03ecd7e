// Takes the keys and buttons that a client's window receives while the client records or captures, by the names of
// protocol/TypedKeys.h: a desktop hides the keyboard from everybody but the window in front. One thread, the engine's.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "core-engine/device/Device.h"
#include "ports/BusObject.h"

namespace vorn::engine {

class TypedKeysService {
 public:
  // Hands the key on to what the connection (its unique bus name) listens with. False where it listens with nothing.
  using Handler = std::function<bool(const std::string& connection, const KeyChanged& key)>;

  explicit TypedKeysService(Handler typed) : mTyped(std::move(typed)) {}

  // Puts the object on this thread's bus for the life of the service. False, with the reason in error, when that cannot
  // be done.
  bool start(std::string& error);

 private:
  BusReply type(const std::vector<PropertyList>& given, const std::string& connection) const;

  Handler mTyped;
  std::unique_ptr<BusObject> mObject;
};

}  // namespace vorn::engine
