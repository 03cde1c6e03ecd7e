#include "core-engine/focus/KWinApplications.h"

#include <gtest/gtest.h>

#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "core-engine/TestParts.h"
#include "ports/BusMethodCall.h"
#include "ports/BusObject.h"
#include "protocol/Focus.h"
#include "support/LoopPump.h"
#include "support/LoopThread.h"
#include "support/PrivateBus.h"

namespace vorn::engine {
namespace {

using State = ApplicationInFront::State;
using Lines = std::vector<std::string>;

const std::vector<State> works{State::Works};
const std::vector<State> failed{State::Failed};
const std::vector<State> worksAndFailed{State::Works, State::Failed};
constexpr const char* script = "/usr/share/example/kwin.js";

std::string textOf(const PropertyList& value) {
  return std::string(value.string());
}

// What KWin has on the bus, on a connection of its own. It writes down what it is asked for, and loads a script that
// tells the engine what a test says.
class FakeKWin {
 public:
  explicit FakeKWin(int answerToLoad = 0) : mAnswerToLoad(answerToLoad) {
    mThread.run([this] {
      std::string error;
      mObject = BusObject::create(description(), &error);
      EXPECT_TRUE(mObject) << error;
    });
  }
  ~FakeKWin() {
    mThread.run([this] { mObject.reset(); });
  }
  FakeKWin(const FakeKWin&) = delete;
  FakeKWin& operator=(const FakeKWin&) = delete;

  Lines calls() {
    const std::lock_guard lock(mMutex);
    return mCalls;
  }
  void tell(const Application& application) {
    mThread.run([&] {
      const BusTarget engine{focus::busName, focus::objectPath, focus::interface};
      postBusMethod(engine, focus::methods::SetApplicationInFront,
                    {{"s", application.identifier}, {"s", application.executable}, {"s", application.name}});
    });
  }

 private:
  void note(const std::string& call) {
    const std::lock_guard lock(mMutex);
    mCalls.push_back(call);
  }
  BusObjectDescription description() {
    using Inputs = std::vector<PropertyList>;
    return {"org.kde.KWin",
            "/Scripting",
            "org.kde.kwin.Scripting",
            {{"unloadScript",
              {{"s", "pluginName"}},
              {{"b", "isUnloaded"}},
              [this](const Inputs& inputs) {
                note("unload " + textOf(inputs[0]));
                return BusReply::success({PropertyList(false)});
              }},
             {"loadScript",
              {{"s", "filePath"}, {"s", "pluginName"}},
              {{"i", "number"}},
              [this](const Inputs& inputs) {
                note("load " + textOf(inputs[0]) + " " + textOf(inputs[1]));
                return BusReply::success({PropertyList(mAnswerToLoad)});
              }},
             {"start",
              {},
              {},
              [this](const Inputs&) {
                note("start");
                return BusReply::success();
              }}},
            {}};
  }

  int mAnswerToLoad;
  std::mutex mMutex;
  Lines mCalls;
  vorn::test::LoopThread mThread;
  std::unique_ptr<BusObject> mObject;
};

class KWinApplicationsTest : public testing::Test {
 protected:
  KWinApplicationsTest() {
    const auto set = [this](const std::vector<PropertyList>& inputs, const std::string& connection) {
      const Application application{textOf(inputs[0]), textOf(inputs[1]), textOf(inputs[2])};
      mTaken.push_back(mSource && mSource->takeTold(connection, application));
      return BusReply::success();
    };
    BusMethod method{
        focus::methods::SetApplicationInFront, {{"s", "identifier"}, {"s", "executable"}, {"s", "name"}}, {}, {}};
    method.callFrom = set;
    mEngine = BusObject::create({focus::busName, focus::objectPath, focus::interface, {method}, {}});
  }

  bool becomesTrue(const std::function<bool()>& what) { return vorn::test::runUntil(mLoop, what); }
  void start() {
    mSource = std::make_unique<KWinApplications>(
        mScheduler, script,
        ApplicationInFront::Handlers{[this](const Application& application) { mTold.push_back(application); },
                                     [this](State state) { mStates.push_back(state); }});
    mSource->start();
  }
  // What the source has sent up to now has arrived then.
  void handleAll() {
    const std::size_t count = mTaken.size();
    vorn::test::LoopThread other;
    other.run([] {
      const BusTarget engine{focus::busName, focus::objectPath, focus::interface};
      postBusMethod(engine, focus::methods::SetApplicationInFront, {{"s", "other"}, {"s", ""}, {"s", ""}});
    });
    EXPECT_TRUE(becomesTrue([&] { return mTaken.size() > count; }));
    EXPECT_FALSE(mTaken.back());
    mTaken.pop_back();
  }
  void begin(FakeKWin& kwin) {
    start();
    ASSERT_TRUE(becomesTrue([&] { return kwin.calls() == mLoaded; }));
    kwin.tell(mEditor);
    ASSERT_TRUE(becomesTrue([&] { return mStates == works; }));
  }

