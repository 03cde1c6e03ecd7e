// The application in front: asked of the engine alone, and without waiting.
#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "link/PortEngineLink.h"
#include "ports/BusObject.h"
#include "protocol/Focus.h"
#include "support/BusPump.h"
#include "support/LoopThread.h"
#include "support/PrivateBus.h"

namespace vorn {
namespace {

const PropertyList known = PropertyList::dictionary({{"Source", "x11"}, {"IsUsed", true}});

// The object as the engine has it.
std::unique_ptr<BusObject> focusObject(const std::string& error = {}) {
  const auto tell = [error](const std::vector<PropertyList>&) {
    return error.empty() ? BusReply::success({known}) : BusReply::failure(error, "No");
  };
  return BusObject::create({focus::busName,
                            focus::objectPath,
                            focus::interface,
                            {{focus::methods::State, {}, {{"a{sv}", "state"}}, tell}},
                            {{focus::signalNames::Changed, {}}}});
}

class PortEngineLinkFocusTest : public testing::Test {
 protected:
  ~PortEngineLinkFocusTest() override {
    mThread.run([&] {
      mPort.reset();
      mFocus.reset();
    });
  }
  // An engine on a thread of this process, on one connection.
  void startEngine(const std::function<std::unique_ptr<BusObject>()>& makeFocus) {
    mThread.run([&] {
      mFocus = makeFocus();
      mPort = LocalMessagePort::create(enginePortName, {});
    });
    mLink.watchEngine([](bool) {});
  }
  PropertyList ask() {
    std::optional<PropertyList> answer;
    mLink.askFocus([&](const PropertyList& state) { answer = state; });
    EXPECT_TRUE(test::serveBusUntil([&] { return answer.has_value(); }));
    return answer.value_or("no answer");
  }

  test::PrivateBus mBus;
  PortEngineLink mLink;
  std::unique_ptr<BusObject> mFocus;
  std::unique_ptr<LocalMessagePort> mPort;
  test::LoopThread mThread;
};

TEST_F(PortEngineLinkFocusTest, TellsTheStateOfTheEngine) {
  startEngine([] { return focusObject(); });
  EXPECT_EQ(ask(), known);
}

TEST_F(PortEngineLinkFocusTest, TellsNoneWhereTheEngineDoesNotTell) {
  startEngine([] { return nullptr; });
  EXPECT_EQ(ask(), PropertyList());
}

TEST_F(PortEngineLinkFocusTest, TellsNoneWhereTheEngineAnswersWithAnError) {
  startEngine([] { return focusObject("org.vorn.Example.Error.No"); });
  EXPECT_EQ(ask(), PropertyList());
}

TEST_F(PortEngineLinkFocusTest, AsksNobodyWithoutAnEngine) {
  mThread.run([&] { mFocus = focusObject(); });
  mLink.watchEngine([](bool) {});
  EXPECT_EQ(ask(), PropertyList());
}

TEST_F(PortEngineLinkFocusTest, HearsOfChangesUntilThatIsEnded) {
  startEngine([] { return focusObject(); });
  int changes = 0;
  mLink.watchFocus([&] { ++changes; });
  const auto emit = [&] { mThread.run([&] { EXPECT_TRUE(mFocus->emit(focus::signalNames::Changed, {})); }); };
  emit();
  EXPECT_TRUE(test::serveBusUntil([&] { return changes == 1; }));
  mLink.watchFocus({});
  emit();
  // Its answer comes after the signal.
  EXPECT_EQ(ask(), known);
  EXPECT_EQ(changes, 1);
}

}  // namespace
}  // namespace vorn
