// Which source is used, with doubles of the displays and of the sources.
#include "core-engine/focus/FocusSources.h"

#include <gtest/gtest.h>

#include <deque>
#include <string>
#include <vector>

#include "core-engine/TestParts.h"
#include "core-engine/focus/FocusFixture.h"
#include "protocol/Focus.h"
#include "support/PrivateBus.h"

namespace vorn::engine::test {
namespace {

using namespace std::chrono_literals;
using State = ApplicationInFront::State;
using Texts = std::vector<std::string>;

class FakeDisplays : public Displays {
 public:
  explicit FakeDisplays(Scheduler& scheduler) : mScheduler(scheduler) {}

  void find(std::function<void(const FoundDisplays&)> found) override {
    ++searches;
    mScheduler.after(0us, [this, found] { found(displays); });
  }
  void watch(std::function<void()> changed) override { watched = std::move(changed); }

  FoundDisplays displays;
  std::function<void()> watched;
  int searches = 0;

 private:
  Scheduler& mScheduler;
};

class FakeSource : public ApplicationInFront {
 public:
  FakeSource(std::string name, Texts& log, Handlers handlers)
      : ApplicationInFront(std::move(handlers)), mName(std::move(name)), mLog(log) {}
  ~FakeSource() override { mLog.push_back("end " + mName); }
  std::string_view name() const override { return mName; }
  void start() override { mLog.push_back("start " + mName); }
  bool takeTold(const std::string& connection, const Application& application) override {
    if (connection != own) return false;
    tell(application);
    return true;
  }
  using ApplicationInFront::become;
  using ApplicationInFront::tell;

  std::string own;

 private:
  std::string mName;
  Texts& mLog;
};

class FocusSourcesTest : public testing::Test {
 protected:
  FocusSources::Maker maker(const std::string& name) {
    return [this, name](const FoundDisplays&, const ApplicationInFront::Handlers& handlers) {
      auto made = std::make_unique<FakeSource>(name, log, handlers);
      source = made.get();
      return made;
    };
  }
  void use() {
    sources.setUsed(true);
    pass();
  }
  void pass() { scheduler.advance(0ms); }
  void become(State state) {
    source->become(state);
    pass();
  }
  std::string front() const {
    const auto application = sources.application();
    return application ? application->identifier : "unknown";
  }
  Texts taken() { return std::exchange(log, {}); }

