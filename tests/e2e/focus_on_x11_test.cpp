// Profiles that follow the window in front of a real X server with a window manager, and what becomes of that when one
// of them comes late, hangs or goes.
#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "e2e/FollowedEngine.h"
#include "support/X11Server.h"

namespace vorn::test {
namespace {

// A running application.
class ShownWindow {
 public:
  explicit ShownWindow(const std::string& name) : mProcess({WINDOW_PROGRAM, "main", name}) {
    EXPECT_TRUE(
        mProcess.waitForLine([](const std::string& line) { return line == "shown"; }, FollowedEngine::patience));
  }
  void comeToFront() { mProcess.writeLine("front"); }
  void close() {
    mProcess.closeInput();
    mProcess.waitForEnd();
  }

 private:
  ChildProcess mProcess;
};

class FocusOnX11Test : public testing::Test {
 protected:
  FocusOnX11Test() {
    unsetenv("WAYLAND_DISPLAY");
    setenv("XDG_RUNTIME_DIR", folder.path().c_str(), 1);
  }

  bool startDisplay(int number = -1) {
    if (!server.start(number)) return false;
    server.startWindowManager(folder.path());
    return true;
  }

  // A window manager minds only what comes after it.
  static bool isTold(FollowedEngine& engine) {
    return engine.comesTrue([&] { return engine.state()["Source"].string() == "x11"; });
  }

