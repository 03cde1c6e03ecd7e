#include "core-engine/news/NotificationScreen.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "core-engine/TestParts.h"
#include "ports/MessagePort.h"
#include "support/BusPump.h"
#include "support/FakeNotifications.h"
#include "support/PrivateBus.h"
#include "support/TemporaryFolder.h"

namespace vorn::engine::test {
namespace {

using vorn::test::FakeNotifications;
using vorn::test::serveBusUntil;
using Calls = std::vector<std::string>;
using namespace std::chrono_literals;

ScreenMessage change(const std::string& title, const std::string& text = {}) {
  return {ScreenMessage::Kind::Change, title, text};
}
const ScreenMessage warning{ScreenMessage::Kind::Warning, "Low", "5% left"};

std::string notify(const std::string& title, const std::string& text = {}, int replaced = 0) {
  return "Notify 'Skarn' u" + std::to_string(replaced) + " 'org.vorn.SkarnConfigurator' '" + title + "' '" + text +
         "' [] [['category' <s 'device'>] ['desktop-entry' <s 'org.vorn.SkarnConfigurator'>] "
         "['transient' <b b1>] ['urgency' <y y1>]] i2000";
}
std::string warn(int replaced = 0) {
  return "Notify 'Skarn' u" + std::to_string(replaced) +
         " 'battery-caution' 'Low' '5% left' [] [['category' <s 'device'>] "
         "['desktop-entry' <s 'org.vorn.SkarnConfigurator'>] ['transient' <b b0>] ['urgency' <y y2>]] i15000";
}

class NotificationScreenTest : public testing::Test {
 protected:
  // A daemon's helpers may hold its end of the connection for a moment longer than itself.
  ~NotificationScreenTest() override { BusConnection::forThisThread().close(); }

  // What the service is asked for, once these are as many calls.
  Calls calls(std::size_t count) {
    EXPECT_TRUE(serveBusUntil([&] { return service->calls().size() >= count; }));
    return service->calls();
  }
  // Everything that is on its way to the screen or from it has come: the bus keeps the order of what it passes on.
  void settle() {
    for (int round = 0; round < 3; ++round) {
      RemoteMessagePort::lookUp("Any");
      if (service) service->calls();
      BusConnection::forThisThread().process();
    }
  }
  // Lets time pass between two messages.
  void pass(Scheduler::Duration duration) {
    settle();
    scheduler.advance(duration);
  }
  void start(std::uint32_t firstNumber = 1) { service = std::make_unique<FakeNotifications>(firstNumber); }

