// The application in front as a Wayland compositor tells it by the protocol zwlr_foreign_toplevel_manager_v1: that of
// the activated window; with no window activated it is the bare desktop. The protocol does not tell the program.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "core-engine/Scheduler.h"
#include "core-engine/focus/ApplicationInFront.h"
#include "core-engine/focus/WaylandWindows.h"
#include "ports/RunLoop.h"

namespace vorn::engine {

class WaylandApplications : public ApplicationInFront {
 public:
  // A compositor that has not answered in this time counts as one that never does.
  static constexpr Scheduler::Duration answerTime = std::chrono::seconds(5);
  // What comes within this time is told together, as it is at its end.
  static constexpr Scheduler::Duration foldingTime = std::chrono::milliseconds(5);
  // What a busy compositor did not take is sent to it again after this time.
  static constexpr Scheduler::Duration sendingTime = std::chrono::milliseconds(100);

  // socket: the compositor's, an absolute path. Loop and scheduler outlive this.
  WaylandApplications(RunLoop& loop, Scheduler& scheduler, std::string socket, Handlers handlers);
  ~WaylandApplications() override;

  std::string_view name() const override;
  void start() override;

 private:
  void begin();
  void read();
  void send();
  void look();
  void end();
  void fail();

  std::string mSocket;
  RunLoop& mLoop;
  Scheduler& mScheduler;
  std::unique_ptr<WaylandWindows> mWindows;
  RunLoop::Watch mWatch = 0;
  Scheduler::Ticket mAnswerTicket = 0;  // also that of the beginning
  Scheduler::Ticket mLookTicket = 0;
  Scheduler::Ticket mSendTicket = 0;
  std::optional<Application> mTold;
};

}  // namespace vorn::engine
