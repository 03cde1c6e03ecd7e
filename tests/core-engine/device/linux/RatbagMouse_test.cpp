#include "core-engine/device/linux/RatbagMouse.h"

#include <algorithm>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "SystemFixture.h"
#include "support/TemporaryFolder.h"

namespace vorn::engine {
namespace {

using News = RatbagMouse::News;
using Standing = RatbagMouse::Standing;
using Mode = RatbagLed::Mode;

const std::string resolution = "set /org/freedesktop/ratbag1/resolution/hidraw3/p1/r1 Resolution ";
const std::string rate = "set /org/freedesktop/ratbag1/profile/hidraw3/p1 ReportRate ";
const std::string firstLed = "set /org/freedesktop/ratbag1/led/hidraw3/p1/l0 ";
const std::string secondLed = "set /org/freedesktop/ratbag1/led/hidraw3/p1/l1 ";

// As the mouse of the double is at first.
RatbagState newMouse() {
  RatbagState state;
  state.name = "Acme Mouse";
  state.model = "usb:1234:abcd:0";
  state.resolutions = {200, 400, 800, 1200, 1600, 3200};
  state.hasSeparateAxes = true;
  state.resolution = {1600, 1200};
  state.reportRates = {125, 250, 500, 1000};
  state.reportRate = 1000;
  state.leds = {{{Mode::Off, Mode::On, Mode::Cycle, Mode::Breathing},
                 RatbagLed::ColorDepth::EightBits,
                 Mode::On,
                 {255, 0, 0},
                 255},
                {{Mode::Off, Mode::On}, RatbagLed::ColorDepth::OneBit, Mode::On, {0, 255, 0}, 255}};
  return state;
}

class RatbagMouseTest : public SystemFixture {
 protected:
  void startDaemon(const std::vector<std::string>& commands = {"ratbag add hidraw3 usb:1234:abcd:0", "ratbag start"}) {
    mDaemon = std::make_unique<vorn::test::FakeSystemProcess>(commands);
  }
  void follow(const RatbagIdentity& identity = {{"hidraw2", "hidraw3"}}) {
    mMouse.emplace(identity, [this](News news) { mNews.push_back(news); });
  }
  void followKnown() {
    startDaemon();
    follow();
    ASSERT_TRUE(hasTold(1));
    ASSERT_EQ(mNews, std::vector{News::Known});
  }
  bool hasTold(std::size_t count) {
    return becomesTrue([&] { return mNews.size() >= count; });
  }
  bool stands(Standing standing) {
    return becomesTrue([&] { return mMouse->standing() == standing; });
  }
  void obey(const std::string& command) { EXPECT_TRUE(mDaemon->obey(command)) << command; }

