// A change from the call of its control's operation to the redrawn window, with the real engine, beside the bare round
// trip of the bus. Prints medians; run it with QT_QPA_PLATFORM=offscreen where there is no display.
#include <cstdio>

#include "RunningWindow.h"
#include "model/SettingsKeys.h"
#include "ports/MessagePort.h"
#include "support/StandardBundle.h"

namespace {

namespace keys = vorn::keys;
using namespace skarn::bench;

constexpr int rounds = 200;

void compare(const char* name, const vorn::PropertyList& bundle, double budget) {
  const EngineWithSettings engine(ENGINE_PROGRAM, bundle);
  RunningWindow running;
  const Times bare = measure(rounds, [](int) { vorn::RemoteMessagePort::lookUp(vorn::enginePortName); });
  const Times change = measure(rounds, [&](int round) {
    running.hub().updateValueForSetting(
        vorn::PropertyList::dictionary({{keys::DPIX, 400 + round}, {keys::DPIY, 400 + round}}));
    RunningWindow::handlePostedEvents();
  });
  std::printf("%-9s change to redrawn %6.2f ms (budget %.0f)   bare round trip of the bus %5.3f ms\n", name,
              change.median, budget, bare.median);
}

}  // namespace

int main(int argc, char** argv) {
  const BenchApplication application(argc, argv);
  compare("standard", vorn::test::standardBundle(), 8);
  compare("large", vorn::test::largeBundle(), 40);
  return 0;
}
