#include "ports/BusObject.h"

#include <gtest/gtest.h>
#include <systemd/sd-bus.h>

#include <cctype>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <future>
#include <limits>
#include <memory>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "ports/BusConnection.h"
#include "support/BusPump.h"
#include "support/LoopThread.h"
#include "support/PrivateBus.h"

namespace vorn {
namespace {

using Values = std::vector<PropertyList>;

constexpr const char* busName = "org.vorn.BusObjectTest";
constexpr const char* path = "/org/vorn/BusObjectTest";
constexpr const char* interface = "org.vorn.BusObjectTest1";

BusObjectDescription describe(std::vector<BusMethod> methods, std::vector<BusSignal> signals = {}) {
  return {busName, path, interface, std::move(methods), std::move(signals)};
}

// The object lives on a thread of its own; calls come from the test's thread.
class BusObjectTest : public testing::Test {
 protected:
  ~BusObjectTest() override {
    mThread.run([this] { mObject.reset(); });
  }

  void put(BusObjectDescription description) {
    mThread.run([&] {
      std::string error;
      mObject = BusObject::create(std::move(description), &error);
      EXPECT_NE(mObject, nullptr) << error;
    });
  }
  // A method "Give" that returns this one value.
  void putGiving(const std::string& type, const PropertyList& value) {
    mThread.run([this] { mObject.reset(); });
    put(describe({{"Give", {}, {{type, "value"}}, [value](const Values&) { return BusReply::success({value}); }}}));
  }

  template <typename... Arguments>
  std::string call(const char* member, const char* types = "", Arguments... arguments) {
    sd_bus_error error{};
    const int result = sd_bus_call_method(BusConnection::forThisThread().handle(), busName, path, interface, member,
                                          &error, nullptr, types, arguments...);
    const std::string text = result < 0 ? std::string(error.name) + ": " + error.message : std::string();
    sd_bus_error_free(&error);
    return text;
  }
  // What sd-bus prints of the answer's body, without blanks and quotes; empty when there is none.
  std::string answerOf(const char* member) {
    sd_bus_message* reply = nullptr;
    if (sd_bus_call_method(BusConnection::forThisThread().handle(), busName, path, interface, member, nullptr, &reply,
                           "") < 0)
      return {};
    char* text = nullptr;
    std::size_t size = 0;
    FILE* stream = open_memstream(&text, &size);
    sd_bus_message_dump(reply, stream, SD_BUS_MESSAGE_DUMP_SUBTREE_ONLY);
    std::fclose(stream);
    std::string dumped;
    for (const char character : std::string(text, size)) {
      if (!std::isspace(static_cast<unsigned char>(character)) && character != '"') dumped += character;
    }
    std::free(text);
    sd_bus_message_unref(reply);
    return dumped;
  }

