#include "core-engine/device/linux/SleepWatch.h"

#include <optional>
#include <vector>

#include "SystemFixture.h"

namespace vorn::engine {
namespace {

class SleepWatchTest : public SystemFixture {};

TEST_F(SleepWatchTest, HearsOfSleepAndOfItsEnd) {
  vorn::test::FakeSystemProcess system({"login start"});
  std::vector<bool> heard;
  const SleepWatch watch([&](bool isGoingToSleep) { heard.push_back(isGoingToSleep); });
  handleAll();
  for (const char* command : {"login garbage", "login sleep", "login wake"}) EXPECT_TRUE(system.obey(command));
  ASSERT_TRUE(becomesTrue([&] { return heard.size() == 2; }));
  EXPECT_EQ(heard, (std::vector<bool>{true, false}));
}

TEST_F(SleepWatchTest, HearsOnceTheServiceIsThere) {
  std::vector<bool> heard;
  const SleepWatch watch([&](bool isGoingToSleep) { heard.push_back(isGoingToSleep); });
  handleAll();
  vorn::test::FakeSystemProcess system({"login start", "login sleep"});
  ASSERT_TRUE(becomesTrue([&] { return heard.size() == 1; }));
}

TEST_F(SleepWatchTest, MayEndInItsHandler) {
  vorn::test::FakeSystemProcess system({"login start"});
  std::optional<SleepWatch> watch;
  watch.emplace([&](bool) { watch.reset(); });
  handleAll();
  EXPECT_TRUE(system.obey("login sleep"));
  EXPECT_TRUE(becomesTrue([&] { return !watch; }));
}

TEST_F(SleepWatchTest, HearsNothingWithoutABus) {
  mBus.end();
  const SleepWatch watch([](bool) { FAIL(); });
}

}  // namespace
}  // namespace vorn::engine
