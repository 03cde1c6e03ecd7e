#include "e2e/VirtualKeyboard.h"

#include <sys/mman.h>
#include <unistd.h>
#include <wayland-client.h>

#include <array>
#include <string_view>
#include <utility>

namespace vorn::test {

namespace {

// --- The two interfaces of the protocol: names, requests with their signatures, and the types of their objects.

extern const wl_interface keyboardInterface;

const wl_interface* noTypes[] = {nullptr, nullptr, nullptr, nullptr};
const wl_interface* createTypes[] = {&wl_seat_interface, &keyboardInterface};

const wl_message keyboardRequests[] = {
    {"keymap", "uhu", noTypes}, {"key", "uuu", noTypes}, {"modifiers", "uuuu", noTypes}, {"destroy", "", noTypes}};
enum KeyboardRequest { keymapRequest, keyRequest, modifiersRequest, destroyRequest };
const wl_interface keyboardInterface = {"zwp_virtual_keyboard_v1", 1, 4, keyboardRequests, 0, nullptr};

const wl_message managerRequests[] = {{"create_virtual_keyboard", "on", createTypes}};
constexpr std::uint32_t createRequest = 0;
const wl_interface managerInterface = {"zwp_virtual_keyboard_manager_v1", 1, 1, managerRequests, 0, nullptr};

// The compositor fills in what is included.
constexpr char keymap[] =
    "xkb_keymap {\n"
    "  xkb_keycodes { include \"evdev+aliases(qwerty)\" };\n"
    "  xkb_types { include \"complete\" };\n"
    "  xkb_compat { include \"complete\" };\n"
    "  xkb_symbols { include \"pc+us+inet(evdev)\" };\n"
    "};\n";

struct Disconnect {
  void operator()(wl_display* display) const { wl_display_disconnect(display); }
};

}  // namespace

struct VirtualKeyboard::State {
  std::unique_ptr<wl_display, Disconnect> display;
  wl_registry* registry = nullptr;
  wl_seat* seat = nullptr;
  wl_proxy* manager = nullptr;
  wl_proxy* keyboard = nullptr;
  std::uint32_t modifiers = 0;

  static void announced(void* self, wl_registry* registry, std::uint32_t name, const char* interface, std::uint32_t) {
    auto& state = *static_cast<State*>(self);
    const auto bind = [&](const wl_interface& wanted) { return wl_registry_bind(registry, name, &wanted, 1); };
    if (state.seat == nullptr && std::string_view(interface) == wl_seat_interface.name)
      state.seat = static_cast<wl_seat*>(bind(wl_seat_interface));
    if (std::string_view(interface) == managerInterface.name)
      state.manager = static_cast<wl_proxy*>(bind(managerInterface));
  }
  static void removed(void*, wl_registry*, std::uint32_t) {}
};

std::unique_ptr<VirtualKeyboard> VirtualKeyboard::plug(const std::string& socket) {
  auto state = std::make_unique<State>();
  state->display.reset(wl_display_connect(socket.c_str()));
  if (!state->display) return nullptr;
  static constexpr wl_registry_listener listener{&State::announced, &State::removed};
  state->registry = wl_display_get_registry(state->display.get());
  wl_registry_add_listener(state->registry, &listener, state.get());
  if (wl_display_roundtrip(state->display.get()) < 0 || state->seat == nullptr || state->manager == nullptr)
    return nullptr;
  state->keyboard =
      wl_proxy_marshal_constructor(state->manager, createRequest, &keyboardInterface, state->seat, nullptr);
  const int file = memfd_create("keymap", MFD_CLOEXEC);
  const bool isWritten = file >= 0 && write(file, keymap, sizeof keymap) == static_cast<ssize_t>(sizeof keymap);
  if (isWritten) {
    wl_proxy_marshal(state->keyboard, keymapRequest, std::uint32_t{WL_KEYBOARD_KEYMAP_FORMAT_XKB_V1}, file,
                     static_cast<std::uint32_t>(sizeof keymap));
  }
  if (file >= 0) close(file);
  std::unique_ptr<VirtualKeyboard> keyboard(new VirtualKeyboard(std::move(state)));
  return isWritten && keyboard->flush() ? std::move(keyboard) : nullptr;
}

VirtualKeyboard::VirtualKeyboard(std::unique_ptr<State> state) : mState(std::move(state)) {}

VirtualKeyboard::~VirtualKeyboard() {
  wl_proxy_marshal(mState->keyboard, destroyRequest);
  wl_proxy_destroy(mState->keyboard);
  wl_proxy_destroy(mState->manager);
  wl_seat_destroy(mState->seat);
  wl_registry_destroy(mState->registry);
  wl_display_flush(mState->display.get());
}

void VirtualKeyboard::key(std::uint32_t kernelKey, bool isPressed, std::uint32_t modifiers,
                          std::chrono::milliseconds time) {
  wl_proxy_marshal(mState->keyboard, keyRequest, static_cast<std::uint32_t>(time.count()), kernelKey,
                   std::uint32_t{isPressed ? WL_KEYBOARD_KEY_STATE_PRESSED : WL_KEYBOARD_KEY_STATE_RELEASED});
  if (modifiers == std::exchange(mState->modifiers, modifiers)) return;
  wl_proxy_marshal(mState->keyboard, modifiersRequest, modifiers, 0U, 0U, 0U);
}

bool VirtualKeyboard::flush() {
  return wl_display_roundtrip(mState->display.get()) >= 0;
}

}  // namespace vorn::test
