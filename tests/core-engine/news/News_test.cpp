#include "core-engine/news/News.h"

#include <gtest/gtest.h>

#include "core-engine/TestParts.h"
#include "core-engine/requests/RequestDispatcher.h"

namespace vorn::engine::test {
namespace {

using namespace std::chrono_literals;
using Posts = std::vector<RecordingNewsPort::News>;

const std::string configurator = "org.vorn.SkarnConfigurator";

PropertyList dictionary(std::initializer_list<PropertyList::Pair> entries) {
  return PropertyList::dictionary(entries);
}

// The bundle with this entry in one of its profiles.
PropertyList changed(const PropertyList& bundle, std::int32_t profileID, std::string_view key, PropertyList value) {
  const PropertyList& profiles = bundle["Profiles"];
  return bundle.with("Profiles", profiles.replacing(profileID, profiles.at(profileID).with(key, std::move(value))));
}

class NewsTest : public testing::Test {
 protected:
  Posts postsOf(const PropertyList& before, const PropertyList& after) {
    port.posted.clear();
    news.settingsChanged(before, after, sourceApp);
    return port.posted;
  }

  const PropertyList two = bundleOf({profile("one"), profile("two")}, 1);
  std::string sourceApp;
  RecordingNewsPort port;
  ManualScheduler scheduler;
  News news{port, scheduler};
};

TEST_F(NewsTest, AreSilentWhereNothingChanged) {
  EXPECT_EQ(postsOf(two, two), Posts());
}

TEST_F(NewsTest, TellAnotherKeymapWithTheWholeBundle) {
  const PropertyList after = changed(two, 1, "KeymapID", 3);
  EXPECT_EQ(postsOf(two, after), (Posts{{"Keymap Updated 273", dictionary({{"Updated Keymap Profile", after}})}}));
}

TEST_F(NewsTest, TellAnotherKeymapOnceWhateverElseChangedWithIt) {
  const PropertyList after = changed(changed(two, 1, "KeymapID", 3), 1, "DPIX", 900);
  EXPECT_EQ(postsOf(two, after), (Posts{{"Keymap Updated 273", dictionary({{"Updated Keymap Profile", after}})}}));
}

TEST_F(NewsTest, TellEverySensitivitySettingOfTheActiveProfile) {
  const Posts usual{{"DPI Updated 273", dictionary({{"DPI Value", 800}, {"DPIY Value", 800}, {"IndependentXYOn", 0}})}};
  EXPECT_EQ(postsOf(two, changed(two, 1, "Stages", PropertyList::array({dictionary({{"dpix", 100}})}))), usual);
  EXPECT_EQ(postsOf(two, changed(two, 1, "StageValue", 2)), usual);
  EXPECT_EQ(
      postsOf(two, changed(changed(two, 1, "DPIX", 900), 1, "DPIY", 1000)),
      (Posts{{"DPI Updated 273", dictionary({{"DPI Value", 900}, {"DPIY Value", 1000}, {"IndependentXYOn", 0}})}}));
  EXPECT_EQ(
      postsOf(two, changed(two, 1, "IndependentXYOn", true)),
      (Posts{{"DPI Updated 273", dictionary({{"DPI Value", 800}, {"DPIY Value", 800}, {"IndependentXYOn", 1}})}}));
}

TEST_F(NewsTest, TellASensitivitySettingThatWentAway) {
  const PropertyList before = changed(two, 1, "StageValue", 2);
  EXPECT_EQ(
      postsOf(before, two),
      (Posts{{"DPI Updated 273", dictionary({{"DPI Value", 800}, {"DPIY Value", 800}, {"IndependentXYOn", 0}})}}));
}

TEST_F(NewsTest, TellEverythingElseAsAProfileUpdateWithTheNameOfTheActiveProfile) {
  const Posts update{{"Profile Updated 273", dictionary({{"Profile Name", "two"}})}};
  const PropertyList sensitivityAndMore = changed(changed(two, 1, "DPIX", 900), 1, "PollingRate", 500);
  EXPECT_EQ(postsOf(two, sensitivityAndMore), update);
  EXPECT_EQ(postsOf(two, changed(two, 0, "DPIX", 900)), update);
  EXPECT_EQ(postsOf(two, changed(two, 0, "KeymapID", 1)), update);
  EXPECT_EQ(postsOf(two, changed(two, 1, "Keys", factoryGroup(1).with("43", assignment(20, 0)))), update);
  EXPECT_EQ(postsOf(two, two.with("Macros", PropertyList::array({dictionary({{"MacroName", "M"}})}))), update);
  EXPECT_EQ(postsOf(two, two.with("DeviceSettings", two["DeviceSettings"].with("PowerSaver", 5))), update);
  EXPECT_EQ(postsOf(two, two.with("Profiles", two["Profiles"].appending(profile("three")))), update);
}

TEST_F(NewsTest, TellTheNewNameAndTheNewActiveProfile) {
  EXPECT_EQ(postsOf(two, changed(two, 1, "ProfileName", "deux")),
            (Posts{{"Profile Updated 273", dictionary({{"Profile Name", "deux"}})}}));
  const PropertyList otherKeymap = changed(two, 0, "KeymapID", 5);
  EXPECT_EQ(postsOf(otherKeymap, otherKeymap.with("DeviceSettings", dictionary({{"ActiveProfile", 0}}))),
            (Posts{{"Profile Updated 273", dictionary({{"Profile Name", "one"}})}}));
}

TEST_F(NewsTest, NameTheProgramThatCausedTheChange) {
  sourceApp = "org.example.Tool";
  const PropertyList keymap = changed(two, 1, "KeymapID", 3);
  EXPECT_EQ(postsOf(two, keymap), (Posts{{"Keymap Updated 273", dictionary({{"Updated Keymap Profile", keymap},
                                                                            {"Source App", "org.example.Tool"}})}}));
  EXPECT_EQ(postsOf(two, changed(two, 1, "DPIX", 900)),
            (Posts{{"DPI Updated 273", dictionary({{"DPI Value", 900},
                                                   {"DPIY Value", 800},
                                                   {"IndependentXYOn", 0},
                                                   {"Source App", "org.example.Tool"}})}}));
  EXPECT_EQ(
      postsOf(two, changed(two, 1, "PollingRate", 500)),
      (Posts{{"Profile Updated 273", dictionary({{"Profile Name", "two"}, {"Source App", "org.example.Tool"}})}}));
}

TEST_F(NewsTest, FollowAKeymapUpdateWithAnotherOneForAChangeThatTheConfiguratorMakesSoonAfterIt) {
  const PropertyList keymap = changed(two, 1, "KeymapID", 3);
  postsOf(two, keymap);
  sourceApp = configurator;
  scheduler.advance(999ms);
  const PropertyList after = changed(keymap, 1, "PollingRate", 500);
  const Posts followed{
      {"Profile Updated 273", dictionary({{"Profile Name", "two"}, {"Source App", configurator}})},
      {"Keymap Updated 273", dictionary({{"Updated Keymap Profile", after}, {"Source App", configurator}})}};
  EXPECT_EQ(postsOf(keymap, after), followed);
  scheduler.advance(1s);
  EXPECT_EQ(postsOf(keymap, after), Posts{followed[0]});
}

TEST_F(NewsTest, LeaveChangesOfOthersSoonAfterAKeymapUpdateToTheirOwnNews) {
  postsOf(two, changed(two, 1, "KeymapID", 3));
  EXPECT_EQ(postsOf(two, changed(two, 1, "PollingRate", 500)),
            (Posts{{"Profile Updated 273", dictionary({{"Profile Name", "two"}})}}));
}

std::string sourceOf(const PropertyList& body) {
  return sourceAppOf({":1.7", body});
}

TEST(NewsSourceAppTest, IsTheConfiguratorForItsReplyPortWhateverTheRequestSays) {
  const PropertyList body = dictionary({{"ResponseMsgPortName", "SkarnConfiguratorReplyPort"}});
  EXPECT_EQ(sourceOf(body), configurator);
  EXPECT_EQ(sourceOf(body.with("Source App", "org.example.Tool")), configurator);
}

TEST(NewsSourceAppTest, IsWhatOthersSayOfThemselves) {
  const PropertyList body = dictionary({{"ResponseMsgPortName", "VornCtlReplyPort12"}});
  EXPECT_EQ(sourceOf(body), "");
  EXPECT_EQ(sourceOf(body.with("Source App", "org.example.Tool")), "org.example.Tool");
  EXPECT_EQ(sourceOf(body.with("Source App", 5)), "");
  EXPECT_EQ(sourceOf(body.with("Source App", std::string(255, 'x'))), std::string(255, 'x'));
  EXPECT_EQ(sourceOf(body.with("Source App", std::string(256, 'x'))), "");
}

TEST(NewsSourceAppTest, IsNeverTheConfiguratorForOthers) {
  EXPECT_EQ(sourceOf(dictionary({{"ResponseMsgPortName", "Other"}, {"Source App", configurator}})), "");
}

}  // namespace
}  // namespace vorn::engine::test
