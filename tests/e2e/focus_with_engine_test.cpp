// Profiles that follow what a program tells on the bus, with the real engine and without a display.
#include <gtest/gtest.h>

#include <cstdlib>
#include <optional>
#include <string>

#include "e2e/FollowedEngine.h"

namespace vorn::test {
namespace {

using namespace std::chrono_literals;

// A program that tells which application is in front, with a connection of its own.
class Teller {
 public:
  void tell(const std::string& identifier) {
    mLoop.run([&] {
      const BusAnswer answer = FollowedEngine::call(focus::methods::SetApplicationInFront,
                                                    {{"s", identifier}, {"s", ""}, {"s", identifier}});
      EXPECT_EQ(answer.status, BusAnswer::Status::Success) << answer.error;
    });
  }
  // Returns when the bus has them all.
  void tellMany(int count) {
    mLoop.run([&] {
      for (int each = 0; each < count; ++each) {
        postBusMethod({focus::busName, focus::objectPath, focus::interface}, focus::methods::SetApplicationInFront,
                      {{"s", each % 2 == 0 ? "chess" : "paint"}, {"s", ""}, {"s", ""}});
      }
      callBusMethod({"org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus"}, "GetId", {}, 20s);
    });
  }

 private:
  LoopThread mLoop;
};

class FocusWithEngineTest : public testing::Test {
 protected:
  FocusWithEngineTest() {
    for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY"}) unsetenv(name);
    setenv("DISPLAY", ":no", 1);
    setenv("XDG_RUNTIME_DIR", folder.path().c_str(), 1);
  }

  engine::test::TemporaryFolder folder;
  PrivateBus bus;
};

TEST_F(FocusWithEngineTest, TakesTheProfileOfTheApplicationAndGoesBack) {
  FollowedEngine engine;
  ASSERT_TRUE(engine.start());
  {
    Teller teller;
    teller.tell("chess.desktop");
    EXPECT_EQ(engine.profileWhen("Game"), "Game");
    teller.tell("paint");
    EXPECT_EQ(engine.profileWhen("Draw"), "Draw");
    EXPECT_EQ(engine.state(), PropertyList::dictionary({{"Source", "bus"},
                                                        {"IsUsed", true},
                                                        {"Identifier", "paint"},
                                                        {"Executable", ""},
                                                        {"Name", "paint"},
                                                        {"Profile", "Draw"},
                                                        {"Needs", ""}}));
    teller.tell("");
    EXPECT_EQ(engine.profileWhen("Home"), "Home");
    teller.tell("chess");
    EXPECT_EQ(engine.profileWhen("Game"), "Game");
  }
  // Who has told it is gone, and nobody else does.
  EXPECT_EQ(engine.profileWhen("Home"), "Home");
  EXPECT_EQ(engine.state()["Needs"].string(), "display");
  EXPECT_EQ(engine.history(), PropertyList::array());
  ASSERT_EQ(engine.news().size(), 5U);
  for (const PropertyList& news : engine.news()) EXPECT_FALSE(news.contains(newsKeys::SourceApp)) << news.description();
}

TEST_F(FocusWithEngineTest, LeavesAPersonsChoiceUntilTheApplicationChanges) {
  FollowedEngine engine;
  ASSERT_TRUE(engine.start());
  Teller teller;
  teller.tell("chess");
  ASSERT_EQ(engine.profileWhen("Game"), "Game");
  engine.choose(2);
  teller.tell("chess");
  EXPECT_EQ(engine.profile(), "Draw");
  teller.tell("mail");
  EXPECT_EQ(engine.profileWhen("Home"), "Home");
  // Nothing came between.
  EXPECT_EQ(engine.news().size(), 3U);
}

TEST_F(FocusWithEngineTest, MergesHundredsOfChangesThatComeAtOnce) {
  FollowedEngine engine;
  ASSERT_TRUE(engine.start());
  Teller teller;
  engine.process().signal(SIGSTOP);
  teller.tellMany(300);
  engine.process().signal(SIGCONT);
  EXPECT_EQ(engine.profileWhen("Draw"), "Draw");
  // One, and few more where the machine stands still in between.
  EXPECT_LE(engine.news().size(), 3U);
}

TEST_F(FocusWithEngineTest, GoesBackAfterItWasKilledInTheProfileOfAnApplication) {
  FollowedEngine engine;
  ASSERT_TRUE(engine.start());
  Teller teller;
  teller.tell("chess");
  ASSERT_EQ(engine.profileWhen("Game"), "Game");
  engine.kill();
  ASSERT_TRUE(engine.start());
  EXPECT_EQ(engine.profileWhen("Home"), "Home");
}

TEST_F(FocusWithEngineTest, HasNothingOpenWhileNoProfileFollows) {
  FollowedEngine engine(false);
  ASSERT_TRUE(engine.start());
  const std::size_t open = engine.openThings();
  Teller teller;
  teller.tell("chess");
  EXPECT_FALSE(engine.state()["IsUsed"].toBool());
  EXPECT_EQ(engine.state()["Identifier"].string(), "chess");
  EXPECT_TRUE(engine.hasOpenWhen(open));
  engine.update(1, PropertyList::dictionary({{keys::AutoSwitchOn, 1}}));
  EXPECT_EQ(engine.profileWhen("Game"), "Game");
  engine.update(1, PropertyList::dictionary({{keys::AutoSwitchOn, 0}}));
  EXPECT_EQ(engine.profileWhen("Home"), "Home");
  EXPECT_TRUE(engine.hasOpenWhen(open));
}

}  // namespace
}  // namespace vorn::test
