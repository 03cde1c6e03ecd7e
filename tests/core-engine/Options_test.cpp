#include "core-engine/Options.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

namespace vorn::engine::test {
namespace {

std::variant<Options, std::string> parse(const std::vector<const char*>& arguments) {
  return parseOptions(arguments);
}

std::string faultOf(const std::vector<const char*>& arguments) {
  const auto parsed = parse(arguments);
  const auto* fault = std::get_if<std::string>(&parsed);
  return fault != nullptr ? *fault : "";
}

TEST(OptionsTest, AreAllOptional) {
  const auto options = std::get<Options>(parse({}));
  EXPECT_FALSE(options.isHelpWanted);
  EXPECT_FALSE(options.isVersionWanted);
  EXPECT_FALSE(options.isVerbose);
  EXPECT_FALSE(options.isService);
  EXPECT_EQ(options.stateFolder, "");
  EXPECT_EQ(options.defaultsFile, "");
  EXPECT_EQ(options.connection, Device::Connection::Wired);
}

TEST(OptionsTest, TakeTheirValueAsTheNextArgumentOrAfterAnEqualsSign) {
  const auto options = std::get<Options>(
      parse({"--verbose", "--state-dir", "/a/b", "--defaults=/c=d/Skarn.plist", "--device", "wireless"}));
  EXPECT_TRUE(options.isVerbose);
  EXPECT_EQ(options.stateFolder, "/a/b");
  EXPECT_EQ(options.defaultsFile, "/c=d/Skarn.plist");
  EXPECT_EQ(options.connection, Device::Connection::Wireless);
}

TEST(OptionsTest, SayThatTheEngineIsAService) {
  EXPECT_TRUE(std::get<Options>(parse({"--service"})).isService);
}

TEST(OptionsTest, MakePathsAbsolute) {
  const auto options = std::get<Options>(parse({"--state-dir", "some/../folder"}));
  EXPECT_EQ(options.stateFolder, (std::filesystem::current_path() / "folder").string());
}

TEST(OptionsTest, NameWhatIsWrong) {
  EXPECT_EQ(faultOf({"--fast"}), "unknown option --fast");
  EXPECT_EQ(faultOf({"--verbose=1"}), "unknown option --verbose=1");
  EXPECT_EQ(faultOf({"file"}), "unknown option file");
  EXPECT_EQ(faultOf({""}), "unknown option ");
  EXPECT_EQ(faultOf({"--state-dir"}), "--state-dir needs a value");
  EXPECT_EQ(faultOf({"--state-dir="}), "--state-dir cannot be \"\"");
  EXPECT_EQ(faultOf({"--device", "square"}), "--device cannot be \"square\"");
}

TEST(OptionsTest, AreAllInTheHelp) {
  for (const char* option :
       {"--help", "--version", "--verbose", "--service", "--state-dir", "--defaults", "--device"}) {
    EXPECT_NE(helpText().find(std::string("  ") + option + " "), std::string::npos) << option;
  }
}

TEST(OptionsTest, KeepTheStateInTheFolderOfTheDesktop) {
  ::setenv("XDG_STATE_HOME", "/state", 1);
  ::setenv("HOME", "/home/someone", 1);
  EXPECT_EQ(usualStateFolder(), "/state/vorn-core-engine");
  ::setenv("XDG_STATE_HOME", "relative", 1);
  EXPECT_EQ(usualStateFolder(), "/home/someone/.local/state/vorn-core-engine");
  ::unsetenv("XDG_STATE_HOME");
  EXPECT_EQ(usualStateFolder(), "/home/someone/.local/state/vorn-core-engine");
  ::unsetenv("HOME");
  EXPECT_EQ(usualStateFolder(), "");
}

TEST(OptionsTest, FindTheDefaultsBesideTheProgramsFolder) {
  const auto program = std::filesystem::read_symlink("/proc/self/exe");
  EXPECT_EQ(usualDefaultsFile(),
            (program.parent_path().parent_path() / "share/skarn-configurator/Skarn.plist").string());
}

}  // namespace
}  // namespace vorn::engine::test
