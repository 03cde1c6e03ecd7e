// A well-behaved client, for bench/attack.py: asks the engine for all settings for SECONDS, 100 times a second, and
// prints how many were answered, how many were not, and the median and the worst time to an answer in milliseconds.
//
//   bench-good-client SECONDS [PORT]
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <thread>
#include <vector>

#include "link/PortEngineLink.h"
#include "protocol/EngineProtocol.h"

int main(int argc, char** argv) {
  using Clock = std::chrono::steady_clock;
  using Milliseconds = std::chrono::duration<double, std::milli>;
  using vorn::PropertyList;
  if (argc < 2) return 2;
  const std::string portName = argc > 2 ? argv[2] : "GoodReplyPort" + std::to_string(getpid());
  vorn::PortEngineLink link(portName);
  if (!link.createLocalPort()) return 1;
  const PropertyList request = PropertyList::dictionary(
      {{vorn::requestKeys::ProductID, 273}, {vorn::requestKeys::ResponseMsgPortName, portName}});
  std::vector<double> times;
  int missing = 0;
  const auto end = Clock::now() + std::chrono::duration<double>(std::strtod(argv[1], nullptr));
  while (Clock::now() < end) {
    const auto start = Clock::now();
    link.emptySlot();
    link.send(request, vorn::MessageID::GetAllSettings);
    if (link.waitForReply() && !link.reply().isEmpty()) {
      times.push_back(Milliseconds(Clock::now() - start).count());
    } else {
      ++missing;
    }
    std::this_thread::sleep_until(start + std::chrono::milliseconds(10));
  }
  std::sort(times.begin(), times.end());
  const double median = times.empty() ? 0 : times[times.size() / 2];
  const double worst = times.empty() ? 0 : times.back();
  std::printf("%zu %d %.3f %.3f\n", times.size(), missing, median, worst);
  return 0;
}
