#include "model/ProfileContents.h"

#include <gtest/gtest.h>

#include "model/SettingsKeys.h"
#include "support/SampleSettings.h"

namespace vorn {
namespace {

using test::assignment;
using test::factoryGroup;
using test::factoryKeymap;
using test::plainProfile;

TEST(ProfileContentsTest, OfAFactoryProfileAreNothing) {
  const ProfileContents contents = contentsOf(plainProfile("P"));
  EXPECT_EQ(contents.controls, 0U);
  EXPECT_EQ(contents.keymaps, 0U);
  EXPECT_TRUE(contents.macros.empty() && contents.profiles.empty() && contents.unusable.empty());
  EXPECT_EQ(contents.application, "");
}

TEST(ProfileContentsTest, CountEachControlOnceAndEachMacroOnce) {
  const PropertyList keysOf = factoryGroup(1).with("43", assignment(10, 4)).with("20", assignment(17, 2));
  const PropertyList elsewhere = factoryGroup(1).with("43", assignment(10, 1)).with("8", assignment(10, 4));
  const PropertyList profile =
      plainProfile("P")
          .with("Keys", keysOf)
          .with("Keymap", PropertyList::array({factoryKeymap(), factoryKeymap().with("Keys", elsewhere)}))
          .with("AppInfo", PropertyList::dictionary({{"application", "Editor"}}));
  const ProfileContents contents = contentsOf(profile);
  EXPECT_EQ(contents.controls, 3U);
  EXPECT_EQ(contents.keymaps, 2U);
  EXPECT_EQ(contents.macros, (std::vector<std::int64_t>{1, 4}));
  EXPECT_EQ(contents.profiles, (std::vector<std::int64_t>{2}));
  EXPECT_EQ(contents.application, "Editor");
}

TEST(ProfileContentsTest, NameWhatTheEngineWillNotTake) {
  EXPECT_EQ(contentsOf(plainProfile("P").with("DPIX", 9).with("Stages", "x").with("Note", 1)).unusable,
            (std::vector<std::string>{"Stages", "DPIX"}));
}

}  // namespace
}  // namespace vorn
