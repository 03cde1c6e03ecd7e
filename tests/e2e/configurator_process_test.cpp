// The configurator as a process of its own: with the real engine, and with engines that misbehave.
#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <thread>

#include "e2e/ConfiguratorProcess.h"
#include "ports/MessagePort.h"
#include "protocol/EngineProtocol.h"
#include "support/FakeEngineProcess.h"
#include "support/PrivateBus.h"

namespace vorn::test {
namespace {

using namespace std::chrono_literals;

struct TemporaryFolder {
  TemporaryFolder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "skarn-e2e-XXXXXX").string();
    path = mkdtemp(pattern.data());
  }
  ~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path, ignored);
  }
  std::string path;
};

class ConfiguratorProcessTest : public testing::Test {
 protected:
  // Registered at once, with settings that have one profile and do not change.
  std::vector<std::string> friendly() const {
    return {"on 0 reply " + mTrue.path(), "on 4 reply " + mSettings.path(), takesChanges()};
  }
  // Answers what the first redraw of the Lighting tab sends back.
  std::string takesChanges() const { return "on 6 reply " + mChanged.path(); }

  // The configurator says nothing while it looks for the engine, but its reply port is there.
  static bool waitForReplyPort() {
    const auto deadline = std::chrono::steady_clock::now() + ChildProcess::defaultDeadline;
    while (!RemoteMessagePort::lookUp(configuratorReplyPortName)) {
      if (std::chrono::steady_clock::now() > deadline) return false;
      std::this_thread::yield();
    }
    return true;
  }

  PropertyListFile mTrue{PropertyList::dictionary({{"ReturnStatus", true}})};
  PropertyListFile mRefused{PropertyList::dictionary({{"ReturnStatus", false}})};
  const PropertyList mBundle = PropertyList::dictionary(
      {{"Profiles", PropertyList::array({PropertyList::dictionary({{"ProfileName", "Work"}, {"LEDEffects", 4}})})},
       {"Macros", PropertyList::array()},
       {"DeviceSettings", PropertyList::dictionary({{"ActiveProfile", 0}})}});
  PropertyListFile mSettings{PropertyList::dictionary({{"AllDevSettings", mBundle}})};
  PropertyListFile mChanged{PropertyList::dictionary({{"ReturnStatus", 0}, {"ReturnDictionary", mBundle}})};
  PrivateBus mBus;
};

TEST_F(ConfiguratorProcessTest, ShowsTheSettingsOfTheRealEngineAndLeavesItRunning) {
  const TemporaryFolder folder;
  EngineProcess engine(folder.path);
  ConfiguratorProcess configurator;
  EXPECT_NE(configurator.waitFor("engine found"), "");
  EXPECT_NE(configurator.waitFor("registered"), "");
  EXPECT_NE(configurator.waitFor("settings loaded: 1 profiles, 0 macros"), "");
  EXPECT_NE(configurator.waitFor("window painted"), "");
  EXPECT_EQ(configurator.quit(), 0);
  EXPECT_TRUE(engine.process().isRunning());
}

TEST_F(ConfiguratorProcessTest, ShowsTheConnectionSheetWhenTheEngineHasNoMouse) {
  const TemporaryFolder folder;
  EngineProcess engine(folder.path, {"--device", "absent"});
  ConfiguratorProcess configurator;
  EXPECT_NE(configurator.waitFor("no mouse is connected"), "");
  EXPECT_EQ(configurator.quit(), 0);
}

