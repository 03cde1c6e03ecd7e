#include <poll.h>
#include <unistd.h>
#include <xcb/xcb.h>
#include <xcb/xinput.h>
#include <xcb/xtest.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <optional>
#include <utility>

#include "e2e/Display.h"
#include "model/KernelKeys.h"
#include "support/X11Server.h"

namespace vorn::test {

namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

constexpr std::chrono::seconds patience{60};

struct Free {
  void operator()(void* reply) const { std::free(reply); }
};
template <typename Reply>
using ReplyOf = std::unique_ptr<Reply, Free>;

struct Disconnect {
  void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
};

class X11Display : public Display {
 public:
  bool start(const std::string& folder) {
    if (!mServer.start() || !connect()) return false;
    mServer.startWindowManager(folder);
    // A window manager is there when it says so.
    return waitUntil([this] { return !propertyOfRoot("_NET_SUPPORTING_WM_CHECK").empty(); });
  }

  std::string platform() const override { return "xcb"; }

  bool waitForFocus(pid_t process, Window window) override {
    return waitUntil([&] {
      const xcb_window_t active = activeWindow();
      const bool isSheet = !property(active, "WM_TRANSIENT_FOR").empty();
      return property(active, "_NET_WM_PID") == std::vector{static_cast<std::uint32_t>(process)} &&
             isSheet == (window == Window::Sheet);
    });
  }

  bool closeWindow(pid_t process) override {
    const xcb_window_t window = activeWindow();
    if (property(window, "_NET_WM_PID") != std::vector{static_cast<std::uint32_t>(process)}) return false;
    const std::uint32_t structure = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    xcb_change_window_attributes(mConnection.get(), window, XCB_CW_EVENT_MASK, &structure);
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = window;
    message.type = atom("WM_PROTOCOLS");
    message.data.data32[0] = atom("WM_DELETE_WINDOW");
    xcb_send_event(mConnection.get(), 0, window, XCB_EVENT_MASK_NO_EVENT, reinterpret_cast<const char*>(&message));
    xcb_flush(mConnection.get());
    return waitUntil([&] {
      const ReplyOf<xcb_get_window_attributes_reply_t> attributes(xcb_get_window_attributes_reply(
          mConnection.get(), xcb_get_window_attributes(mConnection.get(), window), nullptr));
      return !attributes || attributes->map_state != XCB_MAP_STATE_VIEWABLE;
    });
  }

  std::vector<milliseconds> type(const std::vector<Stroke>& strokes) override {
    mSeen.clear();
    for (const Stroke& stroke : strokes) {
      const auto key = kernelKeyOfUsage({hid::keyboardPage, stroke.usage});
      if (!key) return {};
      // The server itself lets the gap pass.
      xcb_test_fake_input(mConnection.get(), stroke.isPressed ? XCB_KEY_PRESS : XCB_KEY_RELEASE,
                          static_cast<std::uint8_t>(*key + xkbOffset), static_cast<std::uint32_t>(stroke.gap.count()),
                          mScreen->root, 0, 0, 0);
    }
    xcb_flush(mConnection.get());
    return waitUntil([&] { return mSeen.size() >= strokes.size(); }) ? mSeen : std::vector<milliseconds>();
  }

