// The choice of the mouse: asked of the engine alone, and without waiting.
#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "link/PortEngineLink.h"
#include "ports/BusObject.h"
#include "ports/SignalWatch.h"
#include "protocol/Mice.h"
#include "support/BusPump.h"
#include "support/LoopThread.h"
#include "support/PrivateBus.h"

namespace vorn {
namespace {

using Outcome = MiceAnswer::Outcome;

const PropertyList mouse =
    PropertyList::dictionary({{"id", "usb-1"}, {"controls", PropertyList::array({"03", "06"})}, {"isInUse", true}});

// The object as the engine has it. What it is called with goes to calls: the method and what it was given.
BusObjectDescription miceObject(std::vector<PropertyList>& calls, const std::string& error) {
  const auto named = [&](const char* method, const BusArgument& input) {
    return BusMethod{method, {input}, {}, [&, method](const std::vector<PropertyList>& given) {
                       calls.push_back(PropertyList::array({method, given[0]}));
                       return error.empty() ? BusReply::success() : BusReply::failure(error, "No");
                     }};
  };
  return {mice::busName,
          mice::objectPath,
          mice::interface,
          {{mice::methods::List,
            {},
            {{"aa{sv}", "mice"}},
            [](const auto&) { return BusReply::success({PropertyList::array({mouse})}); }},
           named(mice::methods::Choose, {"s", "id"}),
           named(mice::methods::Teach, {"s", "control"}),
           named(mice::methods::Forget, {"s", "control"}),
           named(mice::methods::SetResolution, {"u", "resolution"})},
          {{mice::signalNames::Changed, {}},
           {mice::signalNames::Taught, {{"s", "control"}, {"b", "isTaught"}, {"s", "source"}, {"s", "former"}}}}};
}

class PortEngineLinkMiceTest : public testing::Test {
 protected:
  ~PortEngineLinkMiceTest() override {
    mThread.run([&] {
      mPort.reset();
      mMice.reset();
    });
  }
  // An engine on a thread of this process, on one connection.
  void startEngine(bool hasMice = true) {
    mThread.run([&] {
      if (hasMice) mMice = BusObject::create(miceObject(mCalls, mError));
      mPort = LocalMessagePort::create(enginePortName, {});
    });
    mLink.watchEngine([](bool) {});
  }
  void emit(const char* signal, const std::vector<PropertyList>& values) {
    mThread.run([&] { EXPECT_TRUE(mMice->emit(signal, values)); });
  }
  MiceAnswer ask(const MiceRequest& request) {
    std::optional<MiceAnswer> answer;
    mLink.askMice(request, [&](const MiceAnswer& given) { answer = given; });
    EXPECT_TRUE(test::serveBusUntil([&] { return answer.has_value(); }));
    return answer.value_or(MiceAnswer());
  }

