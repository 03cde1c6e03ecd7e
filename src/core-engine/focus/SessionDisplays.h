// The displays that the environment names: that of this process, else that of the user's service manager, which follows
// the session. Where none of them names one, those whose sockets are there and belong to the user. One thread, the
// engine's, which never waits.
#pragma once

#include <array>
#include <map>
#include <memory>
#include <string>

#include "core-engine/Scheduler.h"
#include "core-engine/focus/Displays.h"
#include "model/FileDescriptor.h"
#include "model/PropertyList.h"
#include "ports/NameWatch.h"
#include "ports/RunLoop.h"

namespace vorn::engine {

class SessionDisplays : public Displays {
 public:
  // The sockets of X servers.
  static constexpr const char* usualX11Folder = "/tmp/.X11-unix";

  // Both outlive this.
  SessionDisplays(RunLoop& loop, Scheduler& scheduler, std::string x11Folder = usualX11Folder);
  ~SessionDisplays() override;
  SessionDisplays(const SessionDisplays&) = delete;
  SessionDisplays& operator=(const SessionDisplays&) = delete;

  void find(std::function<void(const FoundDisplays&)> found) override;
  void watch(std::function<void()> changed) override;

 private:
  using Variables = std::map<std::string, std::string, std::less<>>;
  struct Search;

  // What the variables name and is there.
  FoundDisplays named(const Variables& variables) const;
  FoundDisplays inFolders(const Variables& variables) const;
  void askManager(const std::shared_ptr<Search>& search);
  void askWhatRuns(const std::shared_ptr<Search>& search);
  void finish(const std::shared_ptr<Search>& search);
  void watchFolders();
  void readWatch();

  RunLoop& mLoop;
  Scheduler& mScheduler;
  std::string mX11Folder;
  std::shared_ptr<Search> mSearch;
  std::function<void()> mChanged;
  std::unique_ptr<FileDescriptor> mInotify;  // while something is watched
  RunLoop::Watch mWatch = 0;
  std::array<std::unique_ptr<NameWatch>, 2> mNames;
};

// The path of the socket of a Wayland display, of the variables' WAYLAND_DISPLAY and XDG_RUNTIME_DIR; empty for none.
std::string waylandSocketOf(const std::string& display, const std::string& runtimeFolder);
// The number of an X display of this machine, ":0" or ":0.1"; negative for another one.
int numberOfX11Display(const std::string& display);

}  // namespace vorn::engine