  bool takeFocus() override {
    const xcb_window_t window = xcb_generate_id(mConnection.get());
    xcb_create_window(mConnection.get(), XCB_COPY_FROM_PARENT, window, mScreen->root, 10, 10, 200, 100, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
    xcb_map_window(mConnection.get(), window);
    return waitUntil([&] { return activeWindow() == window; });
  }

 private:
  bool connect() {
    mConnection.reset(xcb_connect(nullptr, nullptr));
    if (xcb_connection_has_error(mConnection.get()) != 0) return false;
    mScreen = xcb_setup_roots_iterator(xcb_get_setup(mConnection.get())).data;
    const std::uint32_t properties = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(mConnection.get(), mScreen->root, XCB_CW_EVENT_MASK, &properties);
    return watchKeys();
  }

  // The keys of all keyboards, wherever they go, without their repetitions.
  bool watchKeys() {
    const auto* const extension = xcb_get_extension_data(mConnection.get(), &xcb_input_id);
    if (extension == nullptr || extension->present == 0) return false;
    mInputExtension = extension->major_opcode;
    const ReplyOf<xcb_input_xi_query_version_reply_t> version(xcb_input_xi_query_version_reply(
        mConnection.get(), xcb_input_xi_query_version(mConnection.get(), 2, 2), nullptr));
    if (!version) return false;
    struct {
      xcb_input_event_mask_t head;
      std::uint32_t mask;
    } wanted{{XCB_INPUT_DEVICE_ALL_MASTER, 1},
             XCB_INPUT_XI_EVENT_MASK_RAW_KEY_PRESS | XCB_INPUT_XI_EVENT_MASK_RAW_KEY_RELEASE};
    const ReplyOf<xcb_generic_error_t> error(xcb_request_check(
        mConnection.get(), xcb_input_xi_select_events_checked(mConnection.get(), mScreen->root, 1, &wanted.head)));
    return !error;
  }

  // Reads what the server says until that is true.
  bool waitUntil(const std::function<bool()>& isDone) {
    const auto end = steady_clock::now() + patience;
    while (true) {
      while (const ReplyOf<xcb_generic_event_t> event{xcb_poll_for_event(mConnection.get())}) note(*event);
      if (isDone()) return true;
      // The answer to a question may have brought events along.
      if (const ReplyOf<xcb_generic_event_t> event{xcb_poll_for_queued_event(mConnection.get())}) {
        note(*event);
        continue;
      }
      const auto left = std::chrono::ceil<milliseconds>(end - steady_clock::now());
      if (left.count() <= 0 || xcb_connection_has_error(mConnection.get()) != 0) return false;
      pollfd watched{xcb_get_file_descriptor(mConnection.get()), POLLIN, 0};
      poll(&watched, 1, static_cast<int>(left.count()));
    }
  }

  void note(const xcb_generic_event_t& event) {
    if ((event.response_type & 0x7f) != XCB_GE_GENERIC) return;
    const auto& generic = reinterpret_cast<const xcb_ge_generic_event_t&>(event);
    const bool isKey = generic.event_type == XCB_INPUT_RAW_KEY_PRESS || generic.event_type == XCB_INPUT_RAW_KEY_RELEASE;
    if (generic.extension != mInputExtension || !isKey) return;
    mSeen.emplace_back(reinterpret_cast<const xcb_input_raw_key_press_event_t&>(event).time);
  }

  xcb_atom_t atom(const std::string& name) {
    const ReplyOf<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(
        mConnection.get(), xcb_intern_atom(mConnection.get(), 0, static_cast<std::uint16_t>(name.size()), name.c_str()),
        nullptr));
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
  }
  // Its 32-bit values.
  std::vector<std::uint32_t> property(xcb_window_t window, const std::string& name) {
    const ReplyOf<xcb_get_property_reply_t> reply(xcb_get_property_reply(
        mConnection.get(), xcb_get_property(mConnection.get(), 0, window, atom(name), XCB_GET_PROPERTY_TYPE_ANY, 0, 64),
        nullptr));
    if (!reply || reply->format != 32) return {};
    const auto* const values = static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get()));
    return {values, values + xcb_get_property_value_length(reply.get()) / 4};
  }
  std::vector<std::uint32_t> propertyOfRoot(const std::string& name) { return property(mScreen->root, name); }
  xcb_window_t activeWindow() {
    const auto active = propertyOfRoot("_NET_ACTIVE_WINDOW");
    return active.empty() ? xcb_window_t{XCB_WINDOW_NONE} : active[0];
  }

  X11Server mServer;
  std::unique_ptr<xcb_connection_t, Disconnect> mConnection;
  xcb_screen_t* mScreen = nullptr;
  std::uint8_t mInputExtension = 0;
  std::vector<milliseconds> mSeen;
};

}  // namespace

std::unique_ptr<Display> startX11Display(const std::string& folder) {
  auto display = std::make_unique<X11Display>();
  if (display->start(folder)) return display;
  std::fputs("No display: Xvfb or Openbox did not start\n", stderr);
  return nullptr;
}

}  // namespace vorn::test
