// What is told to everybody after a change of the settings, as one notification for each change:
//   "Keymap Updated 273"   another keymap came into force in the active profile; carries the whole bundle
//   "DPI Updated 273"      nothing but the sensitivity of the active profile changed
//   "Profile Updated 273"  anything else
// The names carry 273 for the wireless mouse too. "Source App" names the program that caused the change. One thread,
// the engine's.
#pragma once

#include <optional>
#include <string>

#include "core-engine/Scheduler.h"
#include "core-engine/news/NewsPort.h"
#include "core-engine/requests/Request.h"
#include "model/PropertyList.h"

namespace vorn::engine {

// The "Source App" of what a request changes: the configurator's identifier for a request with the configurator's
// reply port, otherwise what the request says of itself. Empty where it says nothing, more than maximumSourceApp bytes,
// or that it is the configurator without being it.
std::string sourceAppOf(const Request& request);
inline constexpr std::size_t maximumSourceApp = 255;

class News {
 public:
  // For so long after a keymap update, every change that the configurator makes is followed by another one. It takes a
  // keymap update for the newest settings whenever it comes to read it, which may be after a change of its own.
  static constexpr Scheduler::Duration keymapEchoTime = std::chrono::seconds(1);

  // Both outlive the news.
  News(NewsPort& port, Scheduler& scheduler) : mPort(port), mScheduler(scheduler) {}

  // Tells the change, once it is on the disk. Both are complete bundles. sourceApp: who caused it; empty for the mouse
  // itself or a program that does not tell.
  void settingsChanged(const PropertyList& before, const PropertyList& after, const std::string& sourceApp);

 private:
  void postKeymapUpdate(const PropertyList& bundle, const std::string& sourceApp);
  void post(std::string_view name, const PropertyList& userInfo, const std::string& sourceApp);

  NewsPort& mPort;
  Scheduler& mScheduler;
  std::optional<Scheduler::Duration> mLastKeymapUpdate;
};

}  // namespace vorn::engine
