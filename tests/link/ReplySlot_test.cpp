#include "link/ReplySlot.h"

#include <gtest/gtest.h>

#include <future>
#include <thread>

namespace vorn {
namespace {

using namespace std::chrono_literals;

PropertyList numbered(int number) {
  return PropertyList::dictionary({{"number", number}});
}

TEST(ReplySlotTest, IsEmptyAtFirst) {
  ReplySlot slot;
  EXPECT_TRUE(slot.peek().isNone());
  EXPECT_FALSE(slot.wait(3, 1ms));
  EXPECT_FALSE(slot.wait(0, 1h));
}

TEST(ReplySlotTest, KeepsOnlyTheNewerOfTwoAnswersUntilItIsEmptied) {
  ReplySlot slot;
  slot.store(numbered(1));
  slot.store(numbered(2));
  EXPECT_EQ(slot.peek(), numbered(2));
  EXPECT_EQ(slot.peek(), numbered(2));
  slot.empty();
  EXPECT_TRUE(slot.peek().isNone());
}

TEST(ReplySlotTest, EndsTheWaitAtOnceForAnAnswerThatIsThere) {
  ReplySlot slot;
  slot.store(PropertyList::dictionary());
  EXPECT_TRUE(slot.wait(1, 24h));
  EXPECT_EQ(slot.peek(), PropertyList::dictionary());
}

TEST(ReplySlotTest, EndsTheSleepOfAPollWhenAnAnswerComes) {
  ReplySlot slot;
  std::promise<void> waiting;
  std::jthread other([&] {
    waiting.get_future().wait();
    slot.store(numbered(1));
  });
  waiting.set_value();
  EXPECT_TRUE(slot.wait(1, 24h));  // would not end today otherwise
  EXPECT_EQ(slot.peek(), numbered(1));
}

TEST(ReplySlotTest, LosesAndTearsNothingBetweenAStoringAndAWaitingThread) {
  constexpr int rounds = 1000;
  ReplySlot request;
  ReplySlot answer;
  std::jthread engine([&] {
    for (int i = 0; i < rounds; ++i) {
      request.wait(1, 24h);
      const PropertyList received = request.peek();
      request.empty();
      answer.store(numbered(received["number"].toInt() * 2));
    }
  });
  for (int i = 0; i < rounds; ++i) {
    request.store(numbered(i));
    ASSERT_TRUE(answer.wait(1, 24h));
    ASSERT_EQ(answer.peek(), numbered(i * 2));
    answer.empty();
  }
}

TEST(ReplySlotTest, GivesWholeAnswersWhileManyThreadsStoreEmptyAndRead) {
  constexpr int rounds = 1000;
  ReplySlot slot;
  std::vector<std::jthread> threads;
  for (int writer = 0; writer < 2; ++writer)
    threads.emplace_back([&slot, writer] {
      for (int i = 0; i < rounds; ++i)
        slot.store(PropertyList::dictionary({{"writer", writer}, {"twice", writer * 2}}));
    });
  threads.emplace_back([&slot] {
    for (int i = 0; i < rounds; ++i) slot.empty();
  });
  int torn = 0;
  for (int i = 0; i < rounds; ++i) {
    slot.wait(1, 0ms);
    const PropertyList seen = slot.peek();
    if (!seen.isNone() && seen["twice"].toInt() != seen["writer"].toInt() * 2) ++torn;
  }
  EXPECT_EQ(torn, 0);
}

}  // namespace
}  // namespace vorn
