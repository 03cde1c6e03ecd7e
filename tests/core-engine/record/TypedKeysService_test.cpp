// Typed keys over a bus of its own, as a window tells of them.
#include "core-engine/record/TypedKeysService.h"

#include <gtest/gtest.h>
#include <systemd/sd-bus.h>

#include <string>
#include <utility>
#include <vector>

#include "ports/BusConnection.h"
#include "ports/BusMethodCall.h"
#include "protocol/TypedKeys.h"
#include "support/LoopThread.h"
#include "support/PrivateBus.h"

namespace vorn::engine::test {
namespace {

using namespace std::chrono_literals;

class TypedKeysServiceTest : public testing::Test {
 protected:
  using Typed = std::pair<std::string, KeyChanged>;

  TypedKeysServiceTest() {
    mThread.run([this] {
      mService = std::make_unique<TypedKeysService>([this](const std::string& connection, const KeyChanged& key) {
        mTyped.emplace_back(connection, key);
        return mListens;
      });
      std::string error;
      EXPECT_TRUE(mService->start(error)) << error;
    });
  }
  ~TypedKeysServiceTest() override {
    mThread.run([this] { mService.reset(); });
  }

  static BusAnswer type(int usagePage, int usage, bool isPressed, std::uint64_t time) {
    return callBusMethod({typedKeys::busName, typedKeys::objectPath, typedKeys::interface}, typedKeys::methods::Type,
                         {{"q", usagePage}, {"q", usage}, {"b", isPressed}, {"t", time}}, 20s);
  }
  std::vector<Typed> typed() {
    std::vector<Typed> copy;
    mThread.run([&] { copy = mTyped; });
    return copy;
  }
  static std::string ownName() {
    const char* name = nullptr;
    sd_bus_get_unique_name(BusConnection::forThisThread().handle(), &name);
    return name;
  }

  vorn::test::PrivateBus mBus;
  bool mListens = true;
  std::vector<Typed> mTyped;
  std::unique_ptr<TypedKeysService> mService;
  vorn::test::LoopThread mThread;
};

TEST_F(TypedKeysServiceTest, HandsKeysAndButtonsOnWithTheirTimeAndWhoTellsOfThem) {
  EXPECT_EQ(type(7, 4, true, 1000).status, BusAnswer::Status::Success);
  EXPECT_EQ(type(9, 1, false, 1020).status, BusAnswer::Status::Success);
  EXPECT_EQ(typed(), (std::vector<Typed>{{ownName(), {7, 4, true, 1000ms}}, {ownName(), {9, 1, false, 1020ms}}}));
}

TEST_F(TypedKeysServiceTest, RefusesWhoDoesNotListen) {
  mListens = false;
  const BusAnswer answer = type(7, 4, true, 1000);
  EXPECT_EQ(answer.status, BusAnswer::Status::Error);
  EXPECT_EQ(answer.error, "This program neither records nor captures now");
}

TEST_F(TypedKeysServiceTest, RefusesWhatIsNoKey) {
  for (const auto& [page, usage] :
       std::vector<std::pair<int, int>>{{7, 3}, {7, 232}, {9, 0}, {9, 10}, {1, 48}, {65535, 65535}})
    EXPECT_EQ(type(page, usage, true, 0).status, BusAnswer::Status::Error) << page << '/' << usage;
  EXPECT_EQ(type(7, 4, true, ~std::uint64_t{0}).status, BusAnswer::Status::Error);
  EXPECT_EQ(typed(), std::vector<Typed>());
}

}  // namespace
}  // namespace vorn::engine::test