TEST_F(ConfiguratorProcessTest, SendsRegistrationSettingsLightAndReleaseAsWholeRequests) {
  FakeEngineProcess engine(friendly());
  ConfiguratorProcess configurator;
  ASSERT_NE(configurator.waitFor("settings loaded: 1 profiles"), "");
  EXPECT_EQ(configurator.quit(), 0);
  const auto registration = engine.waitForRequest(0);
  ASSERT_TRUE(registration);
  EXPECT_EQ(registration->body.without("DefaultVrPlistPath"),
            PropertyList::dictionary({{"ProductName", "Skarn"},
                                      {"ProductID", 273},
                                      {"ResponseMsgPortName", "SkarnConfiguratorReplyPort"},
                                      {"IsDeviceWired", 1}}));
  const std::string defaults = registration->body["DefaultVrPlistPath"].toString();
  EXPECT_TRUE(std::filesystem::path(defaults).is_absolute()) << defaults;
  EXPECT_TRUE(std::filesystem::is_regular_file(defaults)) << defaults;
  const auto settings = engine.waitForRequest(4);
  ASSERT_TRUE(settings);
  EXPECT_EQ(settings->body,
            PropertyList::dictionary({{"ProductID", 273}, {"ResponseMsgPortName", "SkarnConfiguratorReplyPort"}}));
  const PropertyList change = settings->body.with("ProfileID", 0);
  const auto effect = engine.waitForRequest(6);
  ASSERT_TRUE(effect);
  EXPECT_EQ(effect->body, change.with("DeviceSettingsDictionary", PropertyList::dictionary({{"LEDEffects", 4}})));
  const auto brightness = engine.waitForRequest(6);
  ASSERT_TRUE(brightness);
  EXPECT_EQ(brightness->body,
            change.with("DeviceSettingsDictionary", PropertyList::dictionary({{"BrightnessNormal", 1}})));
  const auto release = engine.waitForRequest(38);
  ASSERT_TRUE(release);
  EXPECT_EQ(release->body, PropertyList::dictionary({{"ProductID", 273}}));
}

TEST_F(ConfiguratorProcessTest, EndsAtOnceWhileAFrozenEngineTakesNeitherItsReleaseNorItsQueries) {
  auto commands = friendly();
  commands.push_back("on * freeze");
  FakeEngineProcess engine(commands);
  ConfiguratorProcess configurator;
  ASSERT_NE(configurator.waitFor("request 14"), "");
  configurator.process().signal(SIGTERM);
  EXPECT_EQ(configurator.process().waitForEnd(1500ms), 0);
}

TEST_F(ConfiguratorProcessTest, EndsInTheMiddleOfAWaitAndAsksForNothingMore) {
  FakeEngineProcess engine({"on 0 freeze"});
  ConfiguratorProcess configurator;
  ASSERT_TRUE(engine.waitForRequest(0));
  configurator.process().signal(SIGTERM);
  // It reports that as an engine that did not answer, but the documented wait has not passed.
  const std::string line = configurator.waitFor("not registered: no answer after ");
  EXPECT_EQ(configurator.process().waitForEnd(), 0);
  const std::size_t figure = line.find("after ") + 6;
  EXPECT_LT(std::stoi(line.substr(figure)), 6000) << line;
}

TEST_F(ConfiguratorProcessTest, SurvivesAnEngineThatDiesAndComesBackWhileTheWindowIsOpen) {
  ConfiguratorProcess configurator;
  {
    FakeEngineProcess engine(friendly());
    ASSERT_NE(configurator.waitFor("settings loaded"), "");
    engine.process().signal(SIGKILL);
    EXPECT_TRUE(engine.process().waitForEnd());
  }
  FakeEngineProcess again(friendly());
  ASSERT_TRUE(again.obey("post \"Device Attached 273\""));
  EXPECT_TRUE(again.waitForRequest(4));
  EXPECT_EQ(configurator.quit(), 0);
}

TEST_F(ConfiguratorProcessTest, ShowsEmptyValuesWhenItsDefaultSettingsAreMissing) {
  const TemporaryFolder folder;
  FakeEngineProcess engine({"on 0 reply " + mRefused.path(), takesChanges()});
  setenv("SKARN_SHARE_DIR", folder.path.c_str(), 1);
  ConfiguratorProcess configurator;
  unsetenv("SKARN_SHARE_DIR");
  EXPECT_NE(configurator.waitFor("default settings not read"), "");
  EXPECT_NE(configurator.waitFor("window painted"), "");
  EXPECT_EQ(configurator.quit(), 0);
}

TEST_F(ConfiguratorProcessTest, TakesGarbageForARefusedRegistration) {
  FakeEngineProcess engine({"on 0 data 00ff6270", takesChanges()});
  ConfiguratorProcess configurator;
  EXPECT_NE(configurator.waitFor("no mouse is connected"), "");
  EXPECT_EQ(configurator.quit(), 0);
}