  vorn::test::PrivateBus bus;
  TemporaryFolder folder;
  ManualScheduler scheduler;
  std::unique_ptr<FakeNotifications> service;
  NotificationScreen screen{scheduler};
};

TEST_F(NotificationScreenTest, ShowsAChangeForAMomentWithoutATrace) {
  start();
  screen.show(change("Sensitivity: 400 DPI", "Stage 1 of 3"));
  EXPECT_EQ(calls(1), Calls{notify("Sensitivity: 400 DPI", "Stage 1 of 3")});
}

TEST_F(NotificationScreenTest, ShowsAWarningForLongerAndMoreUrgently) {
  start();
  screen.show(warning);
  EXPECT_EQ(calls(1), Calls{warn()});
}

TEST_F(NotificationScreenTest, ReplacesTheFormerMessage) {
  start(7);
  screen.show(change("One"));
  calls(1);
  pass(NotificationScreen::interval);
  screen.show(change("Two"));
  calls(2);
  pass(NotificationScreen::interval);
  screen.show(change("Three"));
  EXPECT_EQ(calls(3), (Calls{notify("One"), notify("Two", "", 7), notify("Three", "", 7)}));
}

TEST_F(NotificationScreenTest, KeepsAWarningBesideChanges) {
  start(7);
  screen.show(warning);
  screen.show(change("One"));
  calls(2);
  pass(NotificationScreen::interval);
  screen.show(change("Two"));
  calls(3);
  pass(NotificationScreen::interval);
  screen.show(warning);
  EXPECT_EQ(calls(4), (Calls{notify("One"), warn(), notify("Two", "", 7), warn(8)}));
}

TEST_F(NotificationScreenTest, ShowsTheLastOfManyThatComeAtOnce) {
  start();
  screen.show(change("First"));
  calls(1);
  for (int number = 1; number <= 1000; ++number) {
    screen.show(change(std::to_string(number)));
    settle();
    if (number % 250 == 0) scheduler.advance(NotificationScreen::interval);
  }
  settle();
  EXPECT_EQ(calls(5), (Calls{notify("First"), notify("250", "", 1), notify("500", "", 1), notify("750", "", 1),
                             notify("1000", "", 1)}));
}

TEST_F(NotificationScreenTest, WaitsForAnAnswerBeforeTheNextMessage) {
  start();
  service->hang();
  screen.show(change("One"));
  calls(1);
  pass(NotificationScreen::interval);
  screen.show(change("Two"));
  pass(NotificationScreen::interval);
  EXPECT_EQ(service->calls(), Calls{notify("One")});
  // It has not answered in time, and what it may have shown is not known.
  EXPECT_EQ(calls(2), (Calls{notify("One"), notify("Two")}));
}

TEST_F(NotificationScreenTest, ShowsNothingOldWhenTheServiceAnswersAtLast) {
  start();
  service->hang();
  screen.show(change("One"));
  calls(1);
  pass(NotificationScreen::interval);
  screen.show(change("Two"));
  scheduler.advance(NotificationScreen::interestInChanges + 1ms);
  service.reset();
  start(5);
  screen.show(warning);
  pass(NotificationScreen::interval);
  EXPECT_EQ(calls(1), Calls{warn()});
}

TEST_F(NotificationScreenTest, GoesOnAfterARefusal) {
  start();
  screen.show(change("One"));
  calls(1);
  pass(NotificationScreen::interval);
  service->refuse();
  screen.show(change("Two"));
  calls(2);
  pass(NotificationScreen::interval);
  screen.show(change("Three"));
  EXPECT_EQ(calls(3), (Calls{notify("One"), notify("Two", "", 1), notify("Three")}));
}

TEST_F(NotificationScreenTest, ReplacesNothingOfAnotherService) {
  start(7);
  screen.show(change("One"));
  calls(1);
  pass(NotificationScreen::interval);
  service.reset();
  start(100);
  screen.show(change("Two"));
  pass(NotificationScreen::interval);
  EXPECT_EQ(calls(1), Calls{notify("Two")});
}

TEST_F(NotificationScreenTest, ShowsItToAServiceThatComesSoonAfter) {
  screen.show(change("One"));
  screen.show(change("Two"));
  screen.show(warning);
  settle();
  start();
  EXPECT_EQ(calls(2), (Calls{notify("Two"), warn()}));
}

TEST_F(NotificationScreenTest, ShowsAWarningButNoOldChangeToAServiceThatComesLater) {
  screen.show(change("One"));
  screen.show(warning);
  settle();
  scheduler.advance(NotificationScreen::interestInChanges + 1ms);
  start();
  EXPECT_EQ(calls(1), Calls{warn()});
}

TEST_F(NotificationScreenTest, HasTheBusStartAServiceThatIsInstalledOnceInAWhile) {
  const std::string count = folder.path("count");
  bus.installService("org.freedesktop.Notifications", "/bin/sh -c \"echo started >> " + count + "; exit 1\"");
  const auto starts = [&] { return std::filesystem::exists(count) ? std::filesystem::file_size(count) / 8 : 0; };
  screen.show(change("One"));
  EXPECT_TRUE(serveBusUntil([&] { return starts() == 1; }));
  for (int round = 0; round < 10; ++round) {
    screen.show(change("Two"));
    pass(NotificationScreen::interval);
  }
  EXPECT_EQ(starts(), 1U);
  scheduler.advance(NotificationScreen::untilRest);
  screen.show(change("Three"));
  EXPECT_TRUE(serveBusUntil([&] { return starts() == 2; }));
}

TEST_F(NotificationScreenTest, RestsSoonAfterTheLastMessage) {
  EXPECT_EQ(scheduler.pending(), 0U);
  start(7);
  screen.show(change("One"));
  calls(1);
  settle();
  scheduler.advance(NotificationScreen::untilRest);
  EXPECT_EQ(scheduler.pending(), 0U);
  // What it has shown then is gone.
  screen.show(change("Two"));
  EXPECT_EQ(calls(2), (Calls{notify("One"), notify("Two")}));
}

TEST_F(NotificationScreenTest, SchedulesNothingAfterItsEnd) {
  {
    NotificationScreen other{scheduler};
    other.show(change("One"));
  }
  EXPECT_EQ(scheduler.pending(), 0U);
}

}  // namespace
}  // namespace vorn::engine::test
