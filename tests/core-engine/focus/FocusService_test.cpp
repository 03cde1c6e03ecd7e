// The application in front over a bus of its own, as programs, the window and vornctl use it.
#include "core-engine/focus/FocusService.h"

#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <string>

#include "core-engine/TestParts.h"
#include "ports/BusMethodCall.h"
#include "ports/SignalWatch.h"
#include "protocol/Focus.h"
#include "support/BusPump.h"
#include "support/LoopThread.h"
#include "support/PrivateBus.h"

namespace vorn::engine::test {
namespace {

using namespace std::chrono_literals;

class NoDisplays : public Displays {
 public:
  explicit NoDisplays(Scheduler& scheduler) : mScheduler(scheduler) {}
  void find(std::function<void(const FoundDisplays&)> found) override {
    mScheduler.after(0us, [found] { found({}); });
  }
  void watch(std::function<void()> changed) override { mChanged = std::move(changed); }

 private:
  Scheduler& mScheduler;
  std::function<void()> mChanged;
};

class FocusServiceTest : public testing::Test {
 protected:
  FocusServiceTest() {
    onEngine([this] {
      service = std::make_unique<FocusService>(
          scheduler, sources,
          FocusService::Questions{[this] { return isAskedFor; }, [] { return std::string("Game"); },
                                  [](const std::string& identifier) { return identifier + "'s name"; }});
      std::string error;
      EXPECT_TRUE(service->start(error)) << error;
    });
  }
  ~FocusServiceTest() override {
    onEngine([this] {
      sources.setUsed(false);
      service.reset();
    });
  }

  void onEngine(const std::function<void()>& work) { engine.run(work); }
  static void tell(const std::string& identifier) {
    const BusAnswer answer =
        callBusMethod({focus::busName, focus::objectPath, focus::interface}, focus::methods::SetApplicationInFront,
                      {{"s", identifier}, {"s", ""}, {"s", ""}}, 20s);
    EXPECT_EQ(answer.status, BusAnswer::Status::Success) << answer.error;
  }
  // Whether a profile asks for an application from now on; returns when what was told counts again.
  void setAskedFor(bool isOn) {
    onEngine([this, isOn] {
      isAskedFor = isOn;
      service->updateUse();
    });
    const auto isKnown = [this] {
      bool result = false;
      onEngine([&] { result = sources.source() == focus::sources::Bus; });
      return result;
    };
    EXPECT_TRUE(!isOn || vorn::test::serveBusUntil(isKnown));
  }
  void pass(Scheduler::Duration time) {
    onEngine([this, time] { scheduler.advance(time); });
  }
  bool isToldWhen(int count) {
    vorn::test::serveBusUntil([&] { return told >= count; });
    return told == count;
  }

  const vorn::test::PrivateBus bus;
  ManualScheduler scheduler;
  NoDisplays displays{scheduler};
  bool isAskedFor = false;
  std::unique_ptr<FocusService> service;
  FocusSources sources{scheduler, displays, {}, [this] { service->changed(); }};
  vorn::test::LoopThread engine;
  int told = 0;
  const SignalWatch changed{{focus::objectPath, focus::interface, focus::signalNames::Changed},
                            [this](const ReceivedSignal&) { ++told; }};
};

TEST_F(FocusServiceTest, TellsOnceOfManyChangesAndOnlyWhileAProfileAsks) {
  tell("mail");
  pass(1min);
  setAskedFor(true);
  for (const char* each : {"chess", "paint", "chess"}) tell(each);
  pass(FocusService::foldingTime);
  EXPECT_TRUE(isToldWhen(1));
  tell("chess");
  pass(1min);
  tell("paint");
  pass(FocusService::foldingTime);
  EXPECT_TRUE(isToldWhen(2));
}

// Whoever has asked while no profile did knows something else since.
TEST_F(FocusServiceTest, TellsAnewWhatItToldBeforeProfilesStoppedAsking) {
  tell("chess");
  setAskedFor(true);
  pass(FocusService::foldingTime);
  EXPECT_TRUE(isToldWhen(1));
  setAskedFor(false);
  setAskedFor(true);
  pass(FocusService::foldingTime);
  EXPECT_TRUE(isToldWhen(2));
}

}  // namespace
}  // namespace vorn::engine::test