  const Lines mLoaded = {"unload org.vorn.Focus", std::string("load ") + script + " org.vorn.Focus", "start"};
  const Application mEditor{"org.example.Editor", "12", "Editor"};

  vorn::test::PrivateBus mBus;
  RunLoop mLoop;
  test::ManualScheduler mScheduler;
  std::unique_ptr<BusObject> mEngine;
  std::unique_ptr<KWinApplications> mSource;
  std::vector<bool> mTaken;
  std::vector<Application> mTold;
  std::vector<State> mStates;
};

TEST_F(KWinApplicationsTest, LoadsTheScriptAndTellsWhatItTells) {
  FakeKWin kwin;
  begin(kwin);
  EXPECT_EQ(mSource->name(), "kwin");
  kwin.tell(mEditor);
  kwin.tell({});
  kwin.tell(mEditor);
  ASSERT_TRUE(becomesTrue([&] { return mTaken.size() == 4; }));
  EXPECT_EQ(mTaken, (std::vector<bool>{true, true, true, true}));
  EXPECT_EQ(mTold, (std::vector<Application>{mEditor, {}, mEditor}));
  EXPECT_EQ(mStates, works);
  EXPECT_EQ(mScheduler.pending(), 0U);
}

TEST_F(KWinApplicationsTest, LeavesToOthersWhatTheyTell) {
  FakeKWin kwin;
  begin(kwin);
  handleAll();
  EXPECT_EQ(mTold, std::vector<Application>{mEditor});
  EXPECT_FALSE(mSource->takeTold("", mEditor));
}

TEST_F(KWinApplicationsTest, UnloadsTheScriptAtItsEnd) {
  FakeKWin kwin;
  begin(kwin);
  mSource.reset();
  Lines calls = mLoaded;
  calls.push_back("unload org.vorn.Focus");
  EXPECT_TRUE(becomesTrue([&] { return kwin.calls() == calls; }));
  EXPECT_EQ(mScheduler.pending(), 0U);
}

TEST_F(KWinApplicationsTest, FailsWithoutKWin) {
  start();
  EXPECT_EQ(mStates, std::vector<State>{});
  EXPECT_TRUE(becomesTrue([&] { return mStates == failed; }));
  EXPECT_EQ(mScheduler.pending(), 0U);
}

TEST_F(KWinApplicationsTest, FailsWithAKWinThatDoesNotLoadTheScript) {
  FakeKWin kwin(-1);
  start();
  EXPECT_TRUE(becomesTrue([&] { return mStates == failed; }));
  const Lines calls = {mLoaded[0], mLoaded[1], mLoaded[0]};
  EXPECT_TRUE(becomesTrue([&] { return kwin.calls() == calls; }));
}

TEST_F(KWinApplicationsTest, FailsWithAScriptThatNeverTells) {
  FakeKWin kwin;
  start();
  ASSERT_TRUE(becomesTrue([&] { return kwin.calls() == mLoaded; }));
  mScheduler.advance(KWinApplications::answerTime - Scheduler::Duration(1));
  EXPECT_EQ(mStates, std::vector<State>{});
  mScheduler.advance(Scheduler::Duration(1));
  EXPECT_EQ(mStates, failed);
  Lines calls = mLoaded;
  calls.push_back("unload org.vorn.Focus");
  EXPECT_TRUE(becomesTrue([&] { return kwin.calls() == calls; }));
}

TEST_F(KWinApplicationsTest, FailsWhenKWinEndsAndWorksWithTheNextOne) {
  auto kwin = std::make_unique<FakeKWin>();
  begin(*kwin);
  kwin.reset();
  EXPECT_TRUE(becomesTrue([&] { return mStates == worksAndFailed; }));
  mStates.clear();
  kwin = std::make_unique<FakeKWin>();
  begin(*kwin);
}

TEST_F(KWinApplicationsTest, IsNoSourceOfWhatIsToldAfterItHasFailed) {
  auto kwin = std::make_unique<FakeKWin>();
  begin(*kwin);
  kwin.reset();
  EXPECT_TRUE(becomesTrue([&] { return mStates == worksAndFailed; }));
  handleAll();
  EXPECT_EQ(mTold, std::vector<Application>{mEditor});
}

}  // namespace
}  // namespace vorn::engine
