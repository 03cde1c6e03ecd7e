#include "core-engine/focus/X11Questions.h"

#include <xcb/xcbext.h>

#include <cstdlib>
#include <memory>
#include <utility>

namespace vorn::engine {

namespace {

// Of a property, in units of four bytes.
constexpr std::uint32_t maximumLength = 1024;

struct Free {
  void operator()(void* reply) const { std::free(reply); }
};

X11Property propertyOf(const xcb_get_property_reply_t* reply) {
  X11Property property;
  if (reply == nullptr) return property;
  property.type = reply->type;
  const auto length = static_cast<std::size_t>(xcb_get_property_value_length(reply));
  const void* value = xcb_get_property_value(reply);
  if (reply->format == 32) {
    const auto* numbers = static_cast<const std::uint32_t*>(value);
    property.numbers.assign(numbers, numbers + length / sizeof(std::uint32_t));
  } else if (reply->format == 8) {
    property.text.assign(static_cast<const char*>(value), length);
  }
  return property;
}

}  // namespace

void X11Questions::atom(const std::string& name, std::function<void(xcb_atom_t)> answered) {
  const auto cookie = xcb_intern_atom(connection(), 0, static_cast<std::uint16_t>(name.size()), name.c_str());
  mQuestions.push_back({cookie.sequence, [answered = std::move(answered)](const void* reply) {
                          answered(reply == nullptr ? xcb_atom_t{XCB_ATOM_NONE}
                                                    : static_cast<const xcb_intern_atom_reply_t*>(reply)->atom);
                        }});
}

void X11Questions::property(xcb_window_t window, xcb_atom_t name, std::function<void(const X11Property&)> answered) {
  const auto cookie = xcb_get_property(connection(), 0, window, name, XCB_GET_PROPERTY_TYPE_ANY, 0, maximumLength);
  mQuestions.push_back({cookie.sequence, [answered = std::move(answered)](const void* reply) {
                          answered(propertyOf(static_cast<const xcb_get_property_reply_t*>(reply)));
                        }});
}

void X11Questions::mapping(xcb_window_t window, std::function<void(bool)> answered) {
  const auto cookie = xcb_get_window_attributes(connection(), window);
  mQuestions.push_back({cookie.sequence, [answered = std::move(answered)](const void* reply) {
                          const auto* known = static_cast<const xcb_get_window_attributes_reply_t*>(reply);
                          answered(known != nullptr && known->map_state != XCB_MAP_STATE_UNMAPPED);
                        }});
}

void X11Questions::flush() {
  xcb_flush(connection());
}

bool X11Questions::takeAnswers(const std::function<void(const xcb_generic_event_t&)>& event) {
  // Taking the one reads the other from the socket, too.
  for (bool isProgress = true; isProgress;) {
    isProgress = false;
    while (takeAnswer()) isProgress = true;
    while (const std::unique_ptr<xcb_generic_event_t, Free> next{xcb_poll_for_event(connection())}) {
      isProgress = true;
      event(*next);
    }
  }
  return xcb_connection_has_error(connection()) == 0;
}

bool X11Questions::takeAnswer() {
  if (mQuestions.empty()) return false;
  void* reply = nullptr;
  xcb_generic_error_t* error = nullptr;
  if (xcb_poll_for_reply(connection(), mQuestions.front().sequence, &reply, &error) == 0) return false;
  const std::unique_ptr<void, Free> taken(reply);
  const std::unique_ptr<xcb_generic_error_t, Free> refused(error);
  if (xcb_connection_has_error(connection()) != 0) return false;
  const Question question = std::move(mQuestions.front());
  mQuestions.pop_front();
  question.answered(taken.get());
  return true;
}

}  // namespace vorn::engine
