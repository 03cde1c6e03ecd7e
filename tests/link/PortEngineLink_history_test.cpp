// The history of changes: asked of the engine alone, and without waiting.
#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "link/PortEngineLink.h"
#include "ports/BusObject.h"
#include "ports/SignalWatch.h"
#include "protocol/History.h"
#include "support/BusPump.h"
#include "support/LoopThread.h"
#include "support/PrivateBus.h"

namespace vorn {
namespace {

using Outcome = HistoryAnswer::Outcome;

BusObjectDescription historyObject(BusMethod method) {
  return {history::busName,
          history::objectPath,
          history::interface,
          {std::move(method)},
          {{history::signalNames::Changed, {}}}};
}

// An engine on a thread of this process: its port and its history, both on one connection.
class Engine {
 public:
  explicit Engine(BusMethod method) {
    mThread.run([&] {
      mHistory = BusObject::create(historyObject(std::move(method)));
      mPort = LocalMessagePort::create(enginePortName, {});
    });
  }
  Engine() {
    mThread.run([&] { mPort = LocalMessagePort::create(enginePortName, {}); });
  }
  ~Engine() {
    mThread.run([&] {
      mPort.reset();
      mHistory.reset();
    });
  }
  void tellOfChange() {
    mThread.run([&] { EXPECT_TRUE(mHistory->emit(history::signalNames::Changed, {})); });
  }

 private:
  std::unique_ptr<BusObject> mHistory;
  std::unique_ptr<LocalMessagePort> mPort;
  test::LoopThread mThread;
};

class PortEngineLinkHistoryTest : public testing::Test {
 protected:
  HistoryAnswer ask(const HistoryRequest& request) {
    std::optional<HistoryAnswer> answer;
    mLink.askHistory(request, [&](const HistoryAnswer& given) { answer = given; });
    EXPECT_TRUE(test::serveBusUntil([&] { return answer.has_value(); }));
    return answer.value_or(HistoryAnswer());
  }

