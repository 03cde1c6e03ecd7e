// What controls change in the settings while the profiles get another order.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "core-engine/AssignmentFixture.h"
#include "core-engine/requests/ProfileRequests.h"
#include "model/ProfileOrder.h"

namespace vorn::engine::test {
namespace {

class AssignmentPlayerOrderTest : public AssignmentFixture {
 protected:
  std::int32_t reorder(const ProfileOrder& order) {
    EngineParts all = parts.parts();
    const PropertyList body =
        PropertyList::dictionary({{requestKeys::ProfileOrder, orderRecord(order)},
                                  {requestKeys::ProfileNames, profileNames(parts.store.bundle()["Profiles"])}});
    return answerOf(reorderProfiles, all, {":1.7", body}).value()["ReturnStatus"].toInt();
  }
  std::vector<std::int32_t> keymaps() {
    std::vector<std::int32_t> result;
    for (const PropertyList& each : parts.store.bundle()["Profiles"].elements()) {
      result.push_back(each["KeymapID"].toInt());
    }
    return result;
  }
  void assignIn(std::int64_t position, const PropertyList& record) {
    setProfile(position, profile(position).with("Keys", profile(position)["Keys"].with("43", record)));
  }
};

using Keymaps = std::vector<std::int32_t>;

TEST_F(AssignmentPlayerOrderTest, SwitchesBackInTheProfileWhereItSwitchedWhereverThatStands) {
  parts.profiles.switchTo(1);
  assignIn(1, assignment(50, 3, 1));
  press("43");
  EXPECT_EQ(keymaps(), (Keymaps{0, 3, 0}));
  EXPECT_EQ(reorder({1, 2, 0}), 0);
  EXPECT_EQ(activeProfile(), 0);
  EXPECT_EQ(keymaps(), (Keymaps{3, 0, 0}));
  release("43");
  EXPECT_EQ(keymaps(), (Keymaps{0, 0, 0}));
}

TEST_F(AssignmentPlayerOrderTest, SwitchesBackWhereItSwitchedWhenTheOrderIsNotSaved) {
  assignIn(0, assignment(50, 3, 1));
  press("43");
  parts.disk.failFrom(1, std::errc::no_space_on_device);
  EXPECT_EQ(reorder({2, 1, 0}), 4);
  parts.disk.work();
  release("43");
  EXPECT_EQ(keymaps(), (Keymaps{0, 0, 0}));
}

TEST_F(AssignmentPlayerOrderTest, SwitchesToTheSameProfileAsBeforeInWhateverOrder) {
  std::mt19937 random{14};
  for (int round = 0; round < 100; ++round) {
    const auto target = static_cast<std::int64_t>(random() % 3);
    const PropertyList name = profile(target)["ProfileName"];
    assignIn(activeProfile(), assignment(17, static_cast<std::int32_t>(target)));
    ProfileOrder order = {0, 1, 2};
    std::ranges::shuffle(order, random);
    const PropertyList active = profile(activeProfile())["ProfileName"];
    ASSERT_EQ(reorder(order), 0);
    ASSERT_EQ(profile(activeProfile())["ProfileName"], active);
    press("43");
    release("43");
    ASSERT_EQ(profile(activeProfile())["ProfileName"], name);
  }
}

}  // namespace
}  // namespace vorn::engine::test
