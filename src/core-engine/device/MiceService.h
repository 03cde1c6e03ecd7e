// The choice of the mouse on the session bus, by the names of protocol/Mice.h. docs/core-engine.md lists its methods.
// One thread, the engine's.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "core-engine/device/Mice.h"
#include "ports/BusObject.h"
#include "ports/NameWatch.h"

namespace vorn::engine {

class MiceService {
 public:
  // The mice outlive the service, which becomes their handler of changes and of what was taught.
  explicit MiceService(Mice& mice);
  ~MiceService();
  MiceService(const MiceService&) = delete;
  MiceService& operator=(const MiceService&) = delete;

  // Puts the object on this thread's bus for the life of the service. False, with the reason in error, when that cannot
  // be done.
  bool start(std::string& error);

 private:
  using Values = std::vector<PropertyList>;
  using Work = std::function<void(const Values& inputs, const std::string& connection, const Mice::Done& done)>;

  static BusMethod method(const char* name, std::vector<BusArgument> inputs, const Work& work);
  PropertyList list() const;
  void teach(const std::string& control, const std::string& connection, const Mice::Done& done);

  Mice& mMice;
  std::unique_ptr<BusObject> mObject;
  std::unique_ptr<NameWatch> mTeacher;
};

}  // namespace vorn::engine
