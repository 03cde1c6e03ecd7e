// Any requests about macros, in any order.
#include <gtest/gtest.h>

#include <map>
#include <random>
#include <vector>

#include "core-engine/requests/MacroRequests.h"
#include "core-engine/requests/MacroRequestsFixture.h"
#include "core-engine/rules/BundleRules.h"
#include "model/MacroEvents.h"

namespace vorn::engine::test {
namespace {

using namespace requests;

// A value that a request may hold anywhere: often usable, often not.
PropertyList anyValue(std::mt19937& random) {
  switch (random() % 8) {
    case 0:
      return "text";
    case 1:
      return PropertyList::dictionary();
    case 2:
      return random() % 2 == 0;
    case 3:
      return keyPress(static_cast<std::int32_t>(random() % 300), 20);
    case 4:
      return macro("m", 0, {keyPress(static_cast<std::int32_t>(random() % 250))});
    default:
      return static_cast<std::int32_t>(random() % 12) - 2;
  }
}

TEST(MacroRequestsRandomTest, KeepTheSettingsWholeWhateverIsAsked) {
  TestParts engine(startBundle());
  EngineParts parts = engine.parts();
  std::mt19937 random(20'231);
  const std::vector<RequestHandler> handlers = [] {
    std::vector<RequestHandler> result;
    for (const RequestKind& kind : requestKinds()) {
      const bool isAboutMacros =
          kind.messageID >= MessageID::StartMacroRecording && kind.messageID < MessageID::ReleaseDevice;
      if (isAboutMacros || kind.messageID == MessageID::ReplaceMacroSequence) result.push_back(kind.handler);
    }
    return result;
  }();
  ASSERT_EQ(handlers.size(), 17U);
  std::map<ReturnStatus, int> counts;
  for (int i = 0; i < 3'000; ++i) {
    PropertyList body = PropertyList::dictionary({{"ResponseMsgPortName", random() % 4 == 0 ? "A" : "B"}});
    for (const char* key : {"macroID", "MacroContents", "isAppendRecording", "IndexOfMacroSequence", "sequenceIdx",
                            "sequence", "macroEventTableIndex", "delay", "HasNoDelay"}) {
      if (random() % 8 != 0) body = body.with(key, anyValue(random));
    }
    if (random() % 3 == 0) {
      parts.recorder.note({7, static_cast<std::uint16_t>(random() % 300), random() % 2 == 0});
      engine.scheduler.advance(std::chrono::milliseconds(random() % 50));
    }
    const Answer answer = answerOf(handlers[random() % handlers.size()], parts, {":1.1", body});
    ASSERT_TRUE(answer && (*answer)["ReturnStatus"].isInteger());
    ++counts[static_cast<ReturnStatus>((*answer)["ReturnStatus"].toInt())];
    ASSERT_TRUE(isCompleteBundle(engine.store.bundle())) << i;
    const PropertyList& macros = engine.store.bundle()["Macros"];
    for (std::size_t position = 0; position < macros.size(); ++position) {
      const PropertyList& each = macros.elements()[position];
      ASSERT_EQ(each["macroID"], PropertyList(position)) << i;
      ASSERT_EQ(macroEvents(each), each["sequence"]["events"].arrayOrEmpty()) << i;
    }
  }
  EXPECT_EQ(engine.stored(), engine.store.bundle());
  for (const ReturnStatus each :
       {ReturnStatus::Done, ReturnStatus::Malformed, ReturnStatus::OutOfRange, ReturnStatus::NotRunning}) {
    EXPECT_GT(counts[each], 100) << static_cast<int>(each);
  }
}

}  // namespace
}  // namespace vorn::engine::test
