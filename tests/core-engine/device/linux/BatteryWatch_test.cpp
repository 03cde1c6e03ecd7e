#include "core-engine/device/linux/BatteryWatch.h"

#include <filesystem>
#include <optional>

#include "SystemFixture.h"
#include "support/TemporaryFolder.h"

namespace vorn::engine {
namespace {

class BatteryWatchTest : public SystemFixture {
 protected:
  void watch() {
    mWatch.emplace([this] { ++mCount; });
    handleAll();
  }
  bool hears(int count) {
    return becomesTrue([this, count] { return mCount == count; });
  }

  std::optional<BatteryWatch> mWatch;
  int mCount = 0;
};

TEST_F(BatteryWatchTest, HearsOfEveryBatteryThatAppearsAndOfNoneThatIsThere) {
  vorn::test::FakeSystemProcess system({"power start", "power add mouse hidpp_battery_0 50 2"});
  watch();
  EXPECT_TRUE(system.obey("power change mouse 49 2"));
  EXPECT_TRUE(system.obey("power remove mouse"));
  handleAll();
  EXPECT_EQ(mCount, 0);
  EXPECT_TRUE(system.obey("power add mouse hidpp_battery_1 50 2"));
  EXPECT_TRUE(hears(1));
}

TEST_F(BatteryWatchTest, HearsOfAServiceThatComesLater) {
  watch();
  EXPECT_EQ(mCount, 0);
  vorn::test::FakeSystemProcess system({"power start"});
  EXPECT_TRUE(hears(1));
}

TEST_F(BatteryWatchTest, StartsNothing) {
  const test::TemporaryFolder folder;
  const std::string mark = folder.path("started");
  mBus.installService("org.freedesktop.UPower", "/bin/touch " + mark);
  watch();
  vorn::test::FakeSystemProcess system({"login start"});
  handleAll();
  EXPECT_FALSE(std::filesystem::exists(mark));
}

TEST_F(BatteryWatchTest, MayEndInItsHandler) {
  vorn::test::FakeSystemProcess system({"power start"});
  mWatch.emplace([this] { mWatch.reset(); });
  handleAll();
  EXPECT_TRUE(system.obey("power add mouse hidpp_battery_0 50 2"));
  EXPECT_TRUE(becomesTrue([this] { return !mWatch; }));
}

}  // namespace
}  // namespace vorn::engine