  test::PrivateBus mBus;
  PortEngineLink mLink;
  std::vector<PropertyList> mCalls;
  std::string mError;
  std::unique_ptr<BusObject> mMice;
  std::unique_ptr<LocalMessagePort> mPort;
  test::LoopThread mThread;
};

TEST_F(PortEngineLinkMiceTest, ListsTheMice) {
  startEngine();
  const MiceAnswer answer = ask({});
  EXPECT_EQ(answer.outcome, Outcome::Done);
  EXPECT_EQ(answer.mice, PropertyList::array({mouse}));
}

TEST_F(PortEngineLinkMiceTest, HandsOverWhatIsAskedFor) {
  startEngine();
  for (const MiceRequest& request :
       {MiceRequest{MiceCall::Choose, "usb-1"}, MiceRequest{MiceCall::Teach, "29"}, MiceRequest{MiceCall::Teach},
        MiceRequest{MiceCall::Forget, "29"}, MiceRequest{.call = MiceCall::SetResolution, .resolution = 1200}})
    EXPECT_EQ(ask(request).outcome, Outcome::Done);
  const std::vector<PropertyList> expected = {PropertyList::array({"Choose", "usb-1"}),
                                              PropertyList::array({"Teach", "29"}), PropertyList::array({"Teach", ""}),
                                              PropertyList::array({"Forget", "29"}),
                                              PropertyList::array({"SetResolution", 1200})};
  EXPECT_EQ(mCalls, expected);
}

TEST_F(PortEngineLinkMiceTest, TellsWhyNothingWasDone) {
  startEngine();
  const std::pair<const char*, Outcome> errors[] = {{mice::errors::NotFound, Outcome::NotFound},
                                                    {mice::errors::NotAllowed, Outcome::NotAllowed},
                                                    {mice::errors::NotTeachable, Outcome::NotTeachable},
                                                    {mice::errors::BadArgument, Outcome::BadArgument},
                                                    {mice::errors::Busy, Outcome::Busy},
                                                    {mice::errors::NotSaved, Outcome::NotSaved},
                                                    {"org.example.Error.Other", Outcome::NoAnswer}};
  for (const auto& [name, outcome] : errors) {
    mError = name;
    EXPECT_EQ(ask({MiceCall::Choose, "usb-1"}).outcome, outcome) << name;
  }
}

TEST_F(PortEngineLinkMiceTest, KnowsAnEngineThatOffersNoChoice) {
  startEngine(false);
  EXPECT_EQ(ask({}).outcome, Outcome::NoMice);
}

TEST_F(PortEngineLinkMiceTest, AsksNobodyWithoutAnEngine) {
  std::vector<Outcome> outcomes;
  const auto note = [&](const MiceAnswer& answer) { outcomes.push_back(answer.outcome); };
  mLink.askMice({}, note);
  mLink.watchEngine([](bool) {});
  mLink.askMice({}, note);
  EXPECT_EQ(outcomes, (std::vector{Outcome::NoEngine, Outcome::NoEngine}));
}

TEST_F(PortEngineLinkMiceTest, TellsOfChangesAndOfWhatWasTaughtUntilItIsNoLongerAskedTo) {
  startEngine();
  int changes = 0;
  std::vector<TaughtControl> taught;
  mLink.watchMice({[&] { ++changes; }, [&](const TaughtControl& control) { taught.push_back(control); }});
  emit(mice::signalNames::Changed, {});
  emit(mice::signalNames::Taught, {"29", true, "KEY_Z", "43"});
  emit(mice::signalNames::Taught, {"29", false, "", ""});
  ASSERT_TRUE(test::serveBusUntil([&] { return taught.size() == 2; }));
  EXPECT_EQ(changes, 1);
  EXPECT_EQ(taught, (std::vector<TaughtControl>{{"29", true, "KEY_Z", "43"}, {"29", false}}));
  mLink.watchMice({});
  emit(mice::signalNames::Changed, {});
  emit(mice::signalNames::Taught, {"29", true, "KEY_Z", ""});
  ask({});
  EXPECT_EQ(changes, 1);
  EXPECT_EQ(taught.size(), 2U);
}

TEST_F(PortEngineLinkMiceTest, BelievesTheEngineAlone) {
  // Somebody who has the name of the mice and is not the engine.
  std::vector<PropertyList> asked;
  std::string error;
  std::unique_ptr<BusObject> impostor;
  test::LoopThread other;
  other.run([&] {
    impostor = BusObject::create(miceObject(asked, error));
    ASSERT_NE(impostor, nullptr);
  });
  startEngine(false);
  int told = 0;
  mLink.watchMice({[&] { ++told; }, [&](const TaughtControl&) { ++told; }});
  // On the connection of the link: when it has heard the signal, the link has too.
  int signals = 0;
  const SignalWatch watch({mice::objectPath, mice::interface, mice::signalNames::Taught},
                          [&](const ReceivedSignal&) { ++signals; });
  other.run([&] {
    EXPECT_TRUE(impostor->emit(mice::signalNames::Changed, {}));
    EXPECT_TRUE(impostor->emit(mice::signalNames::Taught, {"29", true, "KEY_Z", ""}));
  });
  EXPECT_TRUE(test::serveBusUntil([&] { return signals == 1; }));
  EXPECT_EQ(ask({MiceCall::Choose, "usb-1"}).outcome, Outcome::NoMice);
  EXPECT_EQ(asked, std::vector<PropertyList>());
  EXPECT_EQ(told, 0);
  other.run([&] { impostor.reset(); });
}

}  // namespace
}  // namespace vorn
