// A system bus of the test's own with what plays the services of the system, and the run loop that serves it.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <optional>

#include "ports/BusMethodCall.h"
#include "ports/RunLoop.h"
#include "support/FakeSystemProcess.h"
#include "support/LoopPump.h"
#include "support/PrivateBus.h"

namespace vorn::engine {

class SystemFixture : public testing::Test {
 protected:
  bool becomesTrue(const std::function<bool()>& what) { return vorn::test::runUntil(mLoop, what); }
  // Whatever has arrived up to now is handled then.
  void handleAll() {
    bool isHandled = false;
    callBusMethodLater({"org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", Bus::System}, "GetId",
                       {}, std::nullopt, [&](const BusAnswer&) { isHandled = true; });
    EXPECT_TRUE(becomesTrue([&] { return isHandled; }));
  }

  vorn::test::PrivateBus mSession;
  vorn::test::PrivateBus mBus{vorn::test::PrivateBus::systemAddress};
  RunLoop mLoop;
};

}  // namespace vorn::engine
