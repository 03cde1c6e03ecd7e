#include "support/Sway.h"

#include <csignal>
#include <cstdio>
#include <fstream>
#include <string_view>
#include <vector>

#include "support/ChildProcess.h"

namespace vorn::test {

namespace {

constexpr std::chrono::seconds patience{60};
constexpr std::string_view said = "socket ";

std::string controlOf(const std::string& folder) {
  return folder + "/control";
}

}  // namespace

Sway::Sway() = default;

std::unique_ptr<Sway> Sway::start(const std::string& folder, const std::string& configuration) {
  std::ofstream(folder + "/config") << "output * resolution 1600x1200\n"
                                    << configuration << "exec printf '" << said << "%s\\n' \"$WAYLAND_DISPLAY\"\n";
  std::unique_ptr<Sway> sway(new Sway);
  sway->mFolder = folder;
  sway->mProcess = std::make_unique<ChildProcess>(
      std::vector<std::string>{NOT_ROOT_PROGRAM, "env", "XDG_RUNTIME_DIR=" + folder, "SWAYSOCK=" + controlOf(folder),
                               "WLR_BACKENDS=headless", "WLR_RENDERER=pixman", "WLR_LIBINPUT_NO_DEVICES=1",
                               "LIBSEAT_BACKEND=noop", "sway", "--config", folder + "/config"});
  const auto line =
      sway->mProcess->waitForLine([](const std::string& each) { return each.starts_with(said); }, patience);
  if (!line) {
    std::fputs("No display: Sway did not start\n", stderr);
    return nullptr;
  }
  sway->mSocket = folder + "/" + line->substr(said.size());
  return sway;
}

Sway::~Sway() {
  mProcess->signal(SIGTERM);
  mProcess->waitForEnd();
}

bool Sway::obeys(const std::string& command) const {
  return ChildProcess({"swaymsg", "--socket", controlOf(mFolder), "--quiet", command}).waitForEnd(patience) == 0;
}

void Sway::kill() {
  mProcess->signal(SIGKILL);
  mProcess->waitForEnd();
}

void Sway::pause() {
  mProcess->signal(SIGSTOP);
}

void Sway::resume() {
  mProcess->signal(SIGCONT);
}

}  // namespace vorn::test
