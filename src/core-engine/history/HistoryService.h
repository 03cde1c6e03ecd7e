// The history of the settings on the bus, by the names of protocol/History.h. One thread, the engine's.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "core-engine/history/History.h"
#include "core-engine/storage/SettingsBackups.h"
#include "ports/BusObject.h"

namespace vorn::engine {

class HistoryService {
 public:
  // Does the work in turn with the requests of the connection, while no save is under way, and awaits its end. False
  // where too much waits already.
  using Work = std::function<void(std::function<void()> done)>;
  using InTurn = std::function<bool(const std::string& connection, Work work)>;

  // All of them outlive the service, which becomes the history's change handler.
  HistoryService(History& history, SettingsBackups& backups, SettingsStore& store, InTurn inTurn)
      : mHistory(history), mBackups(backups), mStore(store), mInTurn(std::move(inTurn)) {}

  // Puts the object on this thread's bus for the life of the service. False, with the reason in error, when that cannot
  // be done.
  bool start(std::string& error);

 private:
  using Values = std::vector<PropertyList>;
  // Does something with the history and answers.
  using Operation = std::function<void(const Values& inputs, const History::Done& done)>;
  using Answer = std::function<BusReply(const History::Result& result)>;

  // Answers, within the call or later.
  using Served = std::function<void(const Values& inputs, const BusReturn& reply)>;

  // What is done in turn.
  BusMethod method(const char* name, std::vector<BusArgument> inputs, std::vector<BusArgument> outputs,
                   const Served& serve) const;
  BusMethod change(const char* name, std::vector<BusArgument> inputs, std::vector<BusArgument> outputs,
                   const Operation& operation, const Answer& answer) const;
  void tellBackups(const BusReturn& reply);
  void restoreBackup(const std::string& date, const BusReturn& reply);
  PropertyList told(const History::Entry& entry) const;
  PropertyList entries() const;

  History& mHistory;
  SettingsBackups& mBackups;
  SettingsStore& mStore;
  InTurn mInTurn;
  std::unique_ptr<BusObject> mObject;
};

}  // namespace vorn::engine
