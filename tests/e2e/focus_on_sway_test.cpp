// Profiles that follow the window in front of a real Wayland compositor.
#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "e2e/FollowedEngine.h"
#include "support/Sway.h"

namespace vorn::test {
namespace {

class FocusOnSwayTest : public testing::Test {
 protected:
  FocusOnSwayTest() {
    unsetenv("DISPLAY");
    unsetenv("WAYLAND_DISPLAY");
    setenv("XDG_RUNTIME_DIR", folder.path().c_str(), 1);
  }

  // As a session does, before the engine starts.
  bool startCompositor() {
    sway = Sway::start(folder.path());
    if (sway) setenv("WAYLAND_DISPLAY", sway->socket().c_str(), 1);
    return sway != nullptr;
  }
  std::unique_ptr<ChildProcess> open(const std::string& name) const {
    return std::make_unique<ChildProcess>(std::vector<std::string>{"env", "LC_ALL=C.UTF-8",
                                                                   "WAYLAND_DISPLAY=" + sway->socket(), "foot",
                                                                   "--log-level=none", "--app-id=" + name, "cat"});
  }
  static bool isTold(FollowedEngine& engine) {
    return FollowedEngine::comesTrue([&] { return engine.state()["Source"].string() == "wlroots"; });
  }

  engine::test::TemporaryFolder folder;
  PrivateBus bus;
  std::unique_ptr<Sway> sway;
};

TEST_F(FocusOnSwayTest, TakesTheProfileOfTheWindowInFrontAndGoesBack) {
  ASSERT_TRUE(startCompositor());
  FollowedEngine engine;
  ASSERT_TRUE(engine.start());
  ASSERT_TRUE(isTold(engine));
  const auto chess = open("chess");
  EXPECT_EQ(engine.profileWhen("Game"), "Game");
  const auto paint = open("paint");
  EXPECT_EQ(engine.profileWhen("Draw"), "Draw");
  EXPECT_EQ(engine.state()["Identifier"].string(), "paint");
  EXPECT_TRUE(sway->obeys("[app_id=chess] focus"));
  EXPECT_EQ(engine.profileWhen("Game"), "Game");
  // The bare desktop.
  EXPECT_TRUE(sway->obeys("workspace 2"));
  EXPECT_EQ(engine.profileWhen("Home"), "Home");
  EXPECT_EQ(engine.history(), PropertyList::array());
}

TEST_F(FocusOnSwayTest, WaitsForACompositorThatComesLater) {
  FollowedEngine engine;
  ASSERT_TRUE(engine.start());
  EXPECT_TRUE(engine.comesTrue([&] { return engine.state()["Needs"].string() == "display"; }));
  ASSERT_TRUE(startCompositor());
  ASSERT_TRUE(isTold(engine));
  const auto chess = open("chess");
  EXPECT_EQ(engine.profileWhen("Game"), "Game");
}

TEST_F(FocusOnSwayTest, GoesBackWhenTheCompositorDiesAndFollowsItsSuccessor) {
  ASSERT_TRUE(startCompositor());
  FollowedEngine engine;
  ASSERT_TRUE(engine.start());
  ASSERT_TRUE(isTold(engine));
  auto chess = open("chess");
  EXPECT_EQ(engine.profileWhen("Game"), "Game");
  sway->kill();
  EXPECT_EQ(engine.profileWhen("Home"), "Home");
  ASSERT_TRUE(startCompositor());
  ASSERT_TRUE(isTold(engine));
  const auto paint = open("paint");
  EXPECT_EQ(engine.profileWhen("Draw"), "Draw");
}

TEST_F(FocusOnSwayTest, ServesItsClientsWhileTheCompositorHangs) {
  ASSERT_TRUE(startCompositor());
  sway->pause();
  FollowedEngine engine;
  ASSERT_TRUE(engine.start());
  engine.choose(2);
  EXPECT_EQ(engine.profile(), "Draw");
  sway->resume();
  ASSERT_TRUE(isTold(engine));
  const auto chess = open("chess");
  EXPECT_EQ(engine.profileWhen("Game"), "Game");
  sway->pause();
  engine.choose(2);
  EXPECT_EQ(engine.profile(), "Draw");
  engine.process().signal(SIGTERM);
  EXPECT_EQ(engine.process().waitForEnd(), 0);
  sway->resume();
}

}  // namespace
}  // namespace vorn::test
