// The application in front on the session bus, by the names of protocol/Focus.h. docs/core-engine.md lists its members.
// One thread, the engine's.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "core-engine/Scheduler.h"
#include "core-engine/focus/FocusSources.h"
#include "ports/BusObject.h"

namespace vorn::engine {

class FocusService {
 public:
  // For a State while nobody uses the sources: so long it waits for one to say what is in front, at most.
  static constexpr Scheduler::Duration probeTime = std::chrono::seconds(3);
  // What changes within this time is told once.
  static constexpr Scheduler::Duration foldingTime = std::chrono::milliseconds(50);
  // Longer texts are cut.
  static constexpr std::size_t maximumText = 1024;

  struct Questions {
    std::function<bool()> isUsed;             // whether a profile asks for an application
    std::function<std::string()> chosenName;  // of the profile that the application in front asks for
    std::function<std::string(const std::string& identifier)> nameOf;  // of an application, from its entry
  };

  // The sources and the scheduler outlive the service, and so does what the questions need.
  FocusService(Scheduler& scheduler, FocusSources& sources, Questions questions);
  ~FocusService();
  FocusService(const FocusService&) = delete;
  FocusService& operator=(const FocusService&) = delete;

  // Puts the object on this thread's bus for the life of the service. False, with the reason in error, when that cannot
  // be done.
  bool start(std::string& error);

  // What the sources or the questions say may have changed.
  void changed();
  // The sources are to be used as the profiles ask for it.
  void updateUse();

 private:
  using Values = std::vector<PropertyList>;

  void set(const Values& given, const std::string& connection);
  void tellState(BusReturn answer);
  bool isKnown() const;
  void endProbe();
  PropertyList state() const;

  Scheduler& mScheduler;
  FocusSources& mSources;
  Questions mQuestions;
  std::unique_ptr<BusObject> mObject;
  std::vector<BusReturn> mProbing;  // wait until it is known what is in front
  Scheduler::Ticket mProbe = 0;
  Scheduler::Ticket mLetGo = 0;
  Scheduler::Ticket mTelling = 0;
  PropertyList mTold;
};

}  // namespace vorn::engine
