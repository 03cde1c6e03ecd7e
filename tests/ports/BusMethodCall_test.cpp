#include "ports/BusMethodCall.h"

#include <gtest/gtest.h>
#include <systemd/sd-bus.h>

#include <algorithm>
#include <future>
#include <memory>
#include <optional>
#include <thread>

#include "ports/BusConnection.h"
#include "ports/BusObject.h"
#include "support/BusPump.h"
#include "support/LoopThread.h"
#include "support/PrivateBus.h"

namespace vorn {
namespace {

using Values = std::vector<PropertyList>;
using Status = BusAnswer::Status;

constexpr std::chrono::seconds timeout{20};
const BusTarget target{"org.vorn.CallTest", "/org/vorn/CallTest", "org.vorn.CallTest1"};

// The object lives on a thread of its own; calls come from the test's thread.
class BusMethodCallOnABusTest : public testing::Test {
 protected:
  ~BusMethodCallOnABusTest() override {
    mThread.run([this] { mObject.reset(); });
  }
  void put(std::vector<BusMethod> methods) {
    mThread.run([&] {
      mObject = BusObject::create({target.busName, target.path, target.interface, std::move(methods), {}});
      EXPECT_NE(mObject, nullptr);
    });
  }

  test::PrivateBus mBus;
  std::unique_ptr<BusObject> mObject;
  test::LoopThread mThread;
};

TEST_F(BusMethodCallOnABusTest, CarryValuesOfEveryTypeBothWays) {
  const std::vector<BusArgument> basic = {{"b", "b"}, {"q", "q"}, {"i", "i"}, {"u", "u"},
                                          {"x", "x"}, {"t", "t"}, {"s", "s"}};
  const PropertyList output = PropertyList::array({PropertyList::array({5U, 7, -1}), PropertyList::array({6U, 9, 1})});
  const PropertyList state = PropertyList::dictionary(
      {{"flag", true}, {"number", -3}, {"text", "grün"}, {"texts", PropertyList::array({"a", "b"})}});
  put({{"Echo", basic, basic, [](const Values& given) { return BusReply::success(given); }},
       {"Give", {}, {{"a(tqi)", "output"}, {"a{sv}", "state"}}, [=](const Values&) {
          return BusReply::success({output, state});
        }}});
  const Values values = {true, 65535, -5, 4000000000U, -6, ~std::uint64_t{0}, "text"};
  std::vector<BusInput> inputs;
  for (std::size_t index = 0; index < values.size(); ++index) inputs.push_back({basic[index].type, values[index]});
  const BusAnswer echo = callBusMethod(target, "Echo", inputs, timeout);
  EXPECT_EQ(echo.status, Status::Success) << echo.error;
  EXPECT_EQ(echo.values, values);
  const BusAnswer given = callBusMethod(target, "Give", {}, timeout);
  EXPECT_EQ(given.status, Status::Success) << given.error;
  EXPECT_EQ(given.values, (Values{output, state}));
}

TEST_F(BusMethodCallOnABusTest, MayBePostedInTheirOrderWithoutWaiting) {
  Values got;
  put({{"Note", {{"i", "number"}}, {}, [&](const Values& given) {
          got.push_back(given[0]);
          return BusReply::success();
        }}});
  EXPECT_TRUE(postBusMethod(target, "Note", {{"i", 1}}));
  EXPECT_TRUE(postBusMethod(target, "Note", {{"i", 2}}));
  EXPECT_FALSE(postBusMethod(target, "Note", {{"i", "no number"}}));
  EXPECT_FALSE(postBusMethod({"no name", target.path, target.interface}, "Note", {{"i", 4}}));
  // Behind the others.
  EXPECT_EQ(callBusMethod(target, "Note", {{"i", 3}}, timeout).status, Status::Success);
  mThread.run([&] { EXPECT_EQ(got, (Values{1, 2, 3})); });
}

TEST_F(BusMethodCallOnABusTest, ComeWithTheNameOfTheirConnectionWhereThatIsAskedFor) {
  std::string caller;
  BusMethod method{"Who", {}, {}, {}, {}};
  method.callFrom = [&](const Values&, const std::string& connection) {
    caller = connection;
    return BusReply::success();
  };
  put({method});
  EXPECT_EQ(callBusMethod(target, "Who", {}, timeout).status, Status::Success);
  const char* own = nullptr;
  sd_bus_get_unique_name(BusConnection::forThisThread().handle(), &own);
  mThread.run([&] { EXPECT_EQ(caller, own); });
}

TEST_F(BusMethodCallOnABusTest, TellWhatWentWrong) {
  put({{"Refuse", {}, {}, [](const Values&) { return BusReply::failure("org.vorn.CallTest1.Error.No", "No!"); }}});
  const BusAnswer refused = callBusMethod(target, "Refuse", {}, timeout);
  EXPECT_EQ(refused.status, Status::Error);
  EXPECT_EQ(refused.error, "No!");
  EXPECT_EQ(callBusMethod(target, "Nothing", {}, timeout).status, Status::Error);
  EXPECT_EQ(callBusMethod(target, "no name", {}, timeout).status, Status::Invalid);
  EXPECT_EQ(callBusMethod(target, "Refuse", {{"i", "text"}}, timeout).status, Status::Invalid);
  EXPECT_EQ(callBusMethod({"org.vorn.Nobody", "/a", "a.b"}, "Refuse", {}, timeout).status, Status::NoOwner);
}

TEST_F(BusMethodCallOnABusTest, MayBeMadeWithoutBlockingInTheirOrder) {
  put({{"Echo", {{"s", "text"}}, {{"s", "text"}}, [](const Values& given) { return BusReply::success(given); }},
       {"Refuse", {}, {}, [](const Values&) { return BusReply::failure("org.vorn.CallTest1.Error.No", "No!"); }}});
  std::vector<BusAnswer> answers;
  const auto note = [&](const BusAnswer& answer) { answers.push_back(answer); };
  callBusMethodLater(target, "Echo", {{"s", "first"}}, timeout, note);
  callBusMethodLater(target, "Refuse", {}, timeout, note);
  callBusMethodLater(target, "Echo", {{"s", "third"}}, timeout, note);
  callBusMethodLater({"org.vorn.Nobody", "/a", "a.b"}, "Do", {}, timeout, note);
  EXPECT_EQ(answers.size(), 0U);
  ASSERT_TRUE(test::serveBusUntil([&] { return answers.size() == 4; }));
  // The bus itself says that nobody is there, and perhaps sooner.
  std::stable_partition(answers.begin(), answers.end(),
                        [](const BusAnswer& each) { return each.status != Status::NoOwner; });
  EXPECT_EQ(answers[0].values, Values{"first"});
  EXPECT_EQ(answers[1].status, Status::Error);
  EXPECT_EQ(answers[1].error, "No!");
  EXPECT_EQ(answers[1].errorName, "org.vorn.CallTest1.Error.No");
  EXPECT_EQ(answers[2].values, Values{"third"});
  EXPECT_EQ(answers[3].status, Status::NoOwner);
}

TEST_F(BusMethodCallOnABusTest, ThatDoNotBlockTellAtOnceWhenTheyCannotBeMade) {
  std::vector<Status> statuses;
  const auto note = [&](const BusAnswer& answer) { statuses.push_back(answer.status); };
  callBusMethodLater(target, "no name", {}, timeout, note);
  EXPECT_EQ(statuses, std::vector{Status::Invalid});
}

TEST_F(BusMethodCallOnABusTest, ThatDoNotBlockEndWhenTheTimeHasPassed) {
  put({{"Do", {}, {}, [](const Values&) { return BusReply::success(); }}});
  std::promise<void> isHeld;
  std::promise<void> isOver;
  mThread.loop().perform([&] {
    isHeld.set_value();
    isOver.get_future().wait();
  });
  isHeld.get_future().wait();
  std::optional<Status> status;
  callBusMethodLater(target, "Do", {}, std::chrono::milliseconds(20),
                     [&](const BusAnswer& answer) { status = answer.status; });
  EXPECT_TRUE(test::serveBusUntil([&] { return status.has_value(); }));
  isOver.set_value();
  EXPECT_EQ(status, Status::Timeout);
}

TEST_F(BusMethodCallOnABusTest, EndWhenTheTimeHasPassed) {
  put({{"Do", {}, {}, [](const Values&) { return BusReply::success(); }}});
  mThread.run([] {
    // While the object's thread is held here, nobody answers.
    BusAnswer answer;
    std::thread caller([&] { answer = callBusMethod(target, "Do", {}, std::chrono::milliseconds(20)); });
    caller.join();
    EXPECT_EQ(answer.status, Status::Timeout);
  });
}

TEST(BusMethodCallTest, NeedsABus) {
  test::PrivateBus bus;
  EXPECT_EQ(callBusMethod(target, "Do", {}, timeout).status, Status::NoOwner);
  std::vector<Status> later;
  const auto note = [&](const BusAnswer& answer) { later.push_back(answer.status); };
  bus.end();
  EXPECT_EQ(callBusMethod(target, "Do", {}, timeout).status, Status::NoBus);
  callBusMethodLater(target, "Do", {}, timeout, note);
  EXPECT_EQ(later, std::vector{Status::NoBus});
}

}  // namespace
}  // namespace vorn
