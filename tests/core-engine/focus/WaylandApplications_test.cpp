#include "core-engine/focus/WaylandApplications.h"

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>

#include "core-engine/TestParts.h"
#include "core-engine/focus/WireCompositor.h"
#include "support/LoopPump.h"
#include "support/PrivateBus.h"

namespace vorn::engine {

// For what tests write when they fail.
void PrintTo(const Application& application, std::ostream* out) {
  *out << "{" << application.identifier << ", " << application.executable << ", " << application.name << "}";
}

namespace {

using test::WireArguments;
using State = ApplicationInFront::State;

constexpr std::uint32_t registry = 2;
constexpr std::uint32_t manager = 4;
constexpr std::uint32_t managerName = 7;
constexpr std::uint32_t firstWindow = 0xff000000;  // ids that the compositor gives
constexpr std::uint32_t activated = 2;

enum WindowEvent : std::uint16_t { title, applicationId, outputEnter, outputLeave, state, done, closed };

class WaylandApplicationsTest : public testing::Test {
 protected:
  bool becomesTrue(const std::function<bool()>& what) { return vorn::test::runUntil(mLoop, what); }

  std::unique_ptr<WaylandApplications> sourceAt(const std::string& socket) {
    auto source = std::make_unique<WaylandApplications>(
        mLoop, mScheduler, socket,
        ApplicationInFront::Handlers{[this](const Application& application) { mTold.push_back(application); },
                                     [this](State state) { mStates.push_back(state); }});
    source->start();
    return source;
  }
  void startWithClient() {
    mSource = sourceAt(mCompositor.path());
    mScheduler.advance({});
    ASSERT_TRUE(becomesTrue([&] { return mCompositor.hasClient(); }));
  }
  std::string nextRequest() {
    std::optional<std::string> request;
    becomesTrue([&] { return request || (request = mCompositor.request()); });
    return request.value_or("nothing");
  }
  // Answers the next request, which must be a sync.
  void answerSync() {
    const std::string request = nextRequest();
    ASSERT_EQ(request.substr(0, 5), "sync ");
    const auto id = static_cast<std::uint32_t>(std::stoul(request.substr(5)));
    mCompositor.send(id, 0, WireArguments().word(0));
    mCompositor.send(1, 1, WireArguments().word(id));
  }
  // Up to where it works, with what is open already.
  void begin(const std::function<void()>& openWindows = [] {}) {
    startWithClient();
    EXPECT_EQ(nextRequest(), "get_registry 2");
    mCompositor.send(registry, 0, WireArguments().word(1).text("wl_compositor").word(4));
    mCompositor.send(registry, 0, WireArguments().word(managerName).text("zwlr_foreign_toplevel_manager_v1").word(3));
    answerSync();
    EXPECT_EQ(nextRequest(), "bind 7 zwlr_foreign_toplevel_manager_v1 1 4");
    openWindows();
    answerSync();
    ASSERT_TRUE(becomesTrue([&] { return !mStates.empty(); }));
    mScheduler.advance({});
  }
  void open(std::uint32_t window, const std::string& identifier, bool isActivated) {
    ASSERT_EQ(window, mNextWindow++);
    mCompositor.send(manager, 0, WireArguments().word(window));
    mCompositor.send(window, title, WireArguments().text("Title of " + identifier));
    mCompositor.send(window, applicationId, WireArguments().text(identifier));
    if (isActivated)
      activate(window);
    else
      deactivate(window);
  }
  void activate(std::uint32_t window) {
    mCompositor.send(window, state, WireArguments().array({0, activated}));
    mCompositor.send(window, done);
  }
  void deactivate(std::uint32_t window) {
    mCompositor.send(window, state, WireArguments().array({}));
    mCompositor.send(window, done);
  }
  // The source has handled all that was sent before then: it gives back what a closed window was.
  void handleAll() {
    const std::uint32_t window = mNextWindow++;
    mCompositor.send(manager, 0, WireArguments().word(window));
    mCompositor.send(window, closed);
    EXPECT_EQ(nextRequest(), std::to_string(window) + ".7");
  }
  std::vector<Application> toldNow() {
    handleAll();
    mScheduler.advance(WaylandApplications::foldingTime);
    return std::exchange(mTold, {});
  }
  static Application application(const std::string& identifier) { return {identifier, "", "Title of " + identifier}; }

