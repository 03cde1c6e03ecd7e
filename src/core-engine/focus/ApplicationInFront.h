// One way to learn which application is in front: that of a display, of a compositor, or of a program that tells it.
// One thread, the engine's, which it never keeps waiting: whatever it connects to may be slow, hang or go at any
// moment.
//
// It is made when a profile asks for it and ended when none does any more. One that only exists has no connection, no
// descriptor that is watched and no timer before start(), and none after it was ended.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

#include "core-engine/focus/Application.h"

namespace vorn::engine {

class ApplicationInFront {
 public:
  enum class State : std::uint8_t {
    Trying,  // not known yet; every source leaves this state in bounded time
    Works,
    Silent,  // its display is there, but nobody tells what is in front, and somebody may yet: a window manager to come
    Failed,  // it does not work here, or its display has gone; for good: another one is made for another try
  };
  // Both are called from the run loop or a scheduler's turn, never within the constructor or start(), and may not end
  // the source.
  struct Handlers {
    // The application in front has become this one. While it works, and only then; the first time soon after it does.
    // As often as it likes, although a source merges by itself what comes in a burst, and says nothing twice.
    std::function<void(const Application& application)> changed;
    // It has become another state.
    std::function<void(State state)> stateChanged;
  };

  explicit ApplicationInFront(Handlers handlers) : mHandlers(std::move(handlers)) {}
  virtual ~ApplicationInFront() = default;  // no handler is called any more
  ApplicationInFront(const ApplicationInFront&) = delete;
  ApplicationInFront& operator=(const ApplicationInFront&) = delete;

  // One of the words of protocol/Focus.h.
  virtual std::string_view name() const = 0;
  // Begins to find out, once.
  virtual void start() = 0;

  // A program has told on the bus what is in front; connection is its unique name. True where it is one that this
  // source has brought to do so, a script of a compositor for example: the source then tells it as its own. What nobody
  // takes counts for itself, before every other source, while that connection is there.
  virtual bool takeTold(const std::string& connection, const Application& application) {
    static_cast<void>(connection);
    static_cast<void>(application);
    return false;
  }

  State state() const { return mState; }

 protected:
  // The same state again, and whatever comes after Failed, is not told.
  void become(State state) {
    if (mState == state || mState == State::Failed) return;
    mState = state;
    mHandlers.stateChanged(state);
  }
  void tell(const Application& application) {
    if (mState == State::Works) mHandlers.changed(application);
  }

 private:
  Handlers mHandlers;
  State mState = State::Trying;
};

}  // namespace vorn::engine
