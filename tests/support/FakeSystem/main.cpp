// Plays ratbagd, UPower and logind on the bus of DBUS_SYSTEM_BUS_ADDRESS, each by the interface that it has in Debian
// 12. It obeys one command a line of its input, answers "ok COMMAND" or "error COMMAND", and tells what its clients do:
// "set PATH PROPERTY VALUE" and "commit". It ends with its input.
#include <systemd/sd-bus.h>
#include <systemd/sd-event.h>

#include <csignal>
#include <cstdio>
#include <cstring>
#include <string>

#include "FakeLogin.h"
#include "FakePower.h"
#include "FakeRatbag.h"

namespace {

using namespace vorn::test;

struct Services {
  sd_event* event = nullptr;
  FakeRatbag ratbag;
  FakePower power;
  FakeLogin login;
  std::string input;
};

bool obey(Services& services, const std::string& line) {
  Words words(line);
  const std::string who = words.next();
  if (who == "ratbag") return services.ratbag.obey(words);
  if (who == "power") return services.power.obey(words);
  if (who == "login") return services.login.obey(words);
  return false;
}

int readInput(sd_event_source*, int descriptor, std::uint32_t, void* self) {
  auto& services = *static_cast<Services*>(self);
  char bytes[4096];
  const ssize_t count = read(descriptor, bytes, sizeof bytes);
  if (count <= 0) return sd_event_exit(services.event, 0);
  services.input.append(bytes, static_cast<std::size_t>(count));
  for (std::size_t end = services.input.find('\n'); end != std::string::npos; end = services.input.find('\n')) {
    const std::string line = services.input.substr(0, end);
    services.input.erase(0, end + 1);
    say((obey(services, line) ? "ok " : "error ") + line);
  }
  return 0;
}

}  // namespace

int main() {
  sd_bus* bus = nullptr;
  sd_event* event = nullptr;
  if (sd_bus_open_system(&bus) < 0 || sd_event_default(&event) < 0) return 1;
  sd_bus_attach_event(bus, event, SD_EVENT_PRIORITY_NORMAL);
  Services services{event, FakeRatbag(bus), FakePower(bus), FakeLogin(bus), {}};
  sd_event_add_io(event, nullptr, STDIN_FILENO, EPOLLIN, readInput, &services);
  say("ready");
  return sd_event_loop(event) < 0 ? 1 : 0;
}
