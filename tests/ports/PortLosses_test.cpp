#include "ports/PortLosses.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "ports/MessagePort.h"
#include "support/BusPump.h"
#include "support/LoopThread.h"
#include "support/PrivateBus.h"

namespace vorn {
namespace {

TEST(PortLossesTest, TellsEveryPortThatGoesAndNoneThatComes) {
  const test::PrivateBus bus;
  test::LoopThread other;
  std::vector<std::string> lost;
  const PortLosses losses([&](const std::string& port) { lost.push_back(port); });
  for (const char* name : {"First", "Second.Port"}) {
    other.run([name] { LocalMessagePort::create(name, {}); });
  }
  ASSERT_TRUE(test::serveBusUntil([&] { return lost.size() == 2; }));
  EXPECT_EQ(lost, (std::vector<std::string>{"First", "Second.Port"}));
}

}  // namespace
}  // namespace vorn
