#include "core-engine/focus/KWinApplications.h"

#include <utility>

#include "protocol/Focus.h"

namespace vorn::engine {

KWinApplications::KWinApplications(Scheduler& scheduler, std::string scriptFile, Handlers handlers)
    : ApplicationInFront(std::move(handlers)), mScheduler(scheduler), mScriptFile(std::move(scriptFile)) {}

KWinApplications::~KWinApplications() {
  end();
}

std::string_view KWinApplications::name() const {
  return focus::sources::KWin;
}

void KWinApplications::start() {
  mAnswerTicket = mScheduler.after(answerTime, [this] { fail(); });
  mKWin.emplace(Bus::Session, "org.kde.KWin", [this] { presenceChanged(); });
}

void KWinApplications::presenceChanged() {
  if (!mKWin->isThere()) return fail();
  load();
}

// One with that name may be left over from an engine that was killed, and KWin would not load another one.
void KWinApplications::load() {
  call("unloadScript", {scriptName}, [this](const BusAnswer&) {
    call("loadScript", {mScriptFile, scriptName}, [this](const BusAnswer& loaded) {
      // KWin answers with a negative number where it does not load it.
      const bool isLoaded = loaded.status == BusAnswer::Status::Success && loaded.values.size() == 1 &&
                            loaded.values.front().toInt() >= 0;
      if (!isLoaded) return fail();
      call("start", {}, [](const BusAnswer&) {});
    });
  });
}

void KWinApplications::call(const char* method, const std::vector<std::string>& arguments,
                            const BusService::Answered& answered) {
  std::vector<BusInput> inputs;
  inputs.reserve(arguments.size());
  for (const std::string& argument : arguments) inputs.push_back({"s", argument});
  mKWin->call("/Scripting", "org.kde.kwin.Scripting", method, inputs, answered);
}

bool KWinApplications::takeTold(const std::string& connection, const Application& application) {
  if (!mKWin || connection.empty() || connection != mKWin->owner()) return false;
  mScheduler.cancel(std::exchange(mAnswerTicket, 0));
  become(State::Works);
  if (mTold != application) {
    mTold = application;
    tell(application);
  }
  return true;
}

void KWinApplications::end() {
  mScheduler.cancel(std::exchange(mAnswerTicket, 0));
  if (mKWin) call("unloadScript", {scriptName}, [](const BusAnswer&) {});
  mKWin.reset();
}

void KWinApplications::fail() {
  end();
  become(State::Failed);
}

}  // namespace vorn::engine
