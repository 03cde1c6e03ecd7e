#include "ports/ServiceManager.h"

#include <gtest/gtest.h>
#include <systemd/sd-bus.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "ports/BusConnection.h"
#include "ports/MessagePort.h"
#include "support/BusPump.h"
#include "support/FakeServiceManager.h"
#include "support/NotifySocket.h"
#include "support/PrivateBus.h"

namespace vorn {
namespace {

using Calls = std::vector<std::string>;

const TransientService editor{
    "app-vorn-editor@1.service", "editor, launched", "/bin/editor", {"editor", "a b", "$HOME"}, "/home/me"};

class ServiceManagerStarterTest : public testing::Test {
 protected:
  // Starts the service and keeps what is called back.
  void start(const TransientService& service = editor) {
    std::string error;
    EXPECT_TRUE(starter->start(
        service,
        [this](const StartedService& start) {
          ended = start.error;
          isUntaken = start.isUntaken;
        },
        error))
        << error;
  }
  std::string waitForEnd() {
    EXPECT_TRUE(test::serveBusUntil([this] { return ended.has_value(); }));
    return ended.value_or("nothing");
  }

  test::PrivateBus bus;
  std::optional<std::string> ended;
  bool isUntaken = false;
  std::unique_ptr<ServiceStarter> starter = std::make_unique<ServiceStarter>();
};

TEST_F(ServiceManagerStarterTest, AsksForAUnitOfItsOwnForTheProgram) {
  test::FakeServiceManager manager;
  start();
  EXPECT_TRUE(test::serveBusUntil([&] { return !manager.calls().empty(); }));
  EXPECT_EQ(manager.calls(),
            Calls{"StartTransientUnit 'app-vorn-editor@1.service' 'fail' "
                  "[('Description' <s 'editor, launched'>) ('Type' <s 'exec'>) ('ExitType' <s 'cgroup'>) "
                  "('Slice' <s 'app.slice'>) ('CollectMode' <s 'inactive-or-failed'>) "
                  "('WorkingDirectory' <s '-/home/me'>) "
                  "('ExecStartEx' <a(sasas) [('/bin/editor' ['editor' 'a b' '$HOME'] ['no-env-expand'])]>)] []"});
  EXPECT_EQ(ended, std::nullopt);
}

TEST_F(ServiceManagerStarterTest, TellsWhenTheProgramRuns) {
  test::FakeServiceManager manager;
  start();
  EXPECT_TRUE(test::serveBusUntil([&] { return !manager.calls().empty(); }));
  manager.removeJob("app-vorn-editor@2.service", "failed");
  manager.removeJob(editor.unit, "done");
  EXPECT_EQ(waitForEnd(), "");
}

TEST_F(ServiceManagerStarterTest, TellsThatTheProgramCouldNotBeRun) {
  test::FakeServiceManager manager;
  start();
  EXPECT_TRUE(test::serveBusUntil([&] { return !manager.calls().empty(); }));
  manager.removeJob(editor.unit, "failed");
  EXPECT_EQ(waitForEnd(), "the service manager could not run it (failed); its journal tells why");
  EXPECT_FALSE(isUntaken);
}

TEST_F(ServiceManagerStarterTest, TellsWhyTheManagerRefuses) {
  test::FakeServiceManager manager;
  manager.refuse("Unit name is too good");
  start();
  EXPECT_EQ(waitForEnd(), "the service manager says: Unit name is too good");
  EXPECT_TRUE(isUntaken);
}

TEST_F(ServiceManagerStarterTest, TellsThatThereIsNoManagerAndStartsNone) {
  start();
  EXPECT_EQ(waitForEnd(), "the service manager says: Name \"org.freedesktop.systemd1\" does not exist");
  EXPECT_TRUE(isUntaken);
}

TEST_F(ServiceManagerStarterTest, TellsWhatCannotBeSent) {
  test::FakeServiceManager manager;
  TransientService service = editor;
  service.arguments.emplace_back("a\0b", 3);
  std::string error;
  EXPECT_FALSE(starter->start(
      service,
      [this](const StartedService& start) {
        ended = start.error;
        isUntaken = start.isUntaken;
      },
      error));
  EXPECT_EQ(error, "the service manager cannot be told of it");
  EXPECT_EQ(manager.calls(), Calls{});
  EXPECT_EQ(ended, std::nullopt);
}

TEST_F(ServiceManagerStarterTest, TellsThatThereIsNoBus) {
  bus.end();
  EXPECT_FALSE(test::serveBusUntil([] { return false; }));
  std::string error;
  EXPECT_FALSE(starter->start(
      editor,
      [this](const StartedService& start) {
        ended = start.error;
        isUntaken = start.isUntaken;
      },
      error));
  EXPECT_NE(error, "");
  EXPECT_EQ(ended, std::nullopt);
}

TEST_F(ServiceManagerStarterTest, KeepsSeveralStartsApart) {
  test::FakeServiceManager manager;
  std::vector<std::string> order;
  std::string error;
  for (const std::string name : {"one", "two"}) {
    TransientService service = editor;
    service.unit = name + ".service";
    EXPECT_TRUE(starter->start(
        service, [&order, name](const StartedService&) { order.push_back(name); }, error))
        << error;
  }
  EXPECT_TRUE(test::serveBusUntil([&] { return manager.calls().size() == 2; }));
  manager.removeJob("two.service", "done");
  manager.removeJob("one.service", "done");
  EXPECT_TRUE(test::serveBusUntil([&] { return order.size() == 2; }));
  EXPECT_EQ(order, (Calls{"two", "one"}));
}

TEST_F(ServiceManagerStarterTest, HearsOfJobsOnlyWhileAStartIsOnItsWay) {
  test::FakeServiceManager manager;
  int heard = 0;
  const auto count = [](sd_bus_message* message, void* counter, sd_bus_error*) {
    *static_cast<int*>(counter) += sd_bus_message_is_signal(message, nullptr, "JobRemoved") > 0 ? 1 : 0;
    return 0;
  };
  sd_bus_add_filter(BusConnection::forThisThread().handle(), nullptr, count, &heard);
  start();
  EXPECT_TRUE(test::serveBusUntil([&] { return !manager.calls().empty(); }));
  manager.removeJob("other.service", "done");
  manager.removeJob(editor.unit, "done");
  EXPECT_EQ(waitForEnd(), "");
  EXPECT_EQ(heard, 2);
  // The bus has handled what came before this call.
  RemoteMessagePort::lookUp("Any");
  manager.removeJob("other.service", "done");
  ended.reset();
  manager.refuse("No room");
  start();
  EXPECT_NE(waitForEnd(), "");
  EXPECT_EQ(heard, 2);
}

TEST_F(ServiceManagerStarterTest, ForgetsWhatIsOnItsWayAtItsEnd) {
  test::FakeServiceManager manager;
  start();
  EXPECT_TRUE(test::serveBusUntil([&] { return !manager.calls().empty(); }));
  starter.reset();
  manager.removeJob(editor.unit, "done");
  // A second one hears its end, and so the first would have heard its own.
  starter = std::make_unique<ServiceStarter>();
  TransientService second = editor;
  second.unit = "second.service";
  bool isSecondEnded = false;
  std::string error;
  EXPECT_TRUE(starter->start(
      second, [&](const StartedService&) { isSecondEnded = true; }, error))
      << error;
  EXPECT_TRUE(test::serveBusUntil([&] { return manager.calls().size() == 2; }));
  manager.removeJob(second.unit, "done");
  EXPECT_TRUE(test::serveBusUntil([&] { return isSecondEnded; }));
  EXPECT_EQ(ended, std::nullopt);
}

TEST(ServiceManagerUnitTest, IsNamedAfterTheApplication) {
  EXPECT_EQ(applicationUnit("vorn", "org.vorn.Editor_2", "0a"), "app-vorn-org.vorn.Editor_2@0a.service");
  EXPECT_EQ(applicationUnit("vorn", "My-Editor é@", "0a"), "app-vorn-My\\x2dEditor\\x20\\xc3\\xa9\\x40@0a.service");
  EXPECT_EQ(applicationUnit("vorn", "", "0a"), "app-vorn-@0a.service");
}

TEST(ServiceManagerUnitTest, IsNeverLongerThanAUnitsNameMayBe) {
  EXPECT_EQ(applicationUnit("vorn", std::string(300, 'x'), "0a"), "app-vorn-" + std::string(48, 'x') + "@0a.service");
  EXPECT_LT(applicationUnit("vorn", std::string(300, '-'), "0123456789abcdef").size(), 256U);
}

TEST(ServiceManagerNoticeTest, GoesToTheSocketThatTheManagerNames) {
  const test::NotifySocket socket;
  notifyServiceManager("READY=1\nSTATUS=here");
  EXPECT_EQ(socket.next(), "READY=1\nSTATUS=here");
}

TEST(ServiceManagerNoticeTest, GoesNowhereWithoutAManager) {
  const test::NotifySocket socket;
  const std::string path = std::getenv("NOTIFY_SOCKET");
  ::unsetenv("NOTIFY_SOCKET");
  notifyServiceManager("READY=1");
  ::setenv("NOTIFY_SOCKET", path.c_str(), 1);
  notifyServiceManager("STOPPING=1");
  EXPECT_EQ(socket.next(), "STOPPING=1");
}

}  // namespace
}  // namespace vorn