  std::unique_ptr<vorn::test::FakeSystemProcess> mDaemon;
  std::optional<RatbagMouse> mMouse;
  std::vector<News> mNews;
};

TEST_F(RatbagMouseTest, TellsWhatTheActiveProfileOfTheMouseOffers) {
  followKnown();
  ASSERT_NE(mMouse->state(), nullptr);
  EXPECT_EQ(*mMouse->state(), newMouse());
  EXPECT_EQ(mMouse->standing(), Standing::Known);
}

TEST_F(RatbagMouseTest, SetsWhatIsNearestAndCommitsIt) {
  followKnown();
  EXPECT_EQ(mMouse->resolution(), (RatbagResolution{1600, 1200}));
  EXPECT_EQ(mMouse->setResolution({900, 401}), (RatbagResolution{800, 400}));
  EXPECT_EQ(mMouse->resolution(), (RatbagResolution{800, 400}));
  EXPECT_EQ(callsToCommit(*mDaemon), (Calls{resolution + "800x400", "commit"}));
  EXPECT_EQ(mMouse->setReportRate(600), 500U);
  ASSERT_TRUE(becomesTrue([&] { return mMouse->state()->reportRate == 500; }));
  EXPECT_EQ(callsToCommit(*mDaemon), (Calls{rate + "500", "commit"}));
  RatbagState expected = newMouse();
  expected.resolution = {800, 400};
  expected.reportRate = 500;
  EXPECT_EQ(*mMouse->state(), expected);
  handleAll();
  EXPECT_EQ(mNews, std::vector{News::Known});
}

TEST_F(RatbagMouseTest, SetsOneResolutionForBothAxesWhereTheMouseHasOne) {
  startDaemon({"ratbag add-plain hidraw3 usb:1234:abcd:0", "ratbag start"});
  follow();
  ASSERT_TRUE(hasTold(1));
  EXPECT_EQ(mMouse->setResolution({410, 3200}), (RatbagResolution{400, 400}));
  EXPECT_EQ(callsToCommit(*mDaemon), (Calls{resolution + "400x400", "commit"}));
}

TEST_F(RatbagMouseTest, SetsTheLightOfEachLedAsFarAsItCan) {
  followKnown();
  EXPECT_TRUE(mMouse->setLight({true, true, 100, {{0, 0, 255}, {200, 0, 255}}}));
  EXPECT_EQ(callsToCommit(*mDaemon),
            (Calls{firstLed + "Mode 2", firstLed + "Brightness 100", secondLed + "Color 255,0,255", "commit"}));
  ASSERT_TRUE(becomesTrue([&] { return mMouse->state()->leds[1].color == RatbagColor{255, 0, 255}; }));
  handleAll();
  EXPECT_TRUE(mMouse->setLight({}));
  EXPECT_EQ(callsToCommit(*mDaemon), (Calls{firstLed + "Mode 0", secondLed + "Mode 0", "commit"}));
  handleAll();
  EXPECT_EQ(mNews, std::vector{News::Known});
}

TEST_F(RatbagMouseTest, SendsNothingThatTheMouseHasAlready) {
  followKnown();
  EXPECT_EQ(mMouse->setResolution({1600, 1200}), (RatbagResolution{1600, 1200}));
  EXPECT_EQ(mMouse->setReportRate(1000), 1000U);
  EXPECT_TRUE(mMouse->setLight({true, false, 255, {{255, 0, 0}, {0, 255, 0}}}));
  handleAll();
  EXPECT_EQ(mDaemon->nextCall(), std::nullopt);
}

TEST_F(RatbagMouseTest, SendsOnlyTheNewestOfWhatWaits) {
  followKnown();
  mDaemon->pause();
  for (const std::uint32_t dpi : {200U, 400U, 800U, 1200U, 3200U}) mMouse->setResolution({dpi, dpi});
  for (const std::uint32_t hertz : {125U, 250U, 500U}) mMouse->setReportRate(hertz);
  handleAll();
  mDaemon->resume();
  EXPECT_EQ(callsToCommit(*mDaemon), (Calls{resolution + "200x200", "commit"}));
  ASSERT_TRUE(becomesTrue([&] { return mMouse->state()->reportRate == 500; }));
  EXPECT_EQ(callsToCommit(*mDaemon), (Calls{resolution + "3200x3200", rate + "500", "commit"}));
  handleAll();
  EXPECT_EQ(mDaemon->nextCall(), std::nullopt);
  EXPECT_EQ(mMouse->state()->resolution, (RatbagResolution{3200, 3200}));
  EXPECT_EQ(mNews, std::vector{News::Known});
}

TEST_F(RatbagMouseTest, TellsWhatChangesElsewhereOnce) {
  followKnown();
  RatbagState expected = newMouse();
  obey("ratbag resolution hidraw3 400 400");
  ASSERT_TRUE(hasTold(2));
  expected.resolution = {400, 400};
  EXPECT_EQ(*mMouse->state(), expected);
  obey("ratbag resolution hidraw3 400 400");
  obey("ratbag rate hidraw3 125");
  ASSERT_TRUE(hasTold(3));
  expected.reportRate = 125;
  EXPECT_EQ(*mMouse->state(), expected);
  obey("ratbag color hidraw3 1 2 3");
  ASSERT_TRUE(hasTold(4));
  expected.leds[0].color = {1, 2, 3};
  EXPECT_EQ(*mMouse->state(), expected);
  obey("ratbag activate hidraw3 0");
  ASSERT_TRUE(hasTold(5));
  expected.resolution = {800, 800};
  EXPECT_EQ(*mMouse->state(), expected);
  mMouse->setResolution({1600, 200});
  EXPECT_EQ(callsToCommit(*mDaemon),
            (Calls{"set /org/freedesktop/ratbag1/resolution/hidraw3/p1/r0 Resolution 1600x200", "commit"}));
  handleAll();
  EXPECT_EQ(mNews, (std::vector{News::Known, News::Changed, News::Changed, News::Changed, News::Changed}));
}

TEST_F(RatbagMouseTest, TellsWhenTheMouseTakesAnotherValueThanItWasAskedFor) {
  followKnown();
  obey("ratbag clamp 800");
  EXPECT_EQ(mMouse->setResolution({3200, 400}), (RatbagResolution{3200, 400}));
  ASSERT_TRUE(hasTold(2));
  EXPECT_EQ(mNews, (std::vector{News::Known, News::Changed}));
  handleAll();
  EXPECT_EQ(mMouse->state()->resolution, (RatbagResolution{800, 400}));
}

TEST_F(RatbagMouseTest, TellsWhatWasRefusedAndGoesOn) {
  followKnown();
  obey("ratbag refuse Resolution");
  mMouse->setResolution({400, 400});
  ASSERT_TRUE(hasTold(2));
  handleAll();
  EXPECT_EQ(mMouse->state()->resolution, (RatbagResolution{1600, 1200}));
  EXPECT_EQ(callsToCommit(*mDaemon), Calls{"commit"});
  obey("ratbag refuse none");
  mMouse->setResolution({400, 400});
  ASSERT_TRUE(becomesTrue([&] { return mMouse->state()->resolution.x == 400; }));
  handleAll();
  EXPECT_EQ(mNews, (std::vector{News::Known, News::Refused}));
}

TEST_F(RatbagMouseTest, ReadsEverythingAgainWhenTheMouseFailsToKeepIt) {
  followKnown();
  obey("ratbag fail");
  mMouse->setResolution({400, 400});
  ASSERT_TRUE(hasTold(2));
  EXPECT_EQ(mNews, (std::vector{News::Known, News::Changed}));
  EXPECT_EQ(*mMouse->state(), newMouse());
}

TEST_F(RatbagMouseTest, FollowsTheDaemonAsItComesGoesAndDies) {
  follow();
  ASSERT_TRUE(stands(Standing::NotInstalled));
  startDaemon();
  ASSERT_TRUE(hasTold(1));
  obey("ratbag stop");
  ASSERT_TRUE(hasTold(2));
  EXPECT_EQ(mMouse->state(), nullptr);
  EXPECT_EQ(mMouse->standing(), Standing::NotRunning);
  EXPECT_EQ(mMouse->setResolution({800, 800}), std::nullopt);
  obey("ratbag start");
  ASSERT_TRUE(hasTold(3));
  mMouse->setResolution({800, 800});
  mDaemon->end();
  ASSERT_TRUE(hasTold(4));
  startDaemon();
  ASSERT_TRUE(hasTold(5));
  EXPECT_EQ(mNews, (std::vector{News::Known, News::Forgotten, News::Known, News::Forgotten, News::Known}));
  EXPECT_EQ(*mMouse->state(), newMouse());
}

TEST_F(RatbagMouseTest, FollowsTheMouseAsItIsPluggedAndUnplugged) {
  startDaemon({"ratbag start"});
  follow();
  ASSERT_TRUE(stands(Standing::NotListed));
  obey("ratbag add hidraw7 usb:1234:abcd:0");
  obey("ratbag add hidraw3 usb:1234:abcd:0");
  ASSERT_TRUE(hasTold(1));
  obey("ratbag remove hidraw3");
  ASSERT_TRUE(hasTold(2));
  EXPECT_EQ(mNews, (std::vector{News::Known, News::Forgotten}));
  EXPECT_EQ(mMouse->standing(), Standing::NotListed);
}

TEST_F(RatbagMouseTest, IsFoundByItsModelWhereItHasNoNodeAndNoOtherIsLikeIt) {
  startDaemon({"ratbag add hidraw1 usb:1234:abce:0", "ratbag add hidraw2 usb:1234:abcd:0", "ratbag start"});
  follow({{}, "usb:1234:abcd"});
  ASSERT_TRUE(hasTold(1));
  obey("ratbag add hidraw3 usb:1234:abcd:1");
  ASSERT_TRUE(hasTold(2));
  EXPECT_EQ(mNews, (std::vector{News::Known, News::Forgotten}));
}

TEST_F(RatbagMouseTest, WaitsForADaemonThatHangsWithoutHinderingAnything) {
  startDaemon();
  mDaemon->pause();
  follow();
  handleAll();
  EXPECT_EQ(mMouse->standing(), Standing::Asked);
  mDaemon->resume();
  ASSERT_TRUE(hasTold(1));
  EXPECT_EQ(*mMouse->state(), newMouse());
}

TEST_F(RatbagMouseTest, KnowsNoMouseFromADaemonThatTalksNonsense) {
  startDaemon();
  for (const char* kind : {"error", "empty", "text", "version"}) {
    obey(std::string("ratbag garbage ") + kind);
    follow();
    ASSERT_TRUE(stands(Standing::Incompatible)) << kind;
    EXPECT_EQ(mMouse->state(), nullptr);
  }
  obey("ratbag garbage types");
  follow();
  ASSERT_TRUE(stands(Standing::Known));
  EXPECT_EQ(mMouse->setResolution({800, 800}), std::nullopt);
  EXPECT_EQ(mMouse->setReportRate(500), std::nullopt);
  mMouse->setLight({true, false, 255, {}});
  handleAll();
  obey("ratbag garbage off");
  obey("ratbag garble");
  obey("ratbag add hidraw4 usb:1234:abcd:0");
  ASSERT_TRUE(becomesTrue([&] { return *mMouse->state() == newMouse(); }));
}

TEST_F(RatbagMouseTest, HasTheDaemonStartedByTheBus) {
  const test::TemporaryFolder folder;
  const std::string mark = folder.path("started");
  mBus.installService("org.freedesktop.ratbag1", "/bin/touch " + mark);
  follow();
  EXPECT_TRUE(becomesTrue([&] { return std::filesystem::exists(mark); }));
  EXPECT_EQ(mMouse->standing(), Standing::Asked);
}

TEST_F(RatbagMouseTest, IsForgottenWithTheBusAndFoundAgainOnTheNext) {
  followKnown();
  mMouse->setResolution({800, 800});
  mBus.end();
  ASSERT_TRUE(hasTold(2));
  EXPECT_EQ(mNews, (std::vector{News::Known, News::Forgotten}));
  follow();
  EXPECT_EQ(mMouse->standing(), Standing::NoBus);
  EXPECT_EQ(mMouse->setReportRate(500), std::nullopt);
  const vorn::test::PrivateBus next(vorn::test::PrivateBus::systemAddress);
  startDaemon();
  follow();
  ASSERT_TRUE(hasTold(3));
  EXPECT_EQ(*mMouse->state(), newMouse());
}

TEST_F(RatbagMouseTest, MayEndInItsHandlerAndWhileSomethingIsUnderWay) {
  startDaemon();
  mMouse.emplace(RatbagIdentity{{"hidraw3"}}, [&](News) { mMouse.reset(); });
  ASSERT_TRUE(becomesTrue([&] { return !mMouse; }));
  follow();
  ASSERT_TRUE(hasTold(1));
  mMouse->setResolution({800, 800});
  mMouse.reset();
  handleAll();
  EXPECT_EQ(mNews, std::vector{News::Known});
}

}  // namespace
}  // namespace vorn::engine
