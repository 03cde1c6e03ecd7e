#include "core-engine/play/Terminal.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "support/ChangedEnvironment.h"
#include "support/TemporaryFolder.h"

namespace vorn::engine::test {
namespace {

using Words = std::vector<std::string>;

class TerminalTest : public testing::Test {
 protected:
  TerminalTest() {
    environment.set("PATH", folder.path("bin"));
    environment.set("XDG_CONFIG_HOME", folder.path("config"));
    environment.set("XDG_CURRENT_DESKTOP", std::nullopt);
    std::filesystem::create_directory(folder.path("bin"));
    std::filesystem::create_directory(folder.path("config"));
  }
  void install(const std::string& program) {
    std::ofstream(folder.path("bin/" + program)) << "#!/bin/sh\n";
    ASSERT_EQ(::chmod(folder.path("bin/" + program).c_str(), 0755), 0);
  }
  void setGeneral(const std::string& lines) {
    std::ofstream(folder.path("config/kdeglobals"))
        << "[Other]\nTerminalApplication=wrong\n[General]\n" + lines + "[KDE]\nTerminalApplication=wrong\n";
  }

  TemporaryFolder folder;
  vorn::test::ChangedEnvironment environment;
};

TEST_F(TerminalTest, IsTheOneThatThePersonHasChosenWhereThatIsKnown) {
  install("xdg-terminal-exec");
  install("konsole");
  environment.set("XDG_CURRENT_DESKTOP", "KDE");
  EXPECT_EQ(terminalCommand(), Words{"xdg-terminal-exec"});
}

TEST_F(TerminalTest, IsThatOfTheDesktopsSettings) {
  install("alacritty");
  setGeneral("TerminalApplicationX=wrong\nTerminalApplication=alacritty  --hold \n");
  environment.set("XDG_CURRENT_DESKTOP", "X-Test:KDE");
  EXPECT_EQ(terminalCommand(), (Words{"alacritty", "--hold", "-e"}));
}

TEST_F(TerminalTest, IsTheUsualOneOfTheDesktopWhereItsSettingsNameNone) {
  install("konsole");
  environment.set("XDG_CURRENT_DESKTOP", "KDE");
  EXPECT_EQ(terminalCommand(), (Words{"konsole", "-e"}));
  setGeneral("");
  EXPECT_EQ(terminalCommand(), (Words{"konsole", "-e"}));
}

TEST_F(TerminalTest, IsTheSystemsWhereTheDesktopNamesNoneThatIsInstalled) {
  install("alacritty");
  setGeneral("TerminalApplication=konsole\n");
  EXPECT_EQ(terminalCommand(), (Words{"x-terminal-emulator", "-e"}));
  environment.set("XDG_CURRENT_DESKTOP", "KDE");
  EXPECT_EQ(terminalCommand(), (Words{"x-terminal-emulator", "-e"}));
  setGeneral("TerminalApplication=alacritty\n");
  environment.set("XDG_CURRENT_DESKTOP", "GNOME");
  EXPECT_EQ(terminalCommand(), (Words{"x-terminal-emulator", "-e"}));
}

}  // namespace
}  // namespace vorn::engine::test