  ManualScheduler scheduler;
  FakeDisplays displays{scheduler};
  Texts log;
  FakeSource* source = nullptr;
  int changes = 0;
  FocusSources sources{scheduler, displays, {maker("x11"), maker("wlroots"), maker("kwin")}, [this] { ++changes; }};
};

const FoundDisplays x11 = {{}, ":0", "/x0", "/keys"};
const FoundDisplays wayland = {"/wayland-0", ":0", "/x0", "/keys"};

TEST_F(FocusSourcesTest, DoNothingUntilTheyAreUsedAndLetGoOfAllAfterwards) {
  displays.displays = x11;
  scheduler.advance(1min);
  EXPECT_EQ(displays.searches, 0);
  EXPECT_FALSE(displays.watched);
  use();
  EXPECT_EQ(taken(), Texts{"start x11"});
  EXPECT_EQ(front(), "unknown");
  become(State::Works);
  source->tell(applicationNamed("chess"));
  EXPECT_EQ(front(), "chess");
  sources.setUsed(false);
  EXPECT_EQ(taken(), Texts{"end x11"});
  EXPECT_EQ(front(), "unknown");
  EXPECT_FALSE(displays.watched);
  EXPECT_EQ(scheduler.pending(), 0U);
}

TEST_F(FocusSourcesTest, TryTheCompositorThenKWinAndNeverTheXServerBesideWayland) {
  displays.displays = wayland;
  use();
  EXPECT_EQ(taken(), Texts{"start wlroots"});
  become(State::Failed);
  EXPECT_EQ(taken(), (Texts{"end wlroots", "start kwin"}));
  EXPECT_EQ(sources.needs(), "");
  become(State::Failed);
  EXPECT_EQ(taken(), Texts{"end kwin"});
  EXPECT_EQ(front(), "");
  EXPECT_EQ(sources.source(), "");
  EXPECT_EQ(sources.needs(), "compositor");
}

TEST_F(FocusSourcesTest, SayWhatIsMissing) {
  const auto needs = [this](const FoundDisplays& found) {
    displays.displays = found;
    use();
    while (source != nullptr && sources.needs().empty()) become(State::Failed);
    const std::string told(sources.needs());
    sources.setUsed(false);
    source = nullptr;
    return told;
  };
  EXPECT_EQ(needs({}), "display");
  EXPECT_EQ(needs(x11), "display");
  FoundDisplays gnome = wayland;
  gnome.hasGnomeShell = true;
  EXPECT_EQ(needs(gnome), "gnome-extension");
  FoundDisplays plasma = wayland;
  plasma.hasKWin = true;
  EXPECT_EQ(needs(plasma), "kde");
}

TEST_F(FocusSourcesTest, KeepASourceThatMayTellLater) {
  displays.displays = x11;
  use();
  become(State::Silent);
  EXPECT_EQ(front(), "");
  EXPECT_EQ(sources.needs(), "compositor");
  EXPECT_TRUE(displays.watched);
  become(State::Works);
  source->tell(applicationNamed("chess"));
  EXPECT_EQ(front(), "chess");
  EXPECT_EQ(sources.source(), "x11");
  EXPECT_EQ(sources.needs(), "");
  EXPECT_EQ(taken(), Texts{"start x11"});
}

TEST_F(FocusSourcesTest, StopTryingAfterAWhileUntilADisplayComes) {
  use();
  EXPECT_EQ(front(), "");
  scheduler.advance(1min);
  const int searches = displays.searches;
  EXPECT_GT(searches, 3);
  EXPECT_EQ(scheduler.pending(), 0U);
  scheduler.advance(1h);
  EXPECT_EQ(displays.searches, searches);
  displays.displays = x11;
  displays.watched();
  scheduler.advance(100ms);
  EXPECT_EQ(taken(), Texts{"start x11"});
  become(State::Works);
  EXPECT_FALSE(displays.watched);
}

TEST_F(FocusSourcesTest, FollowTheSuccessorOfADisplayThatDies) {
  displays.displays = x11;
  use();
  become(State::Works);
  source->tell(applicationNamed("chess"));
  become(State::Failed);
  EXPECT_EQ(front(), "unknown");
  displays.displays = {};
  scheduler.advance(100ms);
  EXPECT_EQ(front(), "");
  EXPECT_EQ(sources.needs(), "display");
  displays.displays = wayland;
  displays.watched();
  scheduler.advance(100ms);
  EXPECT_EQ(taken(), (Texts{"start x11", "end x11", "start wlroots"}));
}

TEST_F(FocusSourcesTest, TryRarelyWhatFailsAgainAndAgain) {
  displays.displays = x11;
  use();
  int tries = 0;
  for (int each = 0; each < 100 && scheduler.pending() > 0; ++each) {
    scheduler.advance(1s);
    if (source->state() != State::Trying) continue;
    ++tries;
    source->become(State::Works);
    source->become(State::Failed);
  }
  EXPECT_EQ(scheduler.pending(), 0U);
  EXPECT_LT(tries, 20);
}

TEST_F(FocusSourcesTest, LetASourceTakeWhatItsOwnProgramTells) {
  displays.displays = wayland;
  use();
  become(State::Failed);
  source->own = ":1.7";
  become(State::Works);
  sources.setTold(":1.7", applicationNamed("chess"));
  EXPECT_EQ(front(), "chess");
  EXPECT_EQ(sources.source(), "kwin");
}

TEST_F(FocusSourcesTest, ForgetWhatASourcesOwnProgramToldBeforeItWasThere) {
  const vorn::test::PrivateBus bus;
  displays.displays = wayland;
  sources.setTold(":1.7", applicationNamed("paint"));
  use();
  become(State::Failed);
  source->own = ":1.7";
  become(State::Works);
  sources.setTold(":1.7", applicationNamed("chess"));
  EXPECT_EQ(front(), "chess");
  EXPECT_EQ(sources.source(), "kwin");
}

TEST_F(FocusSourcesTest, PassOverWhatIsNotThereAtAll) {
  displays.displays = wayland;
  FocusSources few(scheduler, displays, {maker("x11"), {}, maker("kwin")}, [] {});
  few.setUsed(true);
  pass();
  EXPECT_EQ(taken(), Texts{"start kwin"});
}

}  // namespace
}  // namespace vorn::engine::test
