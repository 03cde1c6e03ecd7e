#include "ports/ServiceActivation.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "ports/BusConnection.h"
#include "support/BusPump.h"
#include "support/LoopThread.h"
#include "support/PrivateBus.h"

namespace vorn {
namespace {

using namespace std::chrono_literals;
using Status = ServiceStart::Status;

constexpr const char* service = "org.vorn.ServiceTest";
// Ends well, and never takes the name: so it is another program that does, or none.
constexpr const char* slowCommand = "/bin/true";
constexpr std::chrono::seconds ample{20};

// The program of the service: another connection.
class RunningService {
 public:
  RunningService() {
    mThread.run([&] { mName = ServiceName::claim(service); });
  }
  ~RunningService() {
    mThread.run([&] { mName.reset(); });
  }
  bool hasName() const { return mName != nullptr; }

 private:
  std::unique_ptr<ServiceName> mName;
  test::LoopThread mThread;
};

class ServiceActivationTest : public testing::Test {
 protected:
  // Nobody else hears of a start that is still under way.
  ~ServiceActivationTest() override { BusConnection::forThisThread().close(); }
  void start(std::chrono::milliseconds timeout = ample) {
    startService(service, timeout, [this](const ServiceStart& outcome) { mOutcomes.push_back(outcome); });
  }
  // How that ended; the test's thread serves the bus meanwhile, as an event loop does.
  std::optional<Status> outcome() {
    EXPECT_TRUE(test::serveBusUntil([this] { return !mOutcomes.empty(); }));
    EXPECT_EQ(mOutcomes.size(), 1U);
    return mOutcomes.empty() ? std::nullopt : std::optional(mOutcomes.front().status);
  }
  const std::string& reason() const { return mOutcomes.front().error; }

  test::PrivateBus mBus;
  std::vector<ServiceStart> mOutcomes;
};

TEST_F(ServiceActivationTest, SaysAtOnceThatNothingIsInstalled) {
  start();
  EXPECT_TRUE(mOutcomes.empty());
  EXPECT_EQ(outcome(), Status::NotInstalled);
  EXPECT_NE(reason(), "");
  EXPECT_EQ(startServiceAndWait(service, ample).status, Status::NotInstalled);
}

TEST_F(ServiceActivationTest, RunsAProgramThatIsInstalledAndSaysWhenItHasItsName) {
  mBus.installService(service, slowCommand);
  start();
  const RunningService running;
  EXPECT_TRUE(running.hasName());
  EXPECT_EQ(outcome(), Status::Running);
  EXPECT_EQ(reason(), "");
}

TEST_F(ServiceActivationTest, StartsNothingThatRuns) {
  mBus.installService(service, "/bin/false");
  const RunningService running;
  start();
  EXPECT_EQ(outcome(), Status::Running);
  EXPECT_EQ(startServiceAndWait(service, ample).status, Status::Running);
}

TEST_F(ServiceActivationTest, TellsWhyAProgramCouldNotStart) {
  mBus.installService(service, "/bin/false");
  start();
  EXPECT_EQ(outcome(), Status::Failed);
  EXPECT_NE(reason().find("exited with status 1"), std::string::npos) << reason();
  mBus.installService("org.vorn.OtherServiceTest", "/nonexistent/program");
  const ServiceStart other = startServiceAndWait("org.vorn.OtherServiceTest", ample);
  EXPECT_EQ(other.status, Status::Failed);
  EXPECT_NE(other.error, "");
}

TEST_F(ServiceActivationTest, WaitsNoLongerThanItIsTold) {
  mBus.installService(service, slowCommand);
  start(20ms);
  EXPECT_EQ(outcome(), Status::Timeout);
  EXPECT_EQ(startServiceAndWait(service, 20ms).status, Status::Timeout);
}

TEST_F(ServiceActivationTest, TellsTheEventLoopHowLongItMayWait) {
  mBus.installService(service, slowCommand);
  BusConnection& connection = BusConnection::forThisThread();
  std::optional<std::chrono::microseconds> told;
  connection.setQueuedHandler([&] {
    if (!told) told = connection.timeout();
  });
  start(10min);
  connection.setQueuedHandler({});
  ASSERT_TRUE(told);
  EXPECT_GT(*told, 9min);
  EXPECT_LE(*told, 10min);
}

TEST_F(ServiceActivationTest, NeedsABusAndAName) {
  EXPECT_EQ(startServiceAndWait("no name", ample).status, Status::Failed);
  mBus.installService(service, slowCommand);
  start();
  mBus.end();
  test::serveBusUntil([this] { return !mOutcomes.empty(); });
  ASSERT_EQ(mOutcomes.size(), 1U);
  EXPECT_EQ(mOutcomes.front().status, Status::NoBus);
  EXPECT_EQ(startServiceAndWait(service, ample).status, Status::NoBus);
}

TEST_F(ServiceActivationTest, GivesTheNameToOneProgramAloneUntilThatEnds) {
  std::string error;
  {
    const RunningService running;
    EXPECT_EQ(ServiceName::claim(service, &error), nullptr);
    EXPECT_NE(error.find(service), std::string::npos) << error;
  }
  const auto name = ServiceName::claim(service, &error);
  EXPECT_NE(name, nullptr);
  EXPECT_EQ(ServiceName::claim("no name", &error), nullptr);
  mBus.end();
  EXPECT_EQ(ServiceName::claim("org.vorn.OtherServiceTest", &error), nullptr);
}

}  // namespace
}  // namespace vorn
