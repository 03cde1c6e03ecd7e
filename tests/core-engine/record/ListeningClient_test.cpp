// Who may type into a recording, over a bus of its own.
#include "core-engine/record/ListeningClient.h"

#include <gtest/gtest.h>
#include <systemd/sd-bus.h>

#include <memory>
#include <string>

#include "ports/BusConnection.h"
#include "ports/MessagePort.h"
#include "support/BusPump.h"
#include "support/PrivateBus.h"

namespace vorn::engine::test {
namespace {

class ListeningClientTest : public testing::Test {
 protected:
  ListeningClientTest() {
    const char* name = nullptr;
    sd_bus_get_unique_name(BusConnection::forThisThread().handle(), &name);
    mOwn = name;
  }

  vorn::test::PrivateBus mBus;
  std::string mOwn;
  int mLosses = 0;
  ListeningClient mClient{[this] {
    ++mLosses;
    mClient.become({});
  }};
};

TEST_F(ListeningClientTest, IsTheConnectionThatHasThePort) {
  const auto port = LocalMessagePort::create("Client", {});
  mClient.become("Client");
  ASSERT_TRUE(vorn::test::serveBusUntil([&] { return mClient.isConnection(mOwn); }));
  EXPECT_FALSE(mClient.isConnection(":1.999"));
  mClient.become({});
  EXPECT_FALSE(mClient.isConnection(mOwn));
  EXPECT_EQ(mLosses, 0);
}

TEST_F(ListeningClientTest, IsNobodyUntilTheBusHasSaidWho) {
  const auto port = LocalMessagePort::create("Client", {});
  mClient.become("Client");
  EXPECT_FALSE(mClient.isConnection(mOwn));
  EXPECT_FALSE(mClient.isConnection({}));
}

TEST_F(ListeningClientTest, IsLostWithItsPortAndWithNoOther) {
  mClient.portLost({});
  const auto port = LocalMessagePort::create("Client", {});
  mClient.become("Client");
  mClient.portLost("Other");
  EXPECT_EQ(mLosses, 0);
  mClient.portLost("Client");
  EXPECT_EQ(mLosses, 1);
  mClient.portLost("Client");
  EXPECT_EQ(mLosses, 1);
}

TEST_F(ListeningClientTest, IsLostWhereNobodyHasItsPort) {
  mClient.become("Nobody");
  EXPECT_EQ(mLosses, 0);
  ASSERT_TRUE(vorn::test::serveBusUntil([&] { return mLosses == 1; }));
}

}  // namespace
}  // namespace vorn::engine::test
