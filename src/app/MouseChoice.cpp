#include "app/MouseChoice.h"

#include <QPointer>
#include <algorithm>
#include <utility>

namespace skarn {

using vorn::MiceAnswer;
using vorn::MiceCall;
using vorn::MiceRequest;

MouseChoice::MouseChoice(vorn::EngineLink& link) : mLink(link) {}

MouseChoice::~MouseChoice() {
  mLink.watchMice({});
}

template <typename Work>
void MouseChoice::ask(const MiceRequest& request, Work work) {
  mLink.askMice(request, [choice = QPointer(this), session = mSession, work](const MiceAnswer& answer) {
    if (choice && choice->mSession == session) work(answer);
  });
}

// --- What is known

void MouseChoice::begin() {
  if (std::exchange(mIsThere, true)) return;
  ++mSession;
  mLink.watchMice({[this] { refresh(); },
                   [this](const vorn::TaughtControl& control) {
                     emit taught(control);
                     refresh();
                   }});
  refresh();
}

void MouseChoice::end() {
  if (!std::exchange(mIsThere, false)) return;
  ++mSession;
  mLink.watchMice({});
  mIsKnown = false;
  mIsRefused = false;
  mIsChoosing = false;
  mIsFetching = false;
  mMustFetch = false;
  mMice.clear();
  emit changed();
}

const MouseDescription* MouseChoice::inUse() const {
  const auto found = std::ranges::find_if(mMice, &MouseDescription::isInUse);
  return found == mMice.end() ? nullptr : &*found;
}

void MouseChoice::refresh() {
  if (!mIsThere) return;
  // What comes meanwhile is asked for once more, and not for each of the news.
  mMustFetch = mIsFetching;
  if (std::exchange(mIsFetching, true)) return;
  ask({MiceCall::List}, [this](const MiceAnswer& answer) {
    mIsFetching = false;
    const bool mustFetch = std::exchange(mMustFetch, false);
    take(answer);
    if (mustFetch) refresh();
  });
}

void MouseChoice::take(const MiceAnswer& answer) {
  if (answer.outcome == Outcome::NoMice) {
    mIsRefused = true;
    emit changed();
  }
  // What came without an answer is told with the next change.
  if (answer.outcome != Outcome::Done) return;
  std::vector<MouseDescription> mice = mouseDescriptions(answer.mice);
  if (std::exchange(mIsKnown, true) && mice == mMice) return;
  mMice = std::move(mice);
  emit changed();
}

// --- Changes

void MouseChoice::change(const MiceRequest& request, Done done) {
  if (!mIsThere) return done(Outcome::NoEngine);
  ask(request, [this, call = request.call, done = std::move(done)](const MiceAnswer& answer) {
    // Also where it is not known whether it is done. What a teaching has changed is told when it ends.
    if (call != MiceCall::Teach) refresh();
    done(answer.outcome);
  });
}

void MouseChoice::choose(const QString& id, Done done) {
  mIsChoosing = mIsThere;
  change({MiceCall::Choose, id.toStdString()}, [this, done = std::move(done)](Outcome outcome) {
    mIsChoosing = false;
    done(outcome);
  });
}

void MouseChoice::teach(const std::string& control, Done done) {
  change({MiceCall::Teach, control}, std::move(done));
}

void MouseChoice::forget(const std::string& control, Done done) {
  change({MiceCall::Forget, control}, std::move(done));
}

void MouseChoice::setResolution(int resolution, Done done) {
  change({.call = MiceCall::SetResolution, .resolution = resolution}, std::move(done));
}

}  // namespace skarn
