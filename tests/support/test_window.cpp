// An application with one window on an X server: test-window INSTANCE CLASS. Says "shown" when its window is; each line
// that it reads brings it to the front, and its end ends it.
#include <poll.h>
#include <unistd.h>
#include <xcb/xcb.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>

namespace {

struct Free {
  void operator()(void* reply) const { std::free(reply); }
};

class Window {
 public:
  Window(const std::string& instance, const std::string& name) : mConnection(xcb_connect(nullptr, nullptr)) {
    if (xcb_connection_has_error(mConnection) != 0) return;
    const xcb_screen_t* screen = xcb_setup_roots_iterator(xcb_get_setup(mConnection)).data;
    mRoot = screen->root;
    mWindow = xcb_generate_id(mConnection);
    const std::uint32_t events = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    xcb_create_window(mConnection, XCB_COPY_FROM_PARENT, mWindow, mRoot, 10, 10, 200, 100, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &events);
    const std::string names = instance + '\0' + name + '\0';
    setProperty(XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, 8, names.size(), names.data());
    const auto process = static_cast<std::uint32_t>(getpid());
    setProperty(atom("_NET_WM_PID"), XCB_ATOM_CARDINAL, 32, 1, &process);
    setProperty(atom("_NET_WM_NAME"), atom("UTF8_STRING"), 8, name.size(), name.data());
    show();
  }
  ~Window() { xcb_disconnect(mConnection); }
  Window(const Window&) = delete;
  Window& operator=(const Window&) = delete;

  int descriptor() const { return xcb_get_file_descriptor(mConnection); }
  // False when the display is gone.
  bool serve() {
    while (const std::unique_ptr<xcb_generic_event_t, Free> event{xcb_poll_for_event(mConnection)}) {
      if ((event->response_type & 0x7f) != XCB_MAP_NOTIFY) continue;
      mIsShown = true;
      std::puts("shown");
      std::fflush(stdout);
    }
    return xcb_connection_has_error(mConnection) == 0;
  }
  bool isShown() const { return mIsShown; }
  void show() {
    xcb_map_window(mConnection, mWindow);
    xcb_flush(mConnection);
  }
  void comeToFront() {
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = mWindow;
    message.type = atom("_NET_ACTIVE_WINDOW");
    message.data.data32[0] = 2;  // as a pager asks
    xcb_send_event(mConnection, 0, mRoot, XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                   reinterpret_cast<const char*>(&message));
    xcb_flush(mConnection);
  }

 private:
  xcb_atom_t atom(const char* name) {
    const std::unique_ptr<xcb_intern_atom_reply_t, Free> reply(xcb_intern_atom_reply(
        mConnection, xcb_intern_atom(mConnection, 0, static_cast<std::uint16_t>(std::strlen(name)), name), nullptr));
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
  }
  void setProperty(xcb_atom_t name, xcb_atom_t type, std::uint8_t format, std::size_t count, const void* data) {
    xcb_change_property(mConnection, XCB_PROP_MODE_REPLACE, mWindow, name, type, format,
                        static_cast<std::uint32_t>(count), data);
  }

  xcb_connection_t* mConnection;
  xcb_window_t mRoot = XCB_WINDOW_NONE;
  xcb_window_t mWindow = XCB_WINDOW_NONE;
  bool mIsShown = false;
};

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) return 2;
  Window window(argv[1], argv[2]);
  std::array<pollfd, 2> watched{{{window.descriptor(), POLLIN, 0}, {STDIN_FILENO, POLLIN, 0}}};
  // A window manager that is only starting may miss what asks to be shown.
  constexpr int patience = 300;
  while (window.serve()) {
    const int count = poll(watched.data(), watched.size(), window.isShown() ? -1 : patience);
    if (count < 0) break;
    if (count == 0) window.show();
    if (watched[1].revents == 0) continue;
    std::array<char, 256> line{};
    const ssize_t length = read(STDIN_FILENO, line.data(), line.size());
    if (length <= 0) return 0;
    window.comeToFront();
  }
  return 1;
}
