#include "ctl/References.h"

#include <gtest/gtest.h>

namespace vorn::ctl {
namespace {

PropertyList record(int command, int param1, int param2 = 0) {
  return PropertyList::dictionary({{"command", command}, {"param1", param1}, {"param2", param2}, {"further", "kept"}});
}

PropertyList groups(const PropertyList& tab, const PropertyList& wheel) {
  return PropertyList::dictionary({{"Keys", PropertyList::dictionary({{"43", tab}, {"20", record(16, 1)}})},
                                   {"Buttons", PropertyList::dictionary({{"06", wheel}})}});
}

PropertyList profiles(const PropertyList& tab, const PropertyList& wheel) {
  const PropertyList both = groups(tab, wheel);
  return PropertyList::array({both.with("Keymap", PropertyList::array({both, groups(tab, record(1, 1))})), both});
}

TEST(ReferencesTest, ToADeletedOneGoBackToTheFactoryAndThoseBehindMoveUp) {
  EXPECT_EQ(withoutReferencesTo(profiles(record(10, 1, 255), record(10, 1)), AssignmentCommand::Macro, 1),
            profiles(record(45, 43), record(18, 0)));
  EXPECT_EQ(withoutReferencesTo(profiles(record(17, 3), record(17, 2)), AssignmentCommand::Profile, 2),
            profiles(record(17, 2), record(18, 0)));
}

TEST(ReferencesTest, ToOthersStay) {
  const PropertyList unchanged = profiles(record(10, 0, 3), record(17, 1));
  EXPECT_EQ(withoutReferencesTo(unchanged, AssignmentCommand::Macro, 1), unchanged);
}

}  // namespace
}  // namespace vorn::ctl