  engine::test::TemporaryFolder folder;
  PrivateBus bus;
  X11Server server;
};

TEST_F(FocusOnX11Test, TakesTheProfileOfTheWindowInFrontAndGoesBack) {
  ASSERT_TRUE(startDisplay());
  FollowedEngine engine;
  ASSERT_TRUE(engine.start());
  ASSERT_TRUE(isTold(engine));
  ShownWindow chess("chess");
  EXPECT_EQ(engine.profileWhen("Game"), "Game");
  ShownWindow paint("Paint");
  EXPECT_EQ(engine.profileWhen("Draw"), "Draw");
  const PropertyList state = engine.state();
  EXPECT_EQ(state["Source"].string(), "x11");
  EXPECT_EQ(state["Identifier"].string(), "Paint");
  EXPECT_TRUE(state["Executable"].toString().ends_with("/test-window")) << state.description();
  EXPECT_EQ(state["Profile"].string(), "Draw");
  EXPECT_EQ(state["Needs"].string(), "");
  chess.comeToFront();
  EXPECT_EQ(engine.profileWhen("Game"), "Game");
  ShownWindow editor("editor");
  EXPECT_EQ(engine.profileWhen("Home"), "Home");
  editor.close();
  paint.comeToFront();
  EXPECT_EQ(engine.profileWhen("Draw"), "Draw");
  // The bare desktop.
  chess.close();
  paint.close();
  EXPECT_EQ(engine.profileWhen("Home"), "Home");
  EXPECT_EQ(engine.history(), PropertyList::array());
  for (const PropertyList& news : engine.news()) EXPECT_FALSE(news.contains(newsKeys::SourceApp)) << news.description();
}

TEST_F(FocusOnX11Test, WaitsForADisplayThatComesLater) {
  const int number = ownX11Number();
  setenv("DISPLAY", (":" + std::to_string(number)).c_str(), 1);
  FollowedEngine engine;
  ASSERT_TRUE(engine.start());
  EXPECT_TRUE(engine.comesTrue([&] { return engine.state()["Needs"].string() == "display"; }));
  ASSERT_TRUE(startDisplay(number));
  ASSERT_TRUE(isTold(engine));
  ShownWindow chess("chess");
  EXPECT_EQ(engine.profileWhen("Game"), "Game");
}

TEST_F(FocusOnX11Test, GoesBackWhenTheDisplayDiesAndFollowsItsSuccessor) {
  const int number = ownX11Number();
  ASSERT_TRUE(startDisplay(number));
  FollowedEngine engine;
  ASSERT_TRUE(engine.start());
  ASSERT_TRUE(isTold(engine));
  {
    ShownWindow chess("chess");
    EXPECT_EQ(engine.profileWhen("Game"), "Game");
    server.process().signal(SIGKILL);
    server.process().waitForEnd();
    EXPECT_EQ(engine.profileWhen("Home"), "Home");
  }
  ASSERT_TRUE(startDisplay(number));
  ASSERT_TRUE(isTold(engine));
  ShownWindow paint("paint");
  EXPECT_EQ(engine.profileWhen("Draw"), "Draw");
}

TEST_F(FocusOnX11Test, WaitsForAWindowManagerThatTells) {
  ASSERT_TRUE(server.start());
  FollowedEngine engine;
  ASSERT_TRUE(engine.start());
  ShownWindow chess("chess");
  EXPECT_TRUE(engine.comesTrue([&] { return engine.state()["Needs"].string() == "compositor"; }));
  EXPECT_EQ(engine.state()["Source"].string(), "");
  server.startWindowManager(folder.path());
  ASSERT_TRUE(isTold(engine));
  ShownWindow paint("paint");
  EXPECT_EQ(engine.profileWhen("Draw"), "Draw");
  server.stopWindowManager();
  EXPECT_EQ(engine.profileWhen("Home"), "Home");
  EXPECT_TRUE(engine.comesTrue([&] { return engine.state()["Needs"].string() == "compositor"; }));
}

TEST_F(FocusOnX11Test, ServesItsClientsWhileTheDisplayHangs) {
  ASSERT_TRUE(startDisplay());
  server.process().signal(SIGSTOP);
  FollowedEngine engine;
  ASSERT_TRUE(engine.start());
  EXPECT_EQ(engine.profile(), "Home");
  EXPECT_TRUE(engine.comesTrue([&] { return engine.state()["Needs"].string() == "display"; }));
  server.process().signal(SIGCONT);
  ASSERT_TRUE(isTold(engine));
  ShownWindow chess("chess");
  EXPECT_EQ(engine.profileWhen("Game"), "Game");
  server.process().signal(SIGSTOP);
  engine.choose(2);
  EXPECT_EQ(engine.profile(), "Draw");
  engine.process().signal(SIGTERM);
  EXPECT_EQ(engine.process().waitForEnd(), 0);
  server.process().signal(SIGCONT);
}

TEST_F(FocusOnX11Test, HasNothingOpenWhileNoProfileFollows) {
  ASSERT_TRUE(startDisplay());
  FollowedEngine engine(false);
  ASSERT_TRUE(engine.start());
  const std::size_t open = engine.openThings();
  ASSERT_TRUE(isTold(engine));
  ShownWindow chess("chess");
  // It looks once, and lets go again.
  EXPECT_TRUE(engine.comesTrue([&] { return engine.state()["Identifier"].string() == "chess"; }));
  EXPECT_TRUE(engine.hasOpenWhen(open));
  engine.update(1, PropertyList::dictionary({{keys::AutoSwitchOn, 1}}));
  EXPECT_EQ(engine.profileWhen("Game"), "Game");
  EXPECT_GT(engine.openThings(), open);
  engine.update(1, PropertyList::dictionary({{keys::AutoSwitchOn, 0}}));
  EXPECT_EQ(engine.profileWhen("Home"), "Home");
  EXPECT_TRUE(engine.hasOpenWhen(open));
}

TEST_F(FocusOnX11Test, SleepsWhileNothingComesToTheFront) {
  ASSERT_TRUE(startDisplay());
  FollowedEngine engine;
  ASSERT_TRUE(engine.start());
  ASSERT_TRUE(isTold(engine));
  ShownWindow chess("chess");
  ASSERT_EQ(engine.profileWhen("Game"), "Game");
  constexpr std::chrono::seconds quiet{3};
  EXPECT_TRUE(engine.comesTrue([&] {
    const long before = engine.wakeUps();
    std::this_thread::sleep_for(quiet);
    return engine.wakeUps() == before;
  }));
}

}  // namespace
}  // namespace vorn::test