  vorn::test::PrivateBus mBus;
  RunLoop mLoop;
  test::ManualScheduler mScheduler;
  test::WireCompositor mCompositor;
  std::vector<Application> mTold;
  std::vector<State> mStates;
  std::unique_ptr<WaylandApplications> mSource;
  std::uint32_t mNextWindow = firstWindow;  // the protocol wants them one after the other
};

const std::vector<State> works{State::Works};
const std::vector<State> failed{State::Failed};
const std::vector<State> worksAndFailed{State::Works, State::Failed};

TEST_F(WaylandApplicationsTest, DoesNothingBeforeTheTurnAfterItsStart) {
  mSource = sourceAt(mCompositor.path());
  EXPECT_FALSE(mCompositor.hasClient());
  EXPECT_EQ(mSource->state(), State::Trying);
  EXPECT_EQ(mSource->name(), "wlroots");
  mSource.reset();
  EXPECT_EQ(mScheduler.pending(), 0U);
}

TEST_F(WaylandApplicationsTest, TellsTheBareDesktopWhereNoWindowIsOpen) {
  begin();
  EXPECT_EQ(mStates, works);
  EXPECT_EQ(mTold, std::vector<Application>{{}});
}

TEST_F(WaylandApplicationsTest, TellsTheWindowThatIsActivatedAtTheBeginning) {
  begin([&] {
    open(firstWindow, "foot", false);
    open(firstWindow + 1, "org.example.Editor", true);
  });
  EXPECT_EQ(mTold, std::vector<Application>{application("org.example.Editor")});
}

TEST_F(WaylandApplicationsTest, TellsEachChangeOnce) {
  begin([&] {
    open(firstWindow, "foot", false);
    open(firstWindow + 1, "org.example.Editor", true);
  });
  mTold.clear();
  deactivate(firstWindow + 1);
  activate(firstWindow);
  EXPECT_EQ(toldNow(), std::vector<Application>{application("foot")});
  activate(firstWindow);
  EXPECT_EQ(toldNow(), std::vector<Application>{});
  deactivate(firstWindow);
  EXPECT_EQ(toldNow(), std::vector<Application>{{}});
  EXPECT_EQ(mStates, works);
}

TEST_F(WaylandApplicationsTest, TellsOfThousandsOfChangesOnlyWhatIsInFrontInTheEnd) {
  begin([&] {
    open(firstWindow, "foot", false);
    open(firstWindow + 1, "org.example.Editor", false);
  });
  mTold.clear();
  for (std::uint32_t change = 0; change < 1000; ++change) {
    deactivate(firstWindow + (change + 1) % 2);
    activate(firstWindow + change % 2);
    if (change % 20 == 0) handleAll();
  }
  EXPECT_EQ(toldNow(), std::vector<Application>{application("org.example.Editor")});
}

TEST_F(WaylandApplicationsTest, LeavesOutWhatIsNotSettledYet) {
  begin([&] { open(firstWindow, "foot", true); });
  mTold.clear();
  mCompositor.send(firstWindow, state, WireArguments().array({}));
  EXPECT_EQ(toldNow(), std::vector<Application>{});
  mCompositor.send(firstWindow, done);
  EXPECT_EQ(toldNow(), std::vector<Application>{{}});
}

TEST_F(WaylandApplicationsTest, TakesTheLastOfSeveralActivatedWindows) {
  begin([&] {
    open(firstWindow, "foot", true);
    open(firstWindow + 1, "org.example.Editor", false);
  });
  mTold.clear();
  activate(firstWindow + 1);
  activate(firstWindow);
  EXPECT_EQ(toldNow(), std::vector<Application>{application("org.example.Editor")});
  mCompositor.send(firstWindow + 1, closed);
  EXPECT_EQ(nextRequest(), "4278190081.7");
  EXPECT_EQ(toldNow(), std::vector<Application>{application("foot")});
}

TEST_F(WaylandApplicationsTest, FollowsTheTitleOfTheWindowInFrontAndItsId) {
  begin([&] { open(firstWindow, "foot", true); });
  mTold.clear();
  mCompositor.send(firstWindow, title, WireArguments().text("Later"));
  mCompositor.send(firstWindow, applicationId, WireArguments().text("other"));
  mCompositor.send(firstWindow, done);
  EXPECT_EQ(toldNow(), (std::vector<Application>{{"other", "", "Later"}}));
}

TEST_F(WaylandApplicationsTest, LeavesNothingBehindWhenItEnds) {
  begin([&] { open(firstWindow, "foot", true); });
  activate(firstWindow);
  mSource.reset();
  EXPECT_TRUE(becomesTrue([&] { return mCompositor.hasLostClient(); }));
  EXPECT_EQ(mScheduler.pending(), 0U);
}

TEST_F(WaylandApplicationsTest, FailsWithoutACompositor) {
  const auto source = sourceAt("/nowhere/wayland-0");
  EXPECT_EQ(mStates, std::vector<State>{});
  mScheduler.advance({});
  EXPECT_EQ(mStates, failed);
  EXPECT_EQ(mScheduler.pending(), 0U);
}

TEST_F(WaylandApplicationsTest, FailsWithASocketWhosePathNoSocketCanHave) {
  const auto source = sourceAt("/" + std::string(200, 'a'));
  mScheduler.advance({});
  EXPECT_EQ(mStates, failed);
}

TEST_F(WaylandApplicationsTest, FailsWithACompositorThatTakesNoConnections) {
  const test::WireCompositor busy(0);
  const auto first = sourceAt(busy.path());
  mScheduler.advance({});
  EXPECT_EQ(mStates, std::vector<State>{});
  const auto second = sourceAt(busy.path());
  mScheduler.advance({});
  EXPECT_EQ(mStates, failed);
}

TEST_F(WaylandApplicationsTest, FailsWithACompositorThatNeverAnswers) {
  startWithClient();
  mScheduler.advance(WaylandApplications::answerTime - Scheduler::Duration(1));
  EXPECT_EQ(mStates, std::vector<State>{});
  mScheduler.advance(Scheduler::Duration(1));
  EXPECT_EQ(mStates, failed);
  EXPECT_TRUE(becomesTrue([&] { return mCompositor.hasLostClient(); }));
  EXPECT_EQ(mScheduler.pending(), 0U);
}

TEST_F(WaylandApplicationsTest, FailsWithACompositorThatDoesNotSpeakTheProtocol) {
  startWithClient();
  EXPECT_EQ(nextRequest(), "get_registry 2");
  mCompositor.send(registry, 0, WireArguments().word(1).text("wl_compositor").word(4));
  answerSync();
  EXPECT_TRUE(becomesTrue([&] { return mStates == failed; }));
  EXPECT_TRUE(becomesTrue([&] { return mCompositor.hasLostClient(); }));
}

TEST_F(WaylandApplicationsTest, FailsWhenTheCompositorDies) {
  begin([&] { open(firstWindow, "foot", true); });
  mCompositor.leaveClient();
  EXPECT_TRUE(becomesTrue([&] { return mStates == worksAndFailed; }));
  EXPECT_EQ(mScheduler.pending(), 0U);
}

TEST_F(WaylandApplicationsTest, FailsWhenTheCompositorTellsNoMore) {
  begin();
  mCompositor.send(manager, 1);
  EXPECT_TRUE(becomesTrue([&] { return mStates == worksAndFailed; }));
}

TEST_F(WaylandApplicationsTest, FailsWhenTheCompositorTakesTheProtocolBack) {
  begin();
  mCompositor.send(registry, 1, WireArguments().word(1));
  handleAll();
  EXPECT_EQ(mStates, works);
  mCompositor.send(registry, 1, WireArguments().word(managerName));
  EXPECT_TRUE(becomesTrue([&] { return mStates == worksAndFailed; }));
}

TEST_F(WaylandApplicationsTest, FailsWithWhateverBreaksTheProtocol) {
  const std::vector<std::function<void()>> faults = {
      [&] { mCompositor.send(1, 0, WireArguments().word(manager).word(3).text("no")); },  // an error of the object
      [&] { mCompositor.send(manager, 99); },
      [&] { mCompositor.send(manager, 0); },                                      // an argument is missing
      [&] { mCompositor.send(manager, 0, WireArguments().word(registry)); },      // an id of the client's
      [&] { mCompositor.send(firstWindow, title, WireArguments().word(0)); },     // no text
      [&] { mCompositor.send(firstWindow, title, WireArguments().word(4000)); },  // longer than it is
      [&] { mCompositor.send(firstWindow, state, WireArguments().word(0xffffffff)); },
      [&] { mCompositor.send(firstWindow, outputEnter, WireArguments().word(88)); },
      [&] { mCompositor.sendBytes(std::string("\4\0\0\0\0\0\0\0", 8)); },  // a message without a size
      [&] {
        while (mCompositor.sendBytes(std::string("\4\0\0\0\0\0\xff\xff", 8) + std::string(4000, 'a'))) {
        }  // longer than any
      },
  };
  for (std::size_t index = 0; index < faults.size(); ++index) {
    SCOPED_TRACE(index);
    begin([&] { open(firstWindow, "foot", true); });
    faults[index]();
    EXPECT_TRUE(becomesTrue([&] { return mStates == worksAndFailed; }));
    mSource.reset();
    mCompositor.leaveClient();
    mStates.clear();
    mNextWindow = firstWindow;
  }
}

TEST_F(WaylandApplicationsTest, LeavesOutWhatIsSentToObjectsThatItDoesNotHave) {
  begin([&] { open(firstWindow, "foot", true); });
  mTold.clear();
  mCompositor.send(123456, 3, WireArguments().word(1));
  EXPECT_EQ(toldNow(), std::vector<Application>{});
  EXPECT_EQ(mStates, works);
}

// It takes no more of the compositor then, but keeps nobody waiting.
TEST_F(WaylandApplicationsTest, SendsABusyCompositorLaterWhatItDoesNotTake) {
  begin();
  const auto openAndClose = [&] {
    return mCompositor.sendBytes(WireArguments().word(manager).word(12 << 16).word(mNextWindow).bytes() +
                                 WireArguments().word(mNextWindow).word(8 << 16 | closed).bytes());
  };
  const auto waits = [&] { return mScheduler.pending() == 2; };  // to look, and to send
  ASSERT_TRUE(becomesTrue([&] {
    while (openAndClose()) ++mNextWindow;
    return waits();
  }));
  EXPECT_EQ(mStates, works);
  std::uint32_t given = firstWindow;
  EXPECT_TRUE(becomesTrue([&] {
    mScheduler.advance(WaylandApplications::sendingTime);
    for (std::optional<std::string> request; (request = mCompositor.request());)
      EXPECT_EQ(*request, std::to_string(given++) + ".7");
    return given == mNextWindow;
  }));
  EXPECT_EQ(mStates, works);
}

}  // namespace
}  // namespace vorn::engine
