#include <gtest/gtest.h>

#include <cstdint>
#include <set>

#include "core-engine/requests/RequestDispatcher.h"

namespace vorn::engine::test {
namespace {

TEST(RequestKindsTest, AreListedOnce) {
  std::set<std::int32_t> listed;
  for (const RequestKind& kind : requestKinds()) {
    EXPECT_TRUE(listed.insert(static_cast<std::int32_t>(kind.messageID)).second) << kind.name;
  }
  EXPECT_EQ(listed, (std::set<std::int32_t>{0,  4,  5,  6,  7,  9,  10, 14, 15, 16, 18, 19, 20,  21, 22,
                                            23, 24, 25, 27, 28, 29, 30, 32, 33, 34, 37, 38, 101, 102}));
}

// The others are refused for a product that the engine does not serve.
TEST(RequestKindsTest, NameTheRequestsThatLookAtTheProductThemselvesOrNeedNone) {
  std::set<std::int32_t> forAny;
  for (const RequestKind& kind : requestKinds()) {
    if (kind.products == Products::Any) forAny.insert(static_cast<std::int32_t>(kind.messageID));
  }
  EXPECT_EQ(forAny, (std::set<std::int32_t>{0, 14, 15, 16, 38}));
}

}  // namespace
}  // namespace vorn::engine::test
