#include "support/X11Server.h"

#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <vector>

namespace vorn::test {

namespace {

constexpr std::chrono::seconds patience{60};

// No keys of its own, and whatever window comes has the keyboard.
constexpr const char* openboxConfiguration =
    "<openbox_config xmlns=\"http://openbox.org/3.4/rc\">\n"
    "  <focus><focusNew>yes</focusNew><followMouse>no</followMouse></focus>\n"
    "  <keyboard></keyboard>\n"
    "  <mouse></mouse>\n"
    "</openbox_config>\n";

void end(std::unique_ptr<ChildProcess>& process) {
  if (!process) return;
  process->signal(15);
  process->waitForEnd();
  process.reset();
}

}  // namespace

X11Server::~X11Server() {
  stopWindowManager();
  end(mServer);
}

bool X11Server::start(int number) {
  std::vector<std::string> line{"Xvfb"};
  if (number >= 0) line.push_back(":" + std::to_string(number));
  line.insert(line.end(), {"-displayfd", "1", "-screen", "0", "1600x1200x24", "-nolisten", "tcp", "-noreset"});
  mServer = std::make_unique<ChildProcess>(line);
  const auto told = mServer->waitForLine([](const std::string&) { return true; }, patience);
  if (!told) return false;
  mNumber = std::stoi(*told);
  setenv("DISPLAY", (":" + *told).c_str(), 1);
  return true;
}

void X11Server::startWindowManager(const std::string& folder) {
  std::ofstream(folder + "/rc.xml") << openboxConfiguration;
  mOpenbox = std::make_unique<ChildProcess>(
      std::vector<std::string>{"openbox", "--config-file", folder + "/rc.xml", "--sm-disable"});
}

void X11Server::stopWindowManager() {
  end(mOpenbox);
}

int ownX11Number() {
  constexpr int firstNumber = 1000;
  constexpr int numbers = 50'000;
  return firstNumber + static_cast<int>(getpid()) % numbers;
}

}  // namespace vorn::test
