// The history of the settings on the bus, by the names of protocol/History.h. One thread, the engine's.
#pragma once

#include <memory>
#include <string>

#include "core-engine/history/History.h"
#include "ports/BusObject.h"

namespace vorn::engine {

class HistoryService {
 public:
  // The history outlives the service, which becomes its change handler.
  explicit HistoryService(History& history) : mHistory(history) {}

  // Puts the object on this thread's bus for the life of the service. False, with the reason in error, when that cannot
  // be done.
  bool start(std::string& error);

 private:
  // nothingLeft: the text of the error where no change is left.
  BusReply answer(const History::Result& result, const char* nothingLeft) const;
  BusReply entries() const;

  History& mHistory;
  std::unique_ptr<BusObject> mObject;
};

}  // namespace vorn::engine
