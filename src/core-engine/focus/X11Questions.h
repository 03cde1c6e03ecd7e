// Requests to an X server whose replies are taken when they are there. Nothing waits. One thread.
#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <deque>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "core-engine/focus/X11Connector.h"

namespace vorn::engine {

// What a window says of itself under one name; empty where it says nothing, or is gone.
struct X11Property {
  xcb_atom_t type = XCB_ATOM_NONE;
  std::vector<std::uint32_t> numbers{};  // of 32 bits
  std::string text{};                    // of 8 bits

  std::uint32_t number() const { return numbers.empty() ? 0 : numbers.front(); }
};

class X11Questions {
 public:
  explicit X11Questions(X11Connection connection) : mConnection(std::move(connection)) {}

  xcb_connection_t* connection() const { return mConnection.get(); }

  // answered is called from takeAnswers(), in the order of the questions; the atom is XCB_ATOM_NONE after an error.
  void atom(const std::string& name, std::function<void(xcb_atom_t)> answered);
  void property(xcb_window_t window, xcb_atom_t name, std::function<void(const X11Property&)> answered);
  // Whether the window is there and mapped.
  void mapping(xcb_window_t window, std::function<void(bool isMapped)> answered);
  // Sends what was asked for.
  void flush();

  // Takes the answers that are there. event is called for each event between. False when the server has gone; nothing
  // may be asked any more then. The handlers ask further questions, but do not end this.
  bool takeAnswers(const std::function<void(const xcb_generic_event_t&)>& event);

 private:
  struct Question {
    unsigned sequence = 0;
    std::function<void(const void* reply)> answered;  // null after an error
  };

  // False where the next one is not there yet.
  bool takeAnswer();

  X11Connection mConnection;
  std::deque<Question> mQuestions;
};

}  // namespace vorn::engine
