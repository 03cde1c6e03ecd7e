#include "core-engine/focus/WaylandWindows.h"

#include <fcntl.h>
#include <wayland-client.h>

#include <algorithm>
#include <cerrno>
#include <cstdarg>
#include <cstdint>
#include <iterator>
#include <list>
#include <span>
#include <string_view>

#include "core-engine/focus/LocalSocket.h"

namespace vorn::engine {

namespace {

// --- The two interfaces of the protocol in version 1: names, signatures and the types of their objects.

extern const wl_interface windowInterface;

const wl_interface* noTypes[] = {nullptr, nullptr, nullptr, nullptr, nullptr};
const wl_interface* activateTypes[] = {&wl_seat_interface};
const wl_interface* rectangleTypes[] = {&wl_surface_interface, nullptr, nullptr, nullptr, nullptr};
const wl_interface* outputTypes[] = {&wl_output_interface};
const wl_interface* toplevelTypes[] = {&windowInterface};

const wl_message windowRequests[] = {{"set_maximized", "", noTypes},
                                     {"unset_maximized", "", noTypes},
                                     {"set_minimized", "", noTypes},
                                     {"unset_minimized", "", noTypes},
                                     {"activate", "o", activateTypes},
                                     {"close", "", noTypes},
                                     {"set_rectangle", "oiiii", rectangleTypes},
                                     {"destroy", "", noTypes}};
constexpr std::uint32_t destroyRequest = 7;
const wl_message windowEvents[] = {{"title", "s", noTypes},
                                   {"app_id", "s", noTypes},
                                   {"output_enter", "o", outputTypes},
                                   {"output_leave", "o", outputTypes},
                                   {"state", "a", noTypes},
                                   {"done", "", noTypes},
                                   {"closed", "", noTypes}};
const wl_interface windowInterface = {"zwlr_foreign_toplevel_handle_v1", 1,
                                      std::size(windowRequests),         windowRequests,
                                      std::size(windowEvents),           windowEvents};
constexpr std::uint32_t activatedState = 2;

const wl_message managerRequests[] = {{"stop", "", noTypes}};
const wl_message managerEvents[] = {{"toplevel", "n", toplevelTypes}, {"finished", "", noTypes}};
const wl_interface managerInterface = {"zwlr_foreign_toplevel_manager_v1", 1,
                                       std::size(managerRequests),         managerRequests,
                                       std::size(managerEvents),           managerEvents};

// What the compositor sends to an object, in the order of the protocol.
struct WindowListener {
  void (*title)(void*, wl_proxy*, const char*);
  void (*applicationId)(void*, wl_proxy*, const char*);
  void (*outputEntered)(void*, wl_proxy*, wl_output*);
  void (*outputLeft)(void*, wl_proxy*, wl_output*);
  void (*state)(void*, wl_proxy*, wl_array*);
  void (*done)(void*, wl_proxy*);
  void (*closed)(void*, wl_proxy*);
};
struct ManagerListener {
  void (*toplevel)(void*, wl_proxy*, wl_proxy*);
  void (*finished)(void*, wl_proxy*);
};

template <typename Listener>
void listen(wl_proxy* proxy, const Listener& listener, void* self) {
  using Function = void (*)();
  // The library takes the functions as an array, and does not write to it.
  wl_proxy_add_listener(proxy, reinterpret_cast<Function*>(const_cast<Listener*>(&listener)), self);
}

}  // namespace

struct WaylandWindows::State {
  struct Window {
    State& state;
    wl_proxy* proxy;
    std::string title{};
    std::string applicationId{};
    bool isActivated = false;      // as told so far
    std::uint64_t activation = 0;  // as of the last "done": which one it was; 0: it is not activated
  };

  ~State() {
    for (const Window& window : windows) wl_proxy_destroy(window.proxy);
    if (answer != nullptr) wl_callback_destroy(answer);
    if (manager != nullptr) wl_proxy_destroy(manager);
    if (registry != nullptr) wl_registry_destroy(registry);
    wl_display_disconnect(display);
  }

  void ask();

  static void announced(void* self, wl_registry* registry, std::uint32_t name, const char* interface, std::uint32_t);
  static void removed(void* self, wl_registry*, std::uint32_t name);
  static void answered(void* self, wl_callback*, std::uint32_t);
  static void opened(void* self, wl_proxy*, wl_proxy* proxy);
  static void finished(void* self, wl_proxy*) { static_cast<State*>(self)->isOver = true; }
  static void changed(void* self, wl_proxy*, wl_array* states);
  static void settled(void* self, wl_proxy*);
  static void closed(void* self, wl_proxy* proxy);

