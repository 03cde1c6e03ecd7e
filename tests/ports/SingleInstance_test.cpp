#include "ports/SingleInstance.h"

#include <gtest/gtest.h>
#include <systemd/sd-bus.h>

#include <vector>

#include "ports/BusConnection.h"
#include "support/LoopThread.h"
#include "support/PrivateBus.h"

namespace vorn {
namespace {

constexpr const char* identifier = "org.vorn.Single-Test";

// The running program, on a thread of its own.
class RunningProgram {
 public:
  RunningProgram() {
    mThread.run([&] {
      mInstance = SingleInstance::claim(identifier, [this](const std::string& token) { mTokens.push_back(token); });
    });
  }
  ~RunningProgram() { end(); }

  void end() {
    mThread.run([&] { mInstance.reset(); });
  }
  std::vector<std::string> tokens() {
    std::vector<std::string> copy;
    mThread.run([&] { copy = mTokens; });
    return copy;
  }

 private:
  std::vector<std::string> mTokens;
  std::unique_ptr<SingleInstance> mInstance;
  test::LoopThread mThread;
};

class SingleInstanceTest : public testing::Test {
 protected:
  test::PrivateBus mBus;
};

TEST_F(SingleInstanceTest, IsClaimedByOneProgramUntilItEnds) {
  RunningProgram running;
  bool isTaken = false;
  EXPECT_EQ(SingleInstance::claim(identifier, {}, &isTaken), nullptr);
  EXPECT_TRUE(isTaken);
  running.end();
  EXPECT_NE(SingleInstance::claim(identifier, {}, &isTaken), nullptr);
  EXPECT_FALSE(isTaken);
}

TEST_F(SingleInstanceTest, IsNotTakenWhenItsIdentifierIsNone) {
  bool isTaken = true;
  EXPECT_EQ(SingleInstance::claim("no identifier", {}, &isTaken), nullptr);
  EXPECT_FALSE(isTaken);
  EXPECT_FALSE(SingleInstance::activateOther("no identifier", ""));
}

TEST_F(SingleInstanceTest, HearsTheTokenOfTheProgramThatAsks) {
  RunningProgram running;
  EXPECT_TRUE(SingleInstance::activateOther(identifier, "token-1"));
  EXPECT_TRUE(SingleInstance::activateOther(identifier, ""));
  EXPECT_TRUE(SingleInstance::activateOther(identifier, "\xff no text"));
  EXPECT_EQ(running.tokens(), (std::vector<std::string>{"token-1", "", ""}));
}

TEST_F(SingleInstanceTest, CannotBeActivatedWhenNobodyRuns) {
  EXPECT_FALSE(SingleInstance::activateOther(identifier, "token"));
}

TEST_F(SingleInstanceTest, ReadsTheTokenAmongOtherPlatformData) {
  RunningProgram running;
  sd_bus* bus = BusConnection::forThisThread().handle();
  const auto call = [&](auto... arguments) {
    return sd_bus_call_method(bus, identifier, "/org/vorn/Single_Test", "org.freedesktop.Application", "Activate",
                              nullptr, nullptr, arguments...);
  };
  EXPECT_GE(call("a{sv}", 3, "desktop-startup-id", "s", "x", "activation-token", "s", "t", "number", "ai", 2, 1, 2), 0);
  EXPECT_GE(call("a{sv}", 1, "activation-token", "i", 5), 0);
  EXPECT_EQ(call("s", "text"), -EINVAL);
  EXPECT_EQ(running.tokens(), (std::vector<std::string>{"t", ""}));
}

TEST_F(SingleInstanceTest, MayBeGivenUpByItsOwnHandler) {
  test::LoopThread thread;
  std::unique_ptr<SingleInstance> instance;
  std::string heard;
  thread.run([&] {
    instance = SingleInstance::claim(identifier, [&, text = std::string(100, 'x')](const std::string&) {
      instance.reset();
      heard = text;
    });
  });
  EXPECT_TRUE(SingleInstance::activateOther(identifier, ""));
  EXPECT_FALSE(SingleInstance::activateOther(identifier, ""));
  thread.run([&] { EXPECT_EQ(heard, std::string(100, 'x')); });
}

}  // namespace
}  // namespace vorn
