#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <string>
#include <string_view>
#include <thread>

#include "FakeEngine.h"
#include "protocol/EngineProtocol.h"

namespace {

using vorn::test::FakeEngine;

// Runs on a thread of its own, which is left behind in its read when the program ends.
void readCommands(vorn::RunLoop& loop, FakeEngine& engine) {
  for (std::string line; std::getline(std::cin, line);) {
    loop.perform([&engine, line] {
      std::string error;
      vorn::test::say(engine.obey(line, &error) ? "ok " + line : "error " + error);
    });
  }
  loop.stop();
}

}  // namespace

int main(int count, char** arguments) {
  std::string portName(vorn::enginePortName);
  bool readsInput = true;
  vorn::RunLoop loop;
  loop.onSignal(SIGTERM, [&loop] { loop.stop(); });
  FakeEngine engine(loop);
  for (int i = 1; i < count; ++i) {
    const std::string_view option = arguments[i];
    std::string error = "unknown option";
    if (option == "--port" && i + 1 < count) {
      portName = arguments[++i];
    } else if (option == "--ignore-input") {
      readsInput = false;
    } else if (option != "--do" || i + 1 >= count || !engine.obey(arguments[++i], &error)) {
      std::fprintf(stderr, "fake-engine: %s: %s\n", arguments[i], error.c_str());
      return 2;
    }
  }
  if (!engine.open(portName)) return 3;
  if (readsInput) std::thread(readCommands, std::ref(loop), std::ref(engine)).detach();
  loop.run();
  std::_Exit(0);  // the reading thread still stands in its read
}