  wl_display* display;
  wl_registry* registry = nullptr;
  wl_proxy* manager = nullptr;
  std::uint32_t managerName = 0;
  wl_callback* answer = nullptr;
  std::list<Window> windows{};
  std::uint64_t activations = 0;
  int answers = 0;
  bool isComplete = false;
  bool isOver = false;
};

// The answer comes after all that the compositor tells because of what was sent before.
void WaylandWindows::State::ask() {
  static constexpr wl_callback_listener listener{&State::answered};
  answer = wl_display_sync(display);
  if (answer == nullptr || wl_callback_add_listener(answer, &listener, this) != 0) isOver = true;
}

void WaylandWindows::State::announced(void* self, wl_registry* registry, std::uint32_t name, const char* interface,
                                      std::uint32_t) {
  auto& state = *static_cast<State*>(self);
  if (state.manager != nullptr || std::string_view(interface) != managerInterface.name) return;
  static constexpr ManagerListener listener{&State::opened, &State::finished};
  state.managerName = name;
  state.manager = static_cast<wl_proxy*>(wl_registry_bind(registry, name, &managerInterface, 1));
  if (state.manager == nullptr) return;
  listen(state.manager, listener, self);
}

void WaylandWindows::State::removed(void* self, wl_registry*, std::uint32_t name) {
  auto& state = *static_cast<State*>(self);
  if (state.manager != nullptr && name == state.managerName) state.isOver = true;
}

// The first answer ends the list of what the compositor has, the second one that of its windows.
void WaylandWindows::State::answered(void* self, wl_callback* callback, std::uint32_t) {
  auto& state = *static_cast<State*>(self);
  wl_callback_destroy(callback);
  state.answer = nullptr;
  if (state.manager == nullptr) state.isOver = true;
  if (state.answers++ > 0) state.isComplete = true;
  if (!state.isComplete && !state.isOver) state.ask();
}

void WaylandWindows::State::opened(void* self, wl_proxy*, wl_proxy* proxy) {
  auto& state = *static_cast<State*>(self);
  static constexpr WindowListener listener{
      [](void* window, wl_proxy*, const char* text) { static_cast<Window*>(window)->title = text; },
      [](void* window, wl_proxy*, const char* text) { static_cast<Window*>(window)->applicationId = text; },
      [](void*, wl_proxy*, wl_output*) {},
      [](void*, wl_proxy*, wl_output*) {},
      &State::changed,
      &State::settled,
      &State::closed};
  state.windows.push_back({state, proxy});
  listen(proxy, listener, &state.windows.back());
}

void WaylandWindows::State::changed(void* self, wl_proxy*, wl_array* states) {
  const std::span<const std::uint32_t> all(static_cast<const std::uint32_t*>(states->data),
                                           states->size / sizeof(std::uint32_t));
  static_cast<Window*>(self)->isActivated = std::find(all.begin(), all.end(), activatedState) != all.end();
}

void WaylandWindows::State::settled(void* self, wl_proxy*) {
  auto& window = *static_cast<Window*>(self);
  if (!window.isActivated) {
    window.activation = 0;
  } else if (window.activation == 0) {
    window.activation = ++window.state.activations;
  }
}

void WaylandWindows::State::closed(void* self, wl_proxy* proxy) {
  State& state = static_cast<Window*>(self)->state;
  wl_proxy_marshal_flags(proxy, destroyRequest, nullptr, wl_proxy_get_version(proxy), WL_MARSHAL_FLAG_DESTROY);
  state.windows.remove_if([proxy](const Window& window) { return window.proxy == proxy; });
}

std::unique_ptr<WaylandWindows> WaylandWindows::connect(const std::string& socket) {
  const FileDescriptor descriptor = connectedSocket(socket);
  if (descriptor.get() < 0) return nullptr;
  // The library closes the one that it gets, in any case.
  wl_display* display = wl_display_connect_to_fd(::fcntl(descriptor.get(), F_DUPFD_CLOEXEC, 0));
  return display == nullptr ? nullptr : std::unique_ptr<WaylandWindows>(new WaylandWindows(display));
}

WaylandWindows::WaylandWindows(wl_display* display) : mState(new State{display}) {
  // What it would write is on standard error, in the words of a library; it ends the connection in any case.
  wl_log_set_handler_client([](const char*, va_list) {});
  static constexpr wl_registry_listener listener{&State::announced, &State::removed};
  mState->registry = wl_display_get_registry(display);
  wl_registry_add_listener(mState->registry, &listener, mState.get());
  mState->ask();
}

WaylandWindows::~WaylandWindows() = default;

int WaylandWindows::descriptor() const {
  return wl_display_get_fd(mState->display);
}

bool WaylandWindows::read() {
  // Whatever was taken is handled below, so nothing is left that would keep this from reading.
  if (wl_display_prepare_read(mState->display) != 0) return false;
  return wl_display_read_events(mState->display) == 0 && wl_display_dispatch_pending(mState->display) >= 0 &&
         !mState->isOver;
}

WaylandWindows::Sent WaylandWindows::send() {
  if (wl_display_flush(mState->display) >= 0) return Sent::All;
  // Where the compositor has gone, what it said before is still to be read.
  if (errno == EPIPE) return Sent::All;
  return errno == EAGAIN ? Sent::Part : Sent::None;
}

bool WaylandWindows::isComplete() const {
  return mState->isComplete;
}

Application WaylandWindows::front() const {
  const State::Window* last = nullptr;
  for (const State::Window& window : mState->windows) {
    if (window.activation > (last == nullptr ? 0 : last->activation)) last = &window;
  }
  return last == nullptr ? Application{} : Application{last->applicationId, {}, last->title};
}

}  // namespace vorn::engine
