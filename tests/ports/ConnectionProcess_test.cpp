#include "ports/ConnectionProcess.h"

#include <gtest/gtest.h>
#include <stdlib.h>
#include <systemd/sd-bus.h>
#include <unistd.h>

#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "ports/BusConnection.h"
#include "support/BusPump.h"
#include "support/LoopThread.h"
#include "support/PrivateBus.h"

namespace vorn {
namespace {

using Told = std::vector<std::optional<std::uint32_t>>;

std::string ownName() {
  const char* name = nullptr;
  sd_bus_get_unique_name(BusConnection::forThisThread().handle(), &name);
  return name;
}

Told toldOf(const std::string& connectionName) {
  Told told;
  askForProcess(connectionName, [&](std::optional<std::uint32_t> process) { told.push_back(process); });
  EXPECT_TRUE(test::serveBusUntil([&] { return !told.empty(); }));
  return told;
}

TEST(ConnectionProcessTest, IsToldOfAnyConnection) {
  const test::PrivateBus bus;
  test::LoopThread elsewhere;
  std::string other;
  elsewhere.run([&] { other = ownName(); });
  EXPECT_NE(other, ownName());
  for (const std::string& name : {ownName(), other}) {
    EXPECT_EQ(toldOf(name), Told{static_cast<std::uint32_t>(getpid())});
  }
}

TEST(ConnectionProcessTest, IsAskedForWithoutWaitingForTheBus) {
  test::PrivateBus bus;
  const std::string name = ownName();
  Told told;
  bus.pause();
  askForProcess(name, [&](std::optional<std::uint32_t> process) { told.push_back(process); });
  EXPECT_EQ(told, Told());
  bus.resume();
  EXPECT_TRUE(test::serveBusUntil([&] { return !told.empty(); }));
}

TEST(ConnectionProcessTest, IsNoneWhereTheConnectionIsGoneOrNoName) {
  const test::PrivateBus bus;
  std::string other;
  std::thread([&] { other = ownName(); }).join();
  EXPECT_EQ(toldOf(other), Told{std::nullopt});
  EXPECT_EQ(toldOf("no name"), Told{std::nullopt});
}

TEST(ConnectionProcessTest, IsNoneWithoutABus) {
  const test::PrivateBus bus;  // restores the variable at the end
  setenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent/bus", 1);
  std::thread([] {
    Told told;
    askForProcess(":1.1", [&](std::optional<std::uint32_t> process) { told.push_back(process); });
    EXPECT_EQ(told, Told{std::nullopt});
  }).join();
}

}  // namespace
}  // namespace vorn
