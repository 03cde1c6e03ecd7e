#include "core-engine/focus/SessionDisplays.h"

#include <sys/inotify.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

#include "core-engine/focus/LocalSocket.h"
#include "ports/BusMethodCall.h"

namespace vorn::engine {

namespace {

constexpr const char* gnomeShell = "org.gnome.Shell";
constexpr const char* kwin = "org.kde.KWin";
constexpr std::array<const char*, 2> compositors = {gnomeShell, kwin};

namespace variables {
constexpr const char* Wayland = "WAYLAND_DISPLAY";
constexpr const char* X11 = "DISPLAY";
constexpr const char* Authority = "XAUTHORITY";
constexpr const char* RuntimeFolder = "XDG_RUNTIME_DIR";
constexpr const char* Home = "HOME";
constexpr std::array<const char*, 5> all = {Wayland, X11, Authority, RuntimeFolder, Home};
}  // namespace variables

constexpr std::chrono::milliseconds answerTime{1000};

template <typename Variables>
std::string valueOf(const Variables& values, std::string_view name) {
  const auto found = values.find(name);
  return found == values.end() ? std::string() : found->second;
}

// The sockets of the user, or of the system, whose names begin so; those of the user first, in the order of their
// names.
std::vector<std::string> socketsIn(const std::string& folder, std::string_view prefix) {
  std::vector<std::pair<bool, std::string>> found;
  std::error_code error;
  for (std::filesystem::directory_iterator each(folder, error), end; !error && each != end; each.increment(error)) {
    std::string name = each->path().filename();
    struct stat status {};
    const bool isSocket =
        name.starts_with(prefix) && lstat(each->path().c_str(), &status) == 0 && S_ISSOCK(status.st_mode);
    if (!isSocket || (status.st_uid != getuid() && status.st_uid != 0)) continue;
    found.emplace_back(status.st_uid != getuid(), std::move(name));
  }
  std::sort(found.begin(), found.end());
  std::vector<std::string> names;
  names.reserve(found.size());
  for (auto& [isSystem, name] : found) names.push_back(std::move(name));
  return names;
}

}  // namespace

std::string waylandSocketOf(const std::string& display, const std::string& runtimeFolder) {
  if (display.empty() || display.starts_with('/')) return display;
  return runtimeFolder.starts_with('/') ? runtimeFolder + "/" + display : std::string();
}

int numberOfX11Display(const std::string& display) {
  std::string_view rest = display;
  if (rest.starts_with("unix:")) rest.remove_prefix(4);
  if (!rest.starts_with(':')) return -1;
  rest.remove_prefix(1);
  int number = -1;
  const auto [end, error] = std::from_chars(rest.data(), rest.data() + rest.size(), number);
  const bool isWhole = end == rest.data() + rest.size() || *end == '.';
  return error == std::errc() && isWhole && number >= 0 ? number : -1;
}

struct SessionDisplays::Search {
  std::function<void(const FoundDisplays&)> found;
  Variables own;
  FoundDisplays displays;
  bool isNamed = false;  // a variable names one
  std::size_t open = 0;  // questions on their way
};

SessionDisplays::SessionDisplays(RunLoop& loop, Scheduler& scheduler, std::string x11Folder)
    : mLoop(loop), mScheduler(scheduler), mX11Folder(std::move(x11Folder)) {}

SessionDisplays::~SessionDisplays() {
  watch({});
}

void SessionDisplays::find(std::function<void(const FoundDisplays&)> found) {
  mSearch = std::make_shared<Search>();
  mSearch->found = std::move(found);
  for (const char* name : variables::all) {
    if (const char* value = std::getenv(name)) mSearch->own[name] = value;
  }
  mSearch->displays = named(mSearch->own);
  mSearch->isNamed = mSearch->own.contains(variables::Wayland) || mSearch->own.contains(variables::X11);
  const std::weak_ptr<Search> search = mSearch;
  mScheduler.after(Scheduler::Duration::zero(), [this, search] {
    const auto locked = search.lock();
    if (!locked) return;
    locked->displays == FoundDisplays() ? askManager(locked) : askWhatRuns(locked);
  });
}

// Who has started this engine may have had no display, or another one than there is now.
void SessionDisplays::askManager(const std::shared_ptr<Search>& search) {
  static const BusTarget manager{"org.freedesktop.systemd1", "/org/freedesktop/systemd1",
                                 "org.freedesktop.DBus.Properties"};
  const std::weak_ptr<Search> asked = search;
  callBusMethodLater(manager, "Get", {{"s", "org.freedesktop.systemd1.Manager"}, {"s", "Environment"}}, answerTime,
                     [this, asked](const BusAnswer& answer) {
                       const auto locked = asked.lock();
                       if (!locked) return;
                       Variables values = locked->own;
                       if (!answer.values.empty()) {
                         for (const PropertyList& each : answer.values.front().elements()) {
                           const std::string_view text = each.string();
                           const std::size_t sign = text.find('=');
                           if (sign == std::string_view::npos) continue;
                           values.insert_or_assign(std::string(text.substr(0, sign)),
                                                   std::string(text.substr(sign + 1)));
                           const std::string_view name = text.substr(0, sign);
                           if (name == variables::Wayland || name == variables::X11) locked->isNamed = true;
                         }
                       }
                       locked->displays = locked->isNamed ? named(values) : inFolders(values);
                       askWhatRuns(locked);
                     });
}

void SessionDisplays::askWhatRuns(const std::shared_ptr<Search>& search) {
  if (search->displays.waylandSocket.empty()) return finish(search);
  static const BusTarget bus{"org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus"};
  search->open = compositors.size();
  for (const char* name : compositors) {
    const std::weak_ptr<Search> asked = search;
    callBusMethodLater(bus, "NameHasOwner", {{"s", name}}, answerTime, [this, asked, name](const BusAnswer& answer) {
      const auto locked = asked.lock();
      if (!locked) return;
      const bool isThere = !answer.values.empty() && answer.values.front().toBool();
      (name == kwin ? locked->displays.hasKWin : locked->displays.hasGnomeShell) = isThere;
      if (--locked->open == 0) finish(locked);
    });
  }
}

void SessionDisplays::finish(const std::shared_ptr<Search>& search) {
  mSearch.reset();
  search->found(search->displays);
}

FoundDisplays SessionDisplays::named(const Variables& variables) const {
  FoundDisplays displays;
  const std::string socket =
      waylandSocketOf(valueOf(variables, variables::Wayland), valueOf(variables, variables::RuntimeFolder));
  if (!socket.empty() && isListenedTo(socket)) displays.waylandSocket = socket;
  const std::string display = valueOf(variables, variables::X11);
  const int number = numberOfX11Display(display);
  const std::string x11Socket = mX11Folder + "/X" + std::to_string(number);
  if (number < 0 || !isListenedTo(x11Socket)) return displays;
  displays.x11Display = display;
  displays.x11Socket = x11Socket;
  displays.x11Authority = valueOf(variables, variables::Authority);
  if (displays.x11Authority.empty()) displays.x11Authority = valueOf(variables, variables::Home) + "/.Xauthority";
  return displays;
}

FoundDisplays SessionDisplays::inFolders(const Variables& variables) const {
  Variables guessed = variables;
  const std::string runtimeFolder = valueOf(variables, variables::RuntimeFolder);
  const auto listened = [](const std::string& folder, std::string_view prefix) {
    for (const std::string& name : socketsIn(folder, prefix)) {
      if (isListenedTo(std::filesystem::path(folder) / name)) return name;
    }
    return std::string();
  };
  guessed.insert_or_assign(variables::Wayland, listened(runtimeFolder, "wayland-"));
  const std::string x11 = listened(mX11Folder, "X");
  guessed.insert_or_assign(variables::X11, x11.empty() ? x11 : ":" + x11.substr(1));
  return named(guessed);
}

void SessionDisplays::watch(std::function<void()> changed) {
  const bool isBegun = mInotify != nullptr;
  mChanged = std::move(changed);
  if (!mChanged) {
    mLoop.unwatch(std::exchange(mWatch, 0));
    mInotify.reset();
    for (auto& each : mNames) each.reset();
    return;
  }
  if (isBegun) return watchFolders();
  mInotify = std::make_unique<FileDescriptor>(inotify_init1(IN_NONBLOCK | IN_CLOEXEC));
  if (mInotify->get() >= 0) mWatch = mLoop.watch(mInotify->get(), [this] { readWatch(); });
  watchFolders();
  for (std::size_t each = 0; each < compositors.size(); ++each) {
    const auto isFirst = std::make_shared<bool>(true);
    mNames[each] =
        std::make_unique<NameWatch>(Bus::Session, compositors[each], [this, isFirst](const std::string& owner) {
          // How it stands is nothing new.
          if (!std::exchange(*isFirst, false) && !owner.empty()) mChanged();
        });
  }
}

void SessionDisplays::watchFolders() {
  constexpr auto coming = IN_CREATE | IN_MOVED_TO | IN_ONLYDIR;
  const char* runtimeFolder = std::getenv(variables::RuntimeFolder);
  if (runtimeFolder != nullptr) inotify_add_watch(mInotify->get(), runtimeFolder, coming);
  if (inotify_add_watch(mInotify->get(), mX11Folder.c_str(), coming) >= 0) return;
  // Made by the first server.
  const std::string parent = mX11Folder.substr(0, mX11Folder.find_last_of('/'));
  inotify_add_watch(mInotify->get(), parent.c_str(), coming);
}

void SessionDisplays::readWatch() {
  alignas(inotify_event) char buffer[4096];
  bool hasCome = false;
  const std::string folderName = mX11Folder.substr(mX11Folder.find_last_of('/') + 1);
  for (ssize_t length = 0; (length = read(mInotify->get(), buffer, sizeof buffer)) > 0;) {
    for (ssize_t offset = 0; offset < length;) {
      const auto& event = *reinterpret_cast<const inotify_event*>(buffer + offset);
      const std::string_view name = event.len > 0 ? std::string_view(event.name) : std::string_view();
      hasCome = hasCome || name.starts_with("wayland-") || name.starts_with('X') || name == folderName;
      offset += static_cast<ssize_t>(sizeof event + event.len);
    }
  }
  if (!hasCome) return;
  watchFolders();
  // Which may end the watch.
  const auto changed = mChanged;
  changed();
}

}  // namespace vorn::engine
