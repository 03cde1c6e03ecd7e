// The application in front as a script in KWin tells it on the bus, which KWin is asked to load, and to unload at the
// end (org.kde.kwin.Scripting). It works when the script has told for the first time.
#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "core-engine/Scheduler.h"
#include "core-engine/focus/ApplicationInFront.h"
#include "ports/BusService.h"

namespace vorn::engine {

class KWinApplications : public ApplicationInFront {
 public:
  // A KWin whose script has not told anything in this time does not take it.
  static constexpr Scheduler::Duration answerTime = std::chrono::seconds(5);
  static constexpr const char* scriptName = "org.vorn.Focus";  // among all scripts of KWin

  // scriptFile: an absolute path that KWin can read. The scheduler outlives this.
  KWinApplications(Scheduler& scheduler, std::string scriptFile, Handlers handlers);
  ~KWinApplications() override;

  std::string_view name() const override;
  void start() override;
  bool takeTold(const std::string& connection, const Application& application) override;

 private:
  void presenceChanged();
  void load();
  void call(const char* method, const std::vector<std::string>& arguments, const BusService::Answered& answered);
  void end();
  void fail();

  Scheduler& mScheduler;
  std::string mScriptFile;
  std::optional<BusService> mKWin;
  Scheduler::Ticket mAnswerTicket = 0;
  std::optional<Application> mTold;
};

}  // namespace vorn::engine
