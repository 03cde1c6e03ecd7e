// Starts real programs and looks at what they found.
#include "core-engine/play/ProgramProcess.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <thread>

#include "model/PropertyListCodec.h"
#include "support/ChangedEnvironment.h"
#include "support/TemporaryFolder.h"

namespace vorn::engine::test {
namespace {

class ProgramProcessTest : public testing::Test {
 protected:
  void write(const std::string& name, const std::string& contents, mode_t mode = 0644) {
    std::filesystem::create_directories(std::filesystem::path(folder.path(name)).parent_path());
    std::ofstream(folder.path(name)) << contents;
    ASSERT_EQ(::chmod(folder.path(name).c_str(), mode), 0);
  }
  // A program that writes what the shell commands tell to the file "said", whole or not at all.
  void writeProgram(const std::string& name, const std::string& commands) {
    write(name,
          "#!/bin/sh\n{ " + commands + "\n} > '" + folder.path("saying") + "' 2>&1\nmv '" + folder.path("saying") +
              "' '" + folder.path("said") + "'\n",
          0755);
  }
  void writeInformation(const std::string& name, const std::string& executable) {
    const auto bytes = encodeBinaryPropertyList(PropertyList::dictionary({{"CFBundleExecutable", executable}})).value();
    write(name, std::string(bytes.begin(), bytes.end()));
  }

  // What the file "said" holds once it is there with this text in it.
  std::string said(std::string_view text = {}) const {
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    std::string contents;
    do {
      std::this_thread::sleep_for(std::chrono::milliseconds(2));
      std::ifstream file(folder.path("said"));
      if (!file) continue;
      contents.assign(std::istreambuf_iterator<char>(file), {});
      if (contents.find(text) != std::string::npos) return contents;
    } while (std::chrono::steady_clock::now() < end);
    return contents;
  }

  // What becomes of a launch that must succeed.
  std::string launched(const std::string& name) {
    EXPECT_EQ(failureOf(folder.path(name)), "");
    return said();
  }
  // Why the launch fails; empty when it does not.
  std::string failureOf(const std::string& path) {
    std::string failure;
    const auto program = launchedProgram(path, failure);
    return program ? startProcess(*program) : failure;
  }

  TemporaryFolder folder;
};

TEST_F(ProgramProcessTest, StartsTheProgramOfADesktopEntryInItsFolder) {
  writeProgram("bin/tell", "pwd; for each; do echo \"[$each]\"; done");
  write("tell.desktop", "[Desktop Entry]\nType=Application\nExec=" + folder.path("bin/tell") +
                            " \"a b\" %U c\nPath=" + folder.path("bin") + "\n");
  EXPECT_EQ(launched("tell.desktop"), std::filesystem::canonical(folder.path("bin")).string() + "\n[a b]\n[c]\n");
}

TEST_F(ProgramProcessTest, FindsTheProgramOfADesktopEntryInPath) {
  write("sh.desktop", "[Desktop Entry]\nType=Application\nExec=sh -c \"echo found > " + folder.path("saying") +
                          "; mv " + folder.path("saying") + " " + folder.path("said") + "\"\n");
  EXPECT_EQ(launched("sh.desktop"), "found\n");
}

TEST_F(ProgramProcessTest, StartsTheProgramOfAnApplicationBundle) {
  writeInformation("Mac.app/Contents/Info.plist", "tell");
  writeProgram("Mac.app/Contents/MacOS/tell", "echo nested");
  EXPECT_EQ(launched("Mac.app/"), "nested\n");
}

TEST_F(ProgramProcessTest, StartsTheProgramOfAFlatApplicationBundle) {
  writeInformation("Flat.app/Info.plist", "tell");
  writeProgram("Flat.app/tell", "echo flat");
  EXPECT_EQ(launched("Flat.app"), "flat\n");
}

TEST_F(ProgramProcessTest, StartsABundleWhateverTheCaseOfItsEnding) {
  writeInformation("Loud.APP/Info.plist", "tell");
  writeProgram("Loud.APP/tell", "echo loud");
  EXPECT_EQ(launched("Loud.APP"), "loud\n");
}

TEST_F(ProgramProcessTest, GivesTheProgramASessionOfItsOwnAndNoFiles) {
  writeInformation("Flat.app/Info.plist", "tell");
  writeProgram("Flat.app/tell", "cut -d' ' -f6 /proc/$$/stat; readlink /proc/$$/fd/0");
  const std::string told = launched("Flat.app");
  EXPECT_EQ(told.find(std::to_string(::getsid(0)) + "\n"), std::string::npos) << told;
  EXPECT_TRUE(told.ends_with("\n/dev/null\n")) << told;
}

TEST_F(ProgramProcessTest, GivesTheProgramUsualSignals) {
  sigset_t blocked;
  sigset_t before;
  ::sigemptyset(&blocked);
  ::sigaddset(&blocked, SIGTERM);
  ::sigprocmask(SIG_BLOCK, &blocked, &before);
  const auto pipeHandler = std::signal(SIGPIPE, SIG_IGN);
  write("copy.desktop", "[Desktop Entry]\nType=Application\nExec=cp /proc/self/status " + folder.path("said") + "\n");
  EXPECT_EQ(failureOf(folder.path("copy.desktop")), "");
  const std::string status = said("ctxt_switches:");
  std::signal(SIGPIPE, pipeHandler);
  ::sigprocmask(SIG_SETMASK, &before, nullptr);
  EXPECT_NE(status.find("SigBlk:\t0000000000000000\nSigIgn:\t0000000000000000\n"), std::string::npos) << status;
}

TEST_F(ProgramProcessTest, GivesTheProgramTheEnvironmentWithoutWhatWasTheEnginesOwn) {
  vorn::test::ChangedEnvironment environment;
  environment.set("DISPLAY", ":98");
  environment.set("WAYLAND_DISPLAY", std::nullopt);
  environment.set("XDG_SESSION_TYPE", std::nullopt);
  environment.set("DESKTOP_STARTUP_ID", "shell/vorn-core-engine/7_TIME5");
  environment.set("XDG_ACTIVATION_TOKEN", "used");
  environment.set("NOTIFY_SOCKET", "/none");
  environment.set("OF_THE_SESSION", "a  b");
  writeInformation("Flat.app/Info.plist", "tell");
  writeProgram("Flat.app/tell",
               "echo \"$OF_THE_SESSION,$XDG_ACTIVATION_TOKEN,$NOTIFY_SOCKET,$DISPLAY,${DESKTOP_STARTUP_ID%%_TIME*}\"");
  const std::string told = launched("Flat.app");
  EXPECT_TRUE(told.starts_with("a  b,,,:98,vorn-core-engine/Flat/" + std::to_string(::getpid()) + "-")) << told;
}

TEST_F(ProgramProcessTest, LeavesNoChildBehind) {
  writeInformation("Flat.app/Info.plist", "tell");
  writeProgram("Flat.app/tell", "echo done");
  EXPECT_EQ(launched("Flat.app"), "done\n");
  EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), -1);
  EXPECT_EQ(errno, ECHILD);
}

