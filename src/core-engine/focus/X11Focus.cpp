#include "core-engine/focus/X11Focus.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

#include "core-engine/focus/ProcessProgram.h"
#include "core-engine/focus/SessionDisplays.h"
#include "protocol/Focus.h"

namespace vorn::engine {

namespace {

// In the order of X11Focus::Atom.
constexpr std::array<const char*, 8> atomNames = {
    "_NET_SUPPORTED", "_NET_SUPPORTING_WM_CHECK", "_NET_ACTIVE_WINDOW",          "_NET_WM_PID",
    "_NET_WM_NAME",   "_NET_WM_WINDOW_TYPE",      "_NET_WM_WINDOW_TYPE_DESKTOP", "_NET_WM_WINDOW_TYPE_DOCK"};

constexpr std::size_t longestTitle = 255;

// The screen of a display, ":0.1".
int screenOf(const std::string& display) {
  const std::size_t dot = display.find_last_of('.');
  int screen = 0;
  if (dot != std::string::npos) std::from_chars(display.data() + dot + 1, display.data() + display.size(), screen);
  return screen;
}

// The two texts of WM_CLASS, each ended by a null byte ("Inter-Client Communication Conventions Manual").
std::pair<std::string, std::string> instanceAndClass(const std::string& names) {
  const std::size_t end = std::min(names.find('\0'), names.size());
  const std::string rest = names.substr(std::min(end + 1, names.size()));
  return {names.substr(0, end), rest.substr(0, rest.find('\0'))};
}

}  // namespace

X11Focus::X11Focus(RunLoop& loop, Scheduler& scheduler, Server server, Handlers handlers)
    : ApplicationInFront(std::move(handlers)),
      mLoop(loop),
      mScheduler(scheduler),
      mServer(std::move(server)),
      mHost(localHostName()) {}

X11Focus::~X11Focus() {
  mScheduler.cancel(mTicket);
  mLoop.unwatch(mWatch);
}

std::string_view X11Focus::name() const {
  return focus::sources::X11;
}

void X11Focus::start() {
  mConnector = std::make_unique<X11Connector>(mLoop, mScheduler, mServer.socketPath,
                                              numberOfX11Display(mServer.display), mServer.authority,
                                              [this](X11Connection connection) { connected(std::move(connection)); });
}

void X11Focus::connected(X11Connection connection) {
  mConnector.reset();
  if (!connection) return fail();
  auto screens = xcb_setup_roots_iterator(xcb_get_setup(connection.get()));
  for (int left = screenOf(mServer.display); left > 0 && screens.rem > 1; --left) xcb_screen_next(&screens);
  if (screens.rem == 0) return fail();
  mRoot = screens.data->root;
  const int descriptor = xcb_get_file_descriptor(connection.get());
  mQuestions = std::make_unique<X11Questions>(std::move(connection));
  mWatch = mLoop.watch(descriptor, [this] { take(); });
  if (mWatch == 0) return fail();
  select(mRoot, XCB_EVENT_MASK_PROPERTY_CHANGE);
  askForAtoms();
  mQuestions->flush();
  take();
}

void X11Focus::take() {
  if (!mQuestions->takeAnswers([this](const xcb_generic_event_t& event) { note(event); })) return fail();
  mQuestions->flush();
}

void X11Focus::note(const xcb_generic_event_t& event) {
  switch (event.response_type & 0x7fU) {
    case XCB_PROPERTY_NOTIFY:
      return noteProperty(reinterpret_cast<const xcb_property_notify_event_t&>(event));
    case XCB_DESTROY_NOTIFY:
      return noteWindow(reinterpret_cast<const xcb_destroy_notify_event_t&>(event).window);
    case XCB_UNMAP_NOTIFY:
      return noteWindow(reinterpret_cast<const xcb_unmap_notify_event_t&>(event).window);
    case XCB_MAP_NOTIFY:
      return noteWindow(reinterpret_cast<const xcb_map_notify_event_t&>(event).window);
    default:
      return;
  }
}

void X11Focus::noteProperty(const xcb_property_notify_event_t& changed) {
  const bool isOfRoot =
      changed.window == mRoot &&
      (changed.atom == mAtoms[ActiveWindow] || changed.atom == mAtoms[Manager] || changed.atom == mAtoms[Supported]);
  if (isOfRoot || (changed.window == mInFront && changed.atom == XCB_ATOM_WM_CLASS)) look();
}

// Window managers may go on naming a window that is gone.
void X11Focus::noteWindow(xcb_window_t window) {
  if (window == mManager || window == mInFront) look();
}

void X11Focus::askForAtoms() {
  for (std::size_t each = 0; each < atomCount; ++each) {
    mQuestions->atom(atomNames[each], [this, each](xcb_atom_t atom) {
      mAtoms[each] = atom;
      if (each + 1 == atomCount) look();
    });
  }
}

void X11Focus::look() {
  mIsToLook = true;
  if (mIsLooking || mTicket != 0) return;
  mIsToLook = false;
  mIsLooking = true;
  askManager();
}

// The root window may name a window manager that is gone; its own window names itself.
void X11Focus::askManager() {
  mQuestions->property(mRoot, mAtoms[Manager], [this](const X11Property& property) {
    const xcb_window_t manager = property.number();
    if (manager == XCB_WINDOW_NONE) return beSilent();
    if (manager != mManager) select(manager, XCB_EVENT_MASK_STRUCTURE_NOTIFY);
    mManager = manager;
    mQuestions->property(manager, mAtoms[Manager], [this, manager](const X11Property& own) {
      if (own.number() != manager) return beSilent();
      askWhetherTelling();
    });
  });
}

void X11Focus::askWhetherTelling() {
  mQuestions->property(mRoot, mAtoms[Supported], [this](const X11Property& property) {
    const auto& all = property.numbers;
    if (std::find(all.begin(), all.end(), mAtoms[ActiveWindow]) == all.end()) return beSilent();
    askActive();
  });
}

void X11Focus::askActive() {
  mQuestions->property(mRoot, mAtoms[ActiveWindow],
                       [this](const X11Property& property) { askWindow(property.number()); });
}

void X11Focus::askWindow(xcb_window_t window) {
  const auto asked = std::make_shared<Window>();
  asked->id = window;
  if (window == XCB_WINDOW_NONE) return lookedAt(*asked);
  const auto ask = [this, window, asked](xcb_atom_t atom, X11Property Window::*member) {
    mQuestions->property(window, atom, [asked, member](const X11Property& value) { (*asked).*member = value; });
  };
  mQuestions->mapping(window, [asked](bool isMapped) { asked->isMapped = isMapped; });
  ask(XCB_ATOM_WM_CLASS, &Window::names);
  ask(mAtoms[Title], &Window::title);
  ask(mAtoms[Process], &Window::process);
  ask(XCB_ATOM_WM_CLIENT_MACHINE, &Window::machine);
  mQuestions->property(window, mAtoms[WindowType], [this, asked](const X11Property& value) {
    asked->type = value;
    lookedAt(*asked);
  });
}

void X11Focus::lookedAt(const Window& window) {
  watchWindow(window);
  const Application application = applicationOf(window);
  ended();
  become(State::Works);
  if (std::exchange(mHasTold, true) && application == mTold) return;
  mTold = application;
  tell(application);
}

void X11Focus::beSilent() {
  ended();
  mHasTold = false;
  become(State::Silent);
}

void X11Focus::ended() {
  mIsLooking = false;
  mTicket = mScheduler.after(pause, [this] {
    mTicket = 0;
    if (!mIsToLook) return;
    look();
    take();
  });
}

bool X11Focus::isPassedOver(const Window& window) const {
  const auto& types = window.type.numbers;
  return std::any_of(types.begin(), types.end(),
                     [this](std::uint32_t type) { return type == mAtoms[Desktop] || type == mAtoms[Dock]; });
}

Application X11Focus::applicationOf(const Window& window) const {
  // A panel, and the window that shows the desktop.
  if (!window.isMapped || isPassedOver(window)) return {};
  const auto [instance, identifier] = instanceAndClass(window.names.text);
  Application application{identifier, {}, window.title.text.substr(0, longestTitle), instance};
  // The number of a process on another machine tells nothing here.
  const std::string machine = window.machine.text.substr(0, window.machine.text.find('\0'));
  if (machine.empty() || machine == mHost) application.executable = programOfProcess(window.process.number());
  return application;
}

void X11Focus::watchWindow(const Window& window) {
  if (mInFront != XCB_WINDOW_NONE && mInFront != window.id) select(mInFront, 0);
  mInFront = window.id;
  if (mInFront == XCB_WINDOW_NONE) return;
  // Some programs say later who they are.
  const std::uint32_t naming = window.names.text.empty() ? XCB_EVENT_MASK_PROPERTY_CHANGE : 0;
  select(mInFront, XCB_EVENT_MASK_STRUCTURE_NOTIFY | naming);
}

void X11Focus::select(xcb_window_t window, std::uint32_t events) {
  xcb_change_window_attributes(mQuestions->connection(), window, XCB_CW_EVENT_MASK, &events);
}

// The connection stays until this ends: it may be what has just been asked.
void X11Focus::fail() {
  mLoop.unwatch(std::exchange(mWatch, 0));
  mScheduler.cancel(std::exchange(mTicket, 0));
  become(State::Failed);
}

}  // namespace vorn::engine