TEST_F(ConfiguratorProcessTest, SurvivesGarbageInPlaceOfTheSettingsAndOfChangedOnes) {
  FakeEngineProcess engine({"on 0 reply " + mTrue.path(), "on 4 data 62706c6973743030ff", "on 6 data 00"});
  ConfiguratorProcess configurator;
  EXPECT_NE(configurator.waitFor("settings loaded: 0 profiles, 0 macros"), "");
  EXPECT_EQ(configurator.quit(), 0);
}

TEST_F(ConfiguratorProcessTest, TakesASlowAnswerThatComesWithinTheWait) {
  FakeEngineProcess engine({"on 0 after 300 reply " + mTrue.path(), "on 4 after 300 reply " + mSettings.path(),
                            "on 6 after 300 reply " + mChanged.path()});
  ConfiguratorProcess configurator;
  EXPECT_NE(configurator.waitFor("settings loaded: 1 profiles"), "");
  EXPECT_EQ(configurator.quit(), 0);
}

TEST_F(ConfiguratorProcessTest, LooksForTheEngineUntilItComesAfterALaunchInTheBackground) {
  ConfiguratorProcess configurator({"--verbose", "--launch-in-background"});
  ASSERT_TRUE(waitForReplyPort());
  FakeEngineProcess engine(friendly());
  EXPECT_NE(configurator.waitFor("settings loaded: 1 profiles"), "");
  EXPECT_EQ(configurator.quit(), 0);
}

TEST_F(ConfiguratorProcessTest, EndsWhileItLooksForTheEngineInTheBackground) {
  ConfiguratorProcess configurator({"--launch-in-background"});
  ASSERT_TRUE(waitForReplyPort());
  EXPECT_EQ(configurator.quit(), 0);
}

TEST_F(ConfiguratorProcessTest, ASecondOneBringsTheFirstToTheFrontAndEnds) {
  FakeEngineProcess engine(friendly());
  ConfiguratorProcess first;
  ASSERT_NE(first.waitFor("settings loaded"), "");
  ConfiguratorProcess second;
  EXPECT_NE(second.waitFor("already running; its window comes to the front"), "");
  EXPECT_EQ(second.process().waitForEnd(), 0);
  EXPECT_NE(first.waitFor("another start brings the window to the front"), "");
  EXPECT_TRUE(first.process().isRunning());
  ASSERT_TRUE(engine.waitForRequest(0));
  for (const auto& request : engine.takeRequests()) EXPECT_NE(request.messageID, 0);
  EXPECT_EQ(first.quit(), 0);
}

TEST_F(ConfiguratorProcessTest, FollowsAnAttachmentThatTheEnginePosts) {
  FakeEngineProcess engine({"on 0 reply " + mRefused.path(), "on 4 reply " + mSettings.path(), takesChanges()});
  ConfiguratorProcess configurator;
  ASSERT_NE(configurator.waitFor("window painted"), "");
  ASSERT_TRUE(engine.obey("post \"Device Attached 273\""));
  EXPECT_TRUE(engine.waitForRequest(4));
  const auto firmware = engine.waitForRequest(14);
  ASSERT_TRUE(firmware);
  EXPECT_EQ(firmware->body,
            PropertyList::dictionary({{"ProductID", 273}, {"ResponseMsgPortName", "SkarnConfiguratorReplyPort"}}));
  EXPECT_EQ(configurator.quit(), 0);
}

TEST_F(ConfiguratorProcessTest, SavesAPictureOfItsWindowAndEnds) {
  const TemporaryFolder folder;
  FakeEngineProcess engine(friendly());
  ConfiguratorProcess configurator({"--picture", folder.path + "/window.png"});
  EXPECT_NE(configurator.waitFor("picture saved"), "");
  EXPECT_EQ(configurator.process().waitForEnd(), 0);
  EXPECT_TRUE(std::filesystem::exists(folder.path + "/window.png"));
}