  test::PrivateBus mBus;
  std::unique_ptr<BusObject> mObject;
  test::LoopThread mThread;
};

TEST_F(BusObjectTest, AnswersLaterAlsoWhenItIsGone) {
  std::vector<BusReturn> waiting;
  BusMethod late{"Late", {{"s", "text"}}, {{"s", "same"}}, {}};
  late.callLater = [&](const Values& given, const std::string& connection, const BusReturn& answer) {
    EXPECT_EQ(connection.substr(0, 1), ":");
    waiting.push_back(
        [given, answer](const BusReply& reply) { answer(reply.errorName.empty() ? BusReply::success(given) : reply); });
  };
  put(describe({late}));
  const auto waits = [&] {
    bool result = false;
    mThread.run([&] { result = !waiting.empty(); });
    return result;
  };
  for (const BusReply& reply : {BusReply::success(), BusReply::failure("org.vorn.Error.Late", "Too late")}) {
    std::future<std::string> called = std::async(std::launch::async, [this] { return call("Late", "s", "text"); });
    while (!waits()) std::this_thread::yield();
    EXPECT_EQ(called.wait_for(std::chrono::seconds(0)), std::future_status::timeout);
    mThread.run([&] {
      if (!reply.errorName.empty()) mObject.reset();
      std::exchange(waiting, {}).front()(reply);
    });
    EXPECT_EQ(called.get(), reply.errorName.empty() ? "" : "org.vorn.Error.Late: Too late");
  }
}

TEST_F(BusObjectTest, GivesItsMethodsTheValuesOfEveryBasicType) {
  Values seen;
  put(describe({{"Take",
                 {{"b", "b"}, {"n", "n"}, {"q", "q"}, {"i", "i"}, {"u", "u"}, {"x", "x"}, {"t", "t"}, {"s", "s"}},
                 {},
                 [&](const Values& inputs) {
                   seen = inputs;
                   return BusReply::success();
                 }}}));
  EXPECT_EQ(call("Take", "bnqiuxts", 1, -5, 65535, -7, 4000000000U, std::int64_t{-9}, std::uint64_t{1} << 63, "text"),
            "");
  mThread.run([&] { EXPECT_EQ(seen, (Values{true, -5, 65535, -7, 4000000000U, -9, std::uint64_t{1} << 63, "text"})); });
}

TEST_F(BusObjectTest, ReturnsValuesOfEveryType) {
  const PropertyList row = PropertyList::array({PropertyList("a"), PropertyList(7)});
  putGiving("a(sq)", PropertyList::array({row, row}));
  EXPECT_EQ(answerOf("Give"), "ARRAY(sq){STRUCTsq{STRINGa;UINT167;};STRUCTsq{STRINGa;UINT167;};};");
  putGiving("a{sv}", PropertyList::dictionary(
                         {{"b", true}, {"n", 5}, {"s", "x"}, {"t", PropertyList::array({PropertyList("y")})}}));
  EXPECT_EQ(answerOf("Give"),
            "ARRAY{sv}{DICT_ENTRYsv{STRINGb;VARIANTb{BOOLEANtrue;};};"
            "DICT_ENTRYsv{STRINGn;VARIANTx{INT645;};};DICT_ENTRYsv{STRINGs;VARIANTs{STRINGx;};};"
            "DICT_ENTRYsv{STRINGt;VARIANTas{ARRAYs{STRINGy;};};};};");
  putGiving("aas", PropertyList::array({PropertyList::array({PropertyList("z")}), PropertyList::array()}));
  EXPECT_EQ(answerOf("Give"), "ARRAYas{ARRAYs{STRINGz;};ARRAYs{};};");
  putGiving("t", std::numeric_limits<std::uint64_t>::max());
  EXPECT_EQ(answerOf("Give"), "UINT6418446744073709551615;");
}

TEST_F(BusObjectTest, ReportsAResultThatDoesNotFit) {
  const std::string error = "org.freedesktop.DBus.Error.Failed: The result does not fit the method's types";
  const std::vector<std::pair<std::string, PropertyList>> misfits = {
      {"q", 65536},
      {"q", -1},
      {"x", std::uint64_t{1} << 63},
      {"i", "5"},
      {"b", 1},
      {"s", 5},
      {"s", PropertyList(std::string_view("a\0b", 3))},
      {"s", "\xff"},
      {"as", PropertyList("a")},
      {"as", PropertyList::array({PropertyList(1)})},
      {"(ss)", PropertyList::array({PropertyList("a")})},
      {"(s)", PropertyList::array({PropertyList("a"), PropertyList("b")})},
      {"a{sv}", PropertyList::array()},
      {"a{sv}", PropertyList::dictionary({{"real", 1.5}})},
  };
  for (const auto& [type, value] : misfits) {
    putGiving(type, value);
    EXPECT_EQ(call("Give"), error) << type << " " << value.description();
  }
}

TEST_F(BusObjectTest, ReturnsTheErrorsOfItsMethods) {
  put(describe({{"Fail", {}, {}, [](const Values&) { return BusReply::failure("org.vorn.Error.Busy", "Not now"); }}}));
  EXPECT_EQ(call("Fail"), "org.vorn.Error.Busy: Not now");
}

TEST_F(BusObjectTest, IsNotCalledWithOtherTypes) {
  int calls = 0;
  put(describe({{"Take", {{"i", "number"}}, {}, [&](const Values&) {
                   ++calls;
                   return BusReply::success();
                 }}}));
  EXPECT_EQ(call("Take", "s", "5").substr(0, 40), "org.freedesktop.DBus.Error.InvalidArgs: ");
  EXPECT_EQ(call("Take", "ii", 5, 6).substr(0, 40), "org.freedesktop.DBus.Error.InvalidArgs: ");
  mThread.run([&] { EXPECT_EQ(calls, 0); });
}

TEST_F(BusObjectTest, TellsTheNamesOfItsMethodsAndArguments) {
  put(describe({{"Add",
                 {{"i", "first"}, {"i", "second"}},
                 {{"i", "sum"}},
                 [](const Values& inputs) { return BusReply::success({inputs[0].toInt() + inputs[1].toInt()}); }}},
               {{"Added", {{"i", "total"}}}}));
  sd_bus_message* reply = nullptr;
  ASSERT_GE(sd_bus_call_method(BusConnection::forThisThread().handle(), busName, path,
                               "org.freedesktop.DBus.Introspectable", "Introspect", nullptr, &reply, ""),
            0);
  const char* text = nullptr;
  sd_bus_message_read(reply, "s", &text);
  const std::string xml = text;
  sd_bus_message_unref(reply);
  for (const char* part : {"<method name=\"Add\">", "name=\"first\"", "name=\"second\"", "name=\"sum\"",
                           "<signal name=\"Added\">", "name=\"total\""}) {
    EXPECT_NE(xml.find(part), std::string::npos) << part;
  }
}

TEST_F(BusObjectTest, BroadcastsItsSignals) {
  put(describe({}, {{"Added", {{"i", "number"}, {"s", "text"}}}}));
  std::string heard;
  sd_bus_slot* slot = nullptr;
  const auto hear = [](sd_bus_message* message, void* text, sd_bus_error*) {
    std::int32_t number = 0;
    const char* word = nullptr;
    if (sd_bus_message_read(message, "is", &number, &word) > 0) {
      *static_cast<std::string*>(text) = std::to_string(number) + word;
    }
    return 0;
  };
  ASSERT_GE(sd_bus_match_signal(BusConnection::forThisThread().handle(), &slot, busName, path, interface, "Added", hear,
                                &heard),
            0);
  mThread.run([this] {
    EXPECT_FALSE(mObject->emit("Removed", {}));
    EXPECT_FALSE(mObject->emit("Added", {PropertyList(5)}));
    EXPECT_FALSE(mObject->emit("Added", {PropertyList("5"), PropertyList("x")}));
    EXPECT_TRUE(mObject->emit("Added", {PropertyList(5), PropertyList("x")}));
  });
  EXPECT_TRUE(test::serveBusUntil([&] { return !heard.empty(); }));
  EXPECT_EQ(heard, "5x");
  sd_bus_slot_unref(slot);
}

TEST_F(BusObjectTest, CannotBePutThereTwice) {
  put(describe({}));
  std::string error;
  EXPECT_EQ(BusObject::create(describe({}), &error), nullptr);
  EXPECT_EQ(error, "Another program has the name org.vorn.BusObjectTest");
  mThread.run([this] { mObject.reset(); });
  EXPECT_NE(BusObject::create(describe({}), &error), nullptr);
}

TEST_F(BusObjectTest, IsRefusedWithADescriptionThatTheBusDoesNotKnow) {
  std::string error;
  const auto done = [](const Values&) { return BusReply::success(); };
  BusObjectDescription badName = describe({});
  badName.busName = "no name";
  EXPECT_EQ(BusObject::create(badName, &error), nullptr);
  EXPECT_EQ(error, "Not a valid bus name: no name");
  BusObjectDescription badPath = describe({});
  badPath.path = "no path";
  EXPECT_EQ(BusObject::create(badPath, &error), nullptr);
  EXPECT_EQ(BusObject::create(describe({{"Take", {{"as", "words"}}, {}, done}}), &error), nullptr);
  EXPECT_EQ(error, "A method takes more than basic types: Take");
  EXPECT_EQ(BusObject::create(describe({{"Give", {}, {{"(", "odd"}}, done}}), &error), nullptr);
  EXPECT_EQ(BusObject::create(describe({{"no name", {}, {}, done}}), &error), nullptr);
  EXPECT_NE(BusObject::create(describe({{"Give", {}, {}, done}}), &error), nullptr);
}

TEST_F(BusObjectTest, MayBeEndedByItsOwnMethod) {
  put(describe({{"End", {}, {{"s", "text"}}, [this, text = std::string(100, 'x')](const Values&) {
                   mObject.reset();
                   return BusReply::success({text});
                 }}}));
  EXPECT_EQ(answerOf("End"), "STRING" + std::string(100, 'x') + ";");
  EXPECT_EQ(answerOf("End"), "");
}

}  // namespace
}  // namespace vorn