  test::PrivateBus mBus;
  PortEngineLink mLink;
};

const PropertyList entry = PropertyList::dictionary({{"id", 7}, {"kind", "macroDeleted"}, {"macro", "Jump"}});

TEST_F(PortEngineLinkHistoryTest, GivesTheChangeThatTheEngineHasTakenBackAndWhatStaysAsItIs) {
  std::vector<PropertyList> asked;
  const Engine engine(
      {history::methods::Undo, {{"t", "id"}}, {{"a{sv}", "entry"}, {"u", "conflicts"}}, [&](const auto& given) {
         asked.push_back(given[0]);
         return BusReply::success({entry, 2U});
       }});
  mLink.watchEngine([](bool) {});
  const HistoryAnswer answer = ask({HistoryCall::Undo, 7});
  EXPECT_EQ(asked, std::vector{PropertyList(7)});
  EXPECT_EQ(answer.outcome, Outcome::Done);
  EXPECT_EQ(answer.value, entry);
  EXPECT_EQ(answer.conflicts, 2);
}

TEST_F(PortEngineLinkHistoryTest, ListsTheChanges) {
  const Engine engine({history::methods::Entries, {}, {{"aa{sv}", "entries"}}, [](const auto&) {
                         return BusReply::success({PropertyList::array({entry, entry.with("id", 6)})});
                       }});
  mLink.watchEngine([](bool) {});
  const HistoryAnswer answer = ask({HistoryCall::Entries});
  EXPECT_EQ(answer.outcome, Outcome::Done);
  EXPECT_EQ(answer.value, PropertyList::array({entry, entry.with("id", 6)}));
}

TEST_F(PortEngineLinkHistoryTest, GoesToAChange) {
  std::vector<PropertyList> asked;
  const Engine engine(
      {history::methods::GoTo, {{"t", "id"}}, {{"u", "changes"}, {"u", "conflicts"}}, [&](const auto& given) {
         asked.push_back(given[0]);
         return BusReply::success({3U, 1U});
       }});
  mLink.watchEngine([](bool) {});
  const HistoryAnswer answer = ask({HistoryCall::GoTo, 42});
  EXPECT_EQ(answer.outcome, Outcome::Done);
  EXPECT_EQ(answer.value, PropertyList(3));
  EXPECT_EQ(answer.conflicts, 1);
  EXPECT_EQ(asked, std::vector{PropertyList(42)});
}

TEST_F(PortEngineLinkHistoryTest, ReturnsAtOnceAndKeepsTheOrder) {
  std::vector<int> served;
  int count = 0;
  const Engine engine(
      {history::methods::Redo, {{"t", "id"}}, {{"a{sv}", "entry"}, {"u", "conflicts"}}, [&](const auto&) {
         return BusReply::success({entry.with("id", ++count), 0U});
       }});
  mLink.watchEngine([](bool) {});
  for (int call = 0; call < 5; ++call) {
    mLink.askHistory({HistoryCall::Redo},
                     [&](const HistoryAnswer& answer) { served.push_back(answer.value["id"].toInt()); });
  }
  EXPECT_TRUE(served.empty());
  ASSERT_TRUE(test::serveBusUntil([&] { return served.size() == 5; }));
  EXPECT_EQ(served, (std::vector{1, 2, 3, 4, 5}));
}

TEST_F(PortEngineLinkHistoryTest, TellsWhyNothingWasDone) {
  std::string error;
  const Engine engine(
      {history::methods::Undo, {{"t", "id"}}, {{"a{sv}", "entry"}, {"u", "conflicts"}}, [&](const auto&) {
         return BusReply::failure(error, "No");
       }});
  mLink.watchEngine([](bool) {});
  const std::pair<const char*, Outcome> errors[] = {{history::errors::NothingLeft, Outcome::NothingLeft},
                                                    {history::errors::ChangedSince, Outcome::ChangedSince},
                                                    {history::errors::Outdated, Outcome::Outdated},
                                                    {history::errors::NotSaved, Outcome::NotSaved},
                                                    {"org.example.Error.Other", Outcome::NoAnswer}};
  for (const auto& [name, outcome] : errors) {
    error = name;
    const HistoryAnswer answer = ask({HistoryCall::Undo});
    EXPECT_EQ(answer.outcome, outcome) << name;
    EXPECT_TRUE(answer.value.isNone());
  }
}

TEST_F(PortEngineLinkHistoryTest, KnowsAnEngineWithoutAHistory) {
  const Engine engine;
  mLink.watchEngine([](bool) {});
  EXPECT_EQ(ask({HistoryCall::Entries}).outcome, Outcome::NoHistory);
}

TEST_F(PortEngineLinkHistoryTest, AsksNobodyWithoutAnEngine) {
  std::vector<Outcome> outcomes;
  const auto note = [&](const HistoryAnswer& answer) { outcomes.push_back(answer.outcome); };
  mLink.askHistory({HistoryCall::Entries}, note);
  mLink.watchEngine([](bool) {});
  mLink.askHistory({HistoryCall::Entries}, note);
  EXPECT_EQ(outcomes, (std::vector{Outcome::NoEngine, Outcome::NoEngine}));
}

TEST_F(PortEngineLinkHistoryTest, BelievesTheEngineAlone) {
  int asked = 0;
  // Somebody who has the history's name and is not the engine.
  test::LoopThread other;
  std::unique_ptr<BusObject> impostor;
  other.run([&] {
    impostor =
        BusObject::create(historyObject({history::methods::Entries, {}, {{"aa{sv}", "entries"}}, [&](const auto&) {
                                           ++asked;
                                           return BusReply::success({PropertyList::array({entry})});
                                         }}));
    ASSERT_NE(impostor, nullptr);
  });
  const Engine engine;
  int changes = 0;
  mLink.watchHistory([&] { ++changes; });
  mLink.watchEngine([](bool) {});
  EXPECT_EQ(ask({HistoryCall::Entries}).outcome, Outcome::NoHistory);
  // On the connection of the link: when it has heard the signal, the link has too.
  int signals = 0;
  const SignalWatch watch({history::objectPath, history::interface, history::signalNames::Changed},
                          [&](const ReceivedSignal&) { ++signals; });
  other.run([&] {
    EXPECT_EQ(asked, 0);
    EXPECT_TRUE(impostor->emit(history::signalNames::Changed, {}));
  });
  EXPECT_TRUE(test::serveBusUntil([&] { return signals == 1; }));
  EXPECT_EQ(ask({HistoryCall::Entries}).outcome, Outcome::NoHistory);
  EXPECT_EQ(changes, 0);
  other.run([&] { impostor.reset(); });
}

TEST_F(PortEngineLinkHistoryTest, TellsOfEveryChangeUntilItIsNoLongerAskedTo) {
  Engine engine({history::methods::Entries, {}, {{"aa{sv}", "entries"}}, [](const auto&) {
                   return BusReply::success({PropertyList::array()});
                 }});
  int changes = 0;
  mLink.watchHistory([&] { ++changes; });
  mLink.watchEngine([](bool) {});
  engine.tellOfChange();
  engine.tellOfChange();
  EXPECT_TRUE(test::serveBusUntil([&] { return changes == 2; }));
  mLink.watchHistory({});
  engine.tellOfChange();
  ask({HistoryCall::Entries});
  EXPECT_EQ(changes, 2);
}

}  // namespace
}  // namespace vorn
