#include "support/PrivateBus.h"

#include <stdlib.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "support/ChildProcess.h"

namespace vorn::test {

namespace {

[[noreturn]] void giveUp(const char* what) {
  std::fprintf(stderr, "No private bus: %s\n", what);
  std::abort();
}

std::string makeFolder() {
  std::string name = (std::filesystem::temp_directory_path() / "skarn-bus-XXXXXX").string();
  if (mkdtemp(name.data()) == nullptr) giveUp("no temporary folder");
  return name;
}

void writeConfiguration(const std::string& folder) {
  std::ofstream(folder + "/bus.conf")
      << "<!DOCTYPE busconfig PUBLIC \"-//freedesktop//DTD D-BUS Bus Configuration 1.0//EN\"\n"
         " \"http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd\">\n"
         "<busconfig>\n  <type>session</type>\n  <listen>unix:path="
      << folder << "/bus</listen>\n  <auth>EXTERNAL</auth>\n  <servicedir>" << folder
      << "</servicedir>\n"
         "  <policy context=\"default\">\n"
         "    <allow send_destination=\"*\" eavesdrop=\"true\"/>\n    <allow eavesdrop=\"true\"/>\n"
         "    <allow own=\"*\"/>\n  </policy>\n"
         // As in a session; without it the daemon has the limit of a system's bus.
         "  <limit name=\"max_replies_per_connection\">50000</limit>\n</busconfig>\n";
}

}  // namespace

PrivateBus::PrivateBus(const char* addressVariable) : mVariable(addressVariable), mFolder(makeFolder()) {
  writeConfiguration(mFolder);
  // So that tests can prove that nobody demands it.
  installService("org.vorn.MessagePort." + std::string(startablePort), "/bin/sh -c \"touch " + mFolder + "/started\"");
  mDaemon = std::make_unique<ChildProcess>(std::vector<std::string>{
      "dbus-daemon", "--config-file=" + mFolder + "/bus.conf", "--nofork", "--nopidfile", "--print-address=1"});
  const auto address = mDaemon->waitForLine([](const std::string&) { return true; });
  if (!address) giveUp("dbus-daemon did not start");
  mAddress = *address;
  if (const char* previous = getenv(mVariable)) mPreviousAddress = previous;
  setenv(mVariable, mAddress.c_str(), 1);
}

PrivateBus::~PrivateBus() {
  end();
  if (mPreviousAddress)
    setenv(mVariable, mPreviousAddress->c_str(), 1);
  else
    unsetenv(mVariable);
  std::error_code ignored;
  std::filesystem::remove_all(mFolder, ignored);
}

void PrivateBus::pause() {
  mDaemon->signal(SIGSTOP);
}

void PrivateBus::resume() {
  mDaemon->signal(SIGCONT);
}

void PrivateBus::end() {
  mDaemon->signal(SIGKILL);
  mDaemon->waitForEnd();
}

void PrivateBus::installService(const std::string& busName, const std::string& command) const {
  installServiceFile(busName, "[D-BUS Service]\nName=" + busName + "\nExec=" + command + "\n");
}

void PrivateBus::installServiceFile(const std::string& busName, const std::string& contents) const {
  std::ofstream(mFolder + "/" + busName + ".service") << contents;
  if (!mDaemon) return;
  // It sees by itself that a file has changed, but not at once.
  ChildProcess reload({"dbus-send", "--bus=" + mAddress, "--print-reply=literal", "--dest=org.freedesktop.DBus",
                       "/org/freedesktop/DBus", "org.freedesktop.DBus.ReloadConfig"});
  if (reload.waitForEnd() != 0) giveUp("a service cannot be installed");
}

bool PrivateBus::hasStartedService() const {
  return std::filesystem::exists(mFolder + "/started");
}

}  // namespace vorn::test
