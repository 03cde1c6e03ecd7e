#include "support/StandardBundle.h"

#include <gtest/gtest.h>

#include "model/SettingsKeys.h"

namespace vorn {
namespace {

TEST(StandardBundleTest, HasTheSizesThatItPromises) {
  const PropertyList bundle = test::standardBundle();
  ASSERT_EQ(bundle[keys::Profiles].size(), 5u);
  ASSERT_EQ(bundle[keys::Macros].size(), 50u);
  EXPECT_EQ(test::largeBundle()[keys::Macros].size(), 1000u);
  for (const PropertyList& profile : bundle[keys::Profiles].elements()) {
    ASSERT_EQ(profile[keys::Keymap].size(), 8u);
    for (const PropertyList& keymap : profile[keys::Keymap].elements()) {
      EXPECT_EQ(keymap[keys::Keys].size(), 24u);
      EXPECT_EQ(keymap[keys::Buttons].size(), 3u);
    }
  }
  for (const PropertyList& macro : bundle[keys::Macros].elements()) {
    EXPECT_EQ(macro[keys::Sequence]["events"].size(), 40u);
  }
}

}  // namespace
}  // namespace vorn
