// How long it takes from a window that comes to the front, or a program that tells so on the bus, to the news that its
// profile is in force. Prints medians and the longest; the budget is 100 ms.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "e2e/FollowedEngine.h"
#include "support/X11Server.h"

namespace {

using namespace vorn::test;
using Clock = std::chrono::steady_clock;

constexpr int rounds = 40;

// bring(0) and bring(1) make the applications of two profiles the one in front.
void measure(const char* name, FollowedEngine& engine, const std::function<void(int which)>& bring) {
  std::vector<double> times;
  for (int round = 0; round < rounds; ++round) {
    const std::size_t before = engine.news().size();
    const auto start = Clock::now();
    bring(round % 2);
    while (engine.news().size() == before) {
      if (Clock::now() - start > FollowedEngine::patience) {
        std::printf("%-4s the profile does not follow\n", name);
        return;
      }
      std::this_thread::sleep_for(std::chrono::microseconds(200));
    }
    times.push_back(std::chrono::duration<double, std::milli>(Clock::now() - start).count());
    // So that it is a change of its own.
    std::this_thread::sleep_for(std::chrono::milliseconds(60));
  }
  std::ranges::sort(times);
  std::printf("%-4s to the profile in force: median %5.1f ms, 95 %% %5.1f ms, longest %5.1f ms (budget 100)\n", name,
              times[times.size() / 2], times[times.size() * 95 / 100], times.back());
}

void measureBus() {
  setenv("DISPLAY", ":none", 1);
  const PrivateBus bus;
  FollowedEngine engine;
  if (!engine.start()) return;
  LoopThread teller;
  measure("bus", engine, [&](int which) {
    teller.run([&] {
      FollowedEngine::call(vorn::focus::methods::SetApplicationInFront,
                           {{"s", which == 0 ? "chess" : "paint"}, {"s", ""}, {"s", ""}});
    });
  });
}

void measureX11(const std::string& folder) {
  const PrivateBus bus;
  X11Server server;
  if (!server.start()) return;
  server.startWindowManager(folder);
  FollowedEngine engine;
  const auto isTold = [&] { return engine.state()["Source"].string() == vorn::focus::sources::X11; };
  if (!engine.start() || !FollowedEngine::comesTrue(isTold)) return;
  std::vector<std::unique_ptr<ChildProcess>> windows;
  for (const char* name : {"chess", "paint"}) {
    windows.push_back(std::make_unique<ChildProcess>(std::vector<std::string>{WINDOW_PROGRAM, "main", name}));
    windows.back()->waitForLine([](const std::string& line) { return line == "shown"; });
  }
  if (engine.profileWhen("Draw") != "Draw") return;
  measure("X11", engine, [&](int which) { windows[static_cast<std::size_t>(which)]->writeLine("front"); });
}

}  // namespace

int main() {
  const vorn::engine::test::TemporaryFolder folder;
  unsetenv("WAYLAND_DISPLAY");
  setenv("XDG_RUNTIME_DIR", folder.path().c_str(), 1);
  measureBus();
  measureX11(folder.path());
  return 0;
}