TEST_F(ProgramProcessTest, RefusesWhatIsNoApplication) {
  write("tell", "#!/bin/sh\n", 0755);
  EXPECT_EQ(failureOf(folder.path("tell")), "neither an application bundle nor a desktop entry");
  EXPECT_EQ(failureOf("Flat.app"), "not an absolute path");
  EXPECT_EQ(failureOf(""), "not an absolute path");
  EXPECT_EQ(failureOf(folder.path("None.app")), "no application bundle with an Info.plist");
  EXPECT_EQ(failureOf(folder.path("none.desktop")), "No such file or directory");
}

TEST_F(ProgramProcessTest, DoesNotWaitForTheWriterOfANamedPipe) {
  ASSERT_EQ(::mkfifo(folder.path("pipe.desktop").c_str(), 0600), 0);
  EXPECT_EQ(failureOf(folder.path("pipe.desktop")), "not a regular file");
}

TEST_F(ProgramProcessTest, RefusesAProgramThatCannotBeRun) {
  writeInformation("Flat.app/Info.plist", "tell");
  EXPECT_EQ(failureOf(folder.path("Flat.app")), "there is no program " + folder.path("Flat.app/tell"));
  write("Flat.app/tell", "#!/bin/sh\n", 0644);
  EXPECT_EQ(failureOf(folder.path("Flat.app")), "there is no program " + folder.path("Flat.app/tell"));
  write("none.desktop", "[Desktop Entry]\nType=Application\nExec=no-such-program-anywhere\n");
  EXPECT_EQ(failureOf(folder.path("none.desktop")), "there is no program no-such-program-anywhere");
  write("relative.desktop", "[Desktop Entry]\nType=Application\nExec=bin/sh\n");
  EXPECT_EQ(failureOf(folder.path("relative.desktop")), "there is no program bin/sh");
}

TEST_F(ProgramProcessTest, TellsWhyTheSystemDoesNotRunAProgram) {
  write("bin/odd", "#!/no/such/interpreter\n", 0755);
  write("odd.desktop", "[Desktop Entry]\nType=Application\nExec=" + folder.path("bin/odd") + "\n");
  EXPECT_EQ(failureOf(folder.path("odd.desktop")),
            "cannot start " + folder.path("bin/odd") + ": No such file or directory");
  write("bin/empty", "", 0755);
  write("empty.desktop", "[Desktop Entry]\nType=Application\nExec=" + folder.path("bin/empty") + "\n");
  EXPECT_EQ(failureOf(folder.path("empty.desktop")),
            "cannot start " + folder.path("bin/empty") + ": Exec format error");
}

TEST_F(ProgramProcessTest, RefusesAnArgumentThatTheSystemDoesNotPassOn) {
  const std::string program = folder.path("bin/tell");
  writeProgram("bin/tell", "echo told");
  write("long.desktop", "[Desktop Entry]\nType=Application\nExec=" + program + " " + std::string(200'000, 'x') + "\n");
  EXPECT_EQ(failureOf(folder.path("long.desktop")), "cannot start " + program + ": Argument list too long");
}

TEST_F(ProgramProcessTest, RefusesAnInformationFileThatIsNone) {
  write("Odd.app/Info.plist", "no property list");
  EXPECT_NE(failureOf(folder.path("Odd.app")), "");
  write("Empty.app/Info.plist", "<plist><dict/></plist>");
  EXPECT_EQ(failureOf(folder.path("Empty.app")), "the application bundle names no program");
}

}  // namespace
}  // namespace vorn::engine::test
