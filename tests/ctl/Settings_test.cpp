// What vornctl says about an answer of the engine.
#include "ctl/Settings.h"

#include <gtest/gtest.h>

#include <set>

namespace vorn::ctl::test {
namespace {

TEST(SettingsTest, EveryStatusButSuccessHasWordsOfItsOwn) {
  EXPECT_EQ(reasonOf(ReturnStatus::Done), "");
  const auto last = static_cast<std::int32_t>(lastReturnStatus);
  std::set<std::string_view> reasons;
  for (std::int32_t status = 1; status <= last; ++status) {
    const std::string_view reason = reasonOf(static_cast<ReturnStatus>(status));
    EXPECT_NE(reason, "") << status;
    EXPECT_TRUE(reasons.insert(reason).second) << reason;
  }
  EXPECT_EQ(reasonOf(static_cast<ReturnStatus>(last + 1)), "") << "the last status is not the last one";
  EXPECT_EQ(reasonOf(static_cast<ReturnStatus>(-1)), "");
}

}  // namespace
}  // namespace vorn::ctl::test
