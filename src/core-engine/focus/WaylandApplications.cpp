#include "core-engine/focus/WaylandApplications.h"

#include <utility>

#include "protocol/Focus.h"

namespace vorn::engine {

WaylandApplications::WaylandApplications(RunLoop& loop, Scheduler& scheduler, std::string socket, Handlers handlers)
    : ApplicationInFront(std::move(handlers)), mSocket(std::move(socket)), mLoop(loop), mScheduler(scheduler) {}

WaylandApplications::~WaylandApplications() {
  end();
}

std::string_view WaylandApplications::name() const {
  return focus::sources::Wlroots;
}

void WaylandApplications::start() {
  mAnswerTicket = mScheduler.after({}, [this] { begin(); });
}

void WaylandApplications::begin() {
  mWindows = WaylandWindows::connect(mSocket);
  if (!mWindows) return fail();
  mAnswerTicket = mScheduler.after(answerTime, [this] { fail(); });
  send();
}

void WaylandApplications::read() {
  if (!mWindows->read()) return fail();
  send();
  if (!mWindows || !mWindows->isComplete()) return;
  mScheduler.cancel(std::exchange(mAnswerTicket, 0));
  become(State::Works);
  if (mLookTicket == 0) mLookTicket = mScheduler.after(mTold ? foldingTime : Scheduler::Duration(), [this] { look(); });
}

// What is read has to be answered, so nothing is read while answers wait to be sent.
void WaylandApplications::send() {
  const WaylandWindows::Sent sent = mWindows->send();
  if (sent == WaylandWindows::Sent::None) return fail();
  if (sent == WaylandWindows::Sent::Part) {
    mLoop.unwatch(std::exchange(mWatch, 0));
    mSendTicket = mScheduler.after(sendingTime, [this] { send(); });
    return;
  }
  if (mWatch == 0) mWatch = mLoop.watch(mWindows->descriptor(), [this] { read(); });
  if (mWatch == 0) fail();
}

void WaylandApplications::look() {
  mLookTicket = 0;
  const Application front = mWindows->front();
  if (front == mTold) return;
  mTold = front;
  tell(front);
}

void WaylandApplications::end() {
  for (Scheduler::Ticket* ticket : {&mAnswerTicket, &mLookTicket, &mSendTicket})
    mScheduler.cancel(std::exchange(*ticket, 0));
  mLoop.unwatch(std::exchange(mWatch, 0));
  mWindows.reset();
}

void WaylandApplications::fail() {
  end();
  become(State::Failed);
}

}  // namespace vorn::engine
