#include "model/ApplicationBundle.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

TEST(ApplicationBundleTest, IsNamedByItsEndingInAnyCase) {
  for (const char* path : {"Editor.app", "/Applications/Editor.APP", "/a/Text Editor.App", "/a/Éditeur.aPP", "a.app/",
                           "/a/Editor.app//"}) {
    EXPECT_TRUE(hasBundleName(path)) << path;
  }
}

TEST(ApplicationBundleTest, IsNothingElse) {
  for (const char* path : {"", "/", "app", "/app", "Editor.apps", "Editor.app.desktop", "/Editor.app/Contents",
                           "Editor.aqp", "Editor-app", "editor.desktop"}) {
    EXPECT_FALSE(hasBundleName(path)) << path;
  }
}

}  // namespace
}  // namespace vorn
