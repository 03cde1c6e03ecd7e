// The real configurator and the real engine as processes of their own, seen by what they say to each other.
#include <gtest/gtest.h>

#include <csignal>
#include <memory>

#include "e2e/ConfiguratorProcess.h"
#include "e2e/VirtualMouse.h"
#include "link/PortEngineLink.h"
#include "support/PrivateBus.h"
#include "support/TemporaryFolder.h"

namespace vorn::test {
namespace {

class ConfiguratorWithEngineTest : public testing::Test {
 protected:
  void startEngine(const std::vector<std::string>& options = {}) {
    mEngine = std::make_unique<EngineProcess>(mFolder.path("state"), options);
  }
  // Starts the configurator and waits until it has taken the announcement of the mouse.
  std::unique_ptr<ConfiguratorProcess> startConfigurator() {
    auto configurator = std::make_unique<ConfiguratorProcess>();
    EXPECT_NE(configurator->waitFor("settings loaded"), "");
    EXPECT_NE(configurator->waitFor("request 14: "), "");
    return configurator;
  }
  // A request of another program to the engine, answered.
  PropertyList ask(MessageID messageID, const PropertyList& keys) {
    if (!mOther.createLocalPort()) return {};
    mOther.emptySlot();
    mOther.send(keys.with(requestKeys::ProductID, wiredProductID)
                    .with(requestKeys::ResponseMsgPortName, "OtherClientReplyPort"),
                messageID);
    return mOther.waitForReply() ? mOther.reply() : PropertyList();
  }

  PrivateBus mBus;
  engine::test::TemporaryFolder mFolder;
  std::unique_ptr<EngineProcess> mEngine;
  PortEngineLink mOther{"OtherClientReplyPort"};
};

TEST_F(ConfiguratorWithEngineTest, FollowsTheMouseThatComesGoesAndComesAgainWithoutItsCable) {
  startEngine({"--device", "absent"});
  ConfiguratorProcess configurator;
  ASSERT_NE(configurator.waitFor("no mouse is connected"), "");
  ASSERT_NE(configurator.waitFor("window painted"), "");
  ASSERT_TRUE(VirtualMouse::plug("wired"));
  EXPECT_NE(configurator.waitFor("request 4: {\"ProductID\": 273"), "");
  EXPECT_NE(configurator.waitFor("request 14: {\"ProductID\": 273"), "");
  ASSERT_TRUE(VirtualMouse::unplug());
  ASSERT_TRUE(VirtualMouse::plug("wireless"));
  EXPECT_NE(configurator.waitFor("request 4: {\"ProductID\": 0"), "");
  EXPECT_NE(configurator.waitFor("request 14: {\"ProductID\": 0"), "");
  // The battery picture of a mouse on its battery needs the level.
  EXPECT_NE(configurator.waitFor("request 15: {\"ProductID\": 0"), "");
  EXPECT_EQ(configurator.quit(), 0);
}

TEST_F(ConfiguratorWithEngineTest, TakesAProfileThatAnotherProgramSwitchesTo) {
  startEngine();
  const auto configurator = startConfigurator();
  const PropertyList bundle = ask(MessageID::GetAllSettings, PropertyList::dictionary())[replyKeys::AllDevSettings];
  ask(MessageID::AddProfile,
      PropertyList::dictionary({{requestKeys::DeviceSettingsDictionary, bundle["Profiles"].at(0)}}));
  const PropertyList answer = ask(MessageID::SwitchProfile, PropertyList::dictionary({{requestKeys::ProfileID, 1}}));
  EXPECT_EQ(answer[replyKeys::ReturnDictionary]["DeviceSettings"]["ActiveProfile"], PropertyList(1));
  EXPECT_NE(configurator->waitFor("answer 4: {\"AllDevSettings\": {\"DeviceSettings\": {\"ActiveProfile\": 1"), "");
  EXPECT_EQ(configurator->quit(), 0);
}

TEST_F(ConfiguratorWithEngineTest, GoesOnWithAnEngineThatWasKilledAndStartedAgain) {
  startEngine();
  const auto configurator = startConfigurator();
  mEngine->process().signal(SIGKILL);
  mEngine->process().waitForEnd();
  startEngine({"--device", "wireless"});
  EXPECT_NE(configurator->waitFor("request 4: {\"ProductID\": 0"), "");
  EXPECT_NE(configurator->waitFor("request 15: {\"ProductID\": 0"), "");
  EXPECT_EQ(configurator->quit(), 0);
}

// The engine comes after the registration was sent in vain, and tells of the mouse before the window listens.
TEST_F(ConfiguratorWithEngineTest, FindsAnEngineThatStartsDuringItsWaitAndLeavesTheUsersLightAlone) {
  startEngine();
  ask(MessageID::UpdateProfile,
      PropertyList::dictionary(
          {{requestKeys::ProfileID, 0},
           {requestKeys::DeviceSettingsDictionary,
            PropertyList::dictionary({{"LEDEffects", 4}, {"BrightnessKBNormal", 2}, {"BrightnessNormal", 2}})}}));
  mEngine->process().signal(SIGTERM);
  mEngine->process().waitForEnd();
  ConfiguratorProcess configurator;
  ASSERT_NE(configurator.waitFor("no engine"), "");
  startEngine();
  ASSERT_NE(configurator.waitFor("not registered: no answer after"), "");
  EXPECT_NE(configurator.waitFor("answer 4: "), "");
  EXPECT_NE(configurator.waitFor("request 14: "), "");
  const PropertyList profile =
      ask(MessageID::GetAllSettings, PropertyList::dictionary())[replyKeys::AllDevSettings]["Profiles"].at(0);
  EXPECT_EQ(profile["LEDEffects"], PropertyList(4));
  EXPECT_EQ(profile["BrightnessKBNormal"], PropertyList(2));
  EXPECT_EQ(profile["BrightnessNormal"], PropertyList(2));
  EXPECT_EQ(configurator.quit(), 0);
}

}  // namespace
}  // namespace vorn::test