TEST_F(ConfiguratorProcessTest, SaysWhatIsWrongWithItsArgumentsAndEndsWithTwo) {
  ConfiguratorProcess configurator({"--nonsense"});
  EXPECT_NE(configurator.waitFor("unknown argument --nonsense"), "");
  EXPECT_EQ(configurator.process().waitForEnd(), 2);
}

TEST(ConfiguratorWithoutADisplay, SaysSoAndEnds) {
  ChildProcess configurator({"env", "-u", "DISPLAY", "-u", "WAYLAND_DISPLAY", "-u", "QT_QPA_PLATFORM", "sh", "-c",
                             "exec \"$0\" 2>&1", CONFIGURATOR_PROGRAM});
  EXPECT_TRUE(
      configurator.waitForLine([](const std::string& line) { return line.find("no display") != std::string::npos; }));
  EXPECT_EQ(configurator.waitForEnd(), 1);
}

// A configurator on a bus of its own.
struct LonelyConfigurator {
  PrivateBus bus;
  ConfiguratorProcess process;
};

// The same where the bus starts a program that never becomes an engine.
struct BusWithEndlessStart : PrivateBus {
  BusWithEndlessStart() { installService(engineServiceName, "/bin/true"); }
};
struct ConfiguratorWithEndlessStart {
  BusWithEndlessStart bus;
  ConfiguratorProcess process;
};

// The same with an engine that obeys the commands.
struct ConfiguratorWithFakeEngine {
  explicit ConfiguratorWithFakeEngine(const std::vector<std::string>& commands) : engine(commands) {}

  PrivateBus bus;
  FakeEngineProcess engine;
  ConfiguratorProcess process;
};

std::unique_ptr<ConfiguratorProcess> startWithoutABus() {
  const char* variable = "DBUS_SESSION_BUS_ADDRESS";
  const std::string address = getenv(variable);
  setenv(variable, "unix:path=/nonexistent/skarn-bus", 1);
  auto configurator = std::make_unique<ConfiguratorProcess>();
  setenv(variable, address.c_str(), 1);
  return configurator;
}

// Each takes the whole wait for its registration, which lasts long. So they wait side by side.
TEST(ConfiguratorsWithoutAnAnswer, WaitTheirWholeTimesStayUsableAndEndWhenTheyAreAskedTo) {
  ConfiguratorWithFakeEngine unanswered({});
  ConfiguratorWithFakeEngine frozen({"on 0 freeze"});
  ConfiguratorWithFakeEngine bereft({"on 0 exit"});
  ConfiguratorWithEndlessStart hopeful;
  const auto withoutABus = startWithoutABus();
  LonelyConfigurator alone;
  const std::vector<std::pair<std::string, ConfiguratorProcess*>> unheard = {
      {"an engine that never answers", &unanswered.process},
      {"an engine that freezes while it takes the registration", &frozen.process},
      {"an engine that dies at the registration", &bereft.process},
      {"no bus", withoutABus.get()},
      {"an engine that does not come after all", &hopeful.process}};
  for (const auto& [situation, configurator] : unheard) {
    SCOPED_TRACE(situation);
    EXPECT_NE(configurator->waitFor("not registered: no answer after"), "");
    configurator->process().signal(SIGTERM);
  }
  EXPECT_NE(alone.process.waitFor("no engine"), "");
  EXPECT_NE(alone.process.waitFor("not registered: no answer after"), "");
  EXPECT_NE(alone.process.waitFor("window painted"), "");
  // It comes to life with the engine, which is on the bus of the last one.
  const TemporaryFolder folder;
  const EngineProcess engine(folder.path);
  EXPECT_NE(alone.process.waitFor("request 4: "), "");
  EXPECT_NE(alone.process.waitFor("answer 4: "), "");
  EXPECT_NE(alone.process.waitFor("request 14: "), "");
  EXPECT_EQ(alone.process.quit(), 0);
  for (const auto& [situation, configurator] : unheard) {
    SCOPED_TRACE(situation);
    EXPECT_EQ(configurator->process().waitForEnd(), 0);
  }
}

}  // namespace
}  // namespace vorn::test
