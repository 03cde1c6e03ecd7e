// With a real compositor, Sway, and real windows on it.
#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "core-engine/focus/WaylandApplications.h"
#include "support/ChildProcess.h"
#include "support/LoopPump.h"
#include "support/PrivateBus.h"
#include "support/Sway.h"
#include "support/TemporaryFolder.h"

namespace vorn::engine {
namespace {

using vorn::test::ChildProcess;
using vorn::test::Sway;
using State = ApplicationInFront::State;

constexpr std::chrono::seconds patience{60};

class WaylandApplicationsSwayTest : public testing::Test {
 protected:
  bool becomesTrue(const std::function<bool()>& what) { return vorn::test::runUntil(mLoop, what, patience); }

  void startSource(const std::string& socket) {
    mFront.reset();
    mSource = std::make_unique<WaylandApplications>(
        mLoop, mScheduler, socket,
        ApplicationInFront::Handlers{[this](const Application& application) { mFront = application; }, [](State) {}});
    mSource->start();
  }
  std::unique_ptr<ChildProcess> open(const Sway& sway, const std::string& name) const {
    return std::make_unique<ChildProcess>(std::vector<std::string>{
        "env", "XDG_RUNTIME_DIR=" + mFolder.path(), "WAYLAND_DISPLAY=" + sway.socket(), "LC_ALL=C.UTF-8", "foot",
        "--log-level=none", "--app-id=org.example." + name, "--title=" + name, "cat"});
  }
  bool isInFront(const std::string& name) {
    const Application application{"org.example." + name, {}, name};
    return becomesTrue([&] { return mFront == application; });
  }
  bool isBare() {
    return becomesTrue([&] { return mFront == Application(); });
  }

  vorn::test::PrivateBus mBus;
  test::TemporaryFolder mFolder;
  RunLoop mLoop;
  RunLoopScheduler mScheduler{mLoop};
  std::optional<Application> mFront;
  std::unique_ptr<WaylandApplications> mSource;
};

TEST_F(WaylandApplicationsSwayTest, FollowsWhatIsInFront) {
  const auto sway = Sway::start(mFolder.path());
  ASSERT_TRUE(sway);
  startSource(sway->socket());
  ASSERT_TRUE(isBare());
  EXPECT_EQ(mSource->state(), State::Works);
  auto one = open(*sway, "One");
  ASSERT_TRUE(isInFront("One"));
  const auto two = open(*sway, "Two");
  ASSERT_TRUE(isInFront("Two"));
  EXPECT_TRUE(sway->obeys("[app_id=org.example.One] focus"));
  EXPECT_TRUE(isInFront("One"));
  EXPECT_TRUE(sway->obeys("workspace 2"));
  EXPECT_TRUE(isBare());
  EXPECT_TRUE(sway->obeys("workspace 1"));
  EXPECT_TRUE(isInFront("One"));
  one.reset();
  EXPECT_TRUE(isInFront("Two"));
  // Another one that begins now hears of what is open.
  startSource(sway->socket());
  EXPECT_TRUE(isInFront("Two"));
}

TEST_F(WaylandApplicationsSwayTest, EndsWithItsCompositorAndWorksWithTheNextOne) {
  auto sway = Sway::start(mFolder.path());
  ASSERT_TRUE(sway);
  const std::string socket = sway->socket();
  startSource(socket);
  ASSERT_TRUE(isBare());
  sway->kill();
  EXPECT_TRUE(becomesTrue([&] { return mSource->state() == State::Failed; }));
  startSource(socket);
  EXPECT_TRUE(becomesTrue([&] { return mSource->state() == State::Failed; }));
  EXPECT_FALSE(mFront);

  sway = Sway::start(mFolder.path());
  ASSERT_TRUE(sway);
  startSource(sway->socket());
  const auto one = open(*sway, "One");
  EXPECT_TRUE(isInFront("One"));
}

}  // namespace
}  // namespace vorn::engine
