// A system bus of the test's own with what plays the services of the system, and the run loop that serves it.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "ports/BusMethodCall.h"
#include "ports/RunLoop.h"
#include "support/FakeSystemProcess.h"
#include "support/LoopPump.h"
#include "support/PrivateBus.h"

namespace vorn::engine {

using Calls = std::vector<std::string>;

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

  // What is set up to and with the next commit, with which the loop goes on: some is sent when something is answered.
  Calls callsToCommit(vorn::test::FakeSystemProcess& system) {
    Calls calls;
    const auto isCommitted = [&calls] { return !calls.empty() && calls.back() == "commit"; };
    EXPECT_TRUE(becomesTrue([&] {
      while (!isCommitted()) {
        const auto call = system.nextCall();
        if (!call) break;
        calls.push_back(*call);
      }
      return isCommitted();
    }));
    return calls;
  }

  vorn::test::PrivateBus mSession;
  vorn::test::PrivateBus mBus{vorn::test::PrivateBus::systemAddress};
  RunLoop mLoop;
};

}  // namespace vorn::engine
