#include "core-engine/storage/FactoryDefaults.h"

#include <gtest/gtest.h>

#include "core-engine/MemoryFileSystem.h"
#include "core-engine/TestBundle.h"
#include "model/PropertyListCodec.h"

namespace vorn::engine::test {
namespace {

class FactoryDefaultsTest : public testing::Test {
 protected:
  void put(const std::string& path, const PropertyList& contents) {
    disk.put(path, encodeBinaryPropertyList(contents).value());
  }
  // Why the file gives no settings; empty when it does.
  std::string faultOf(const std::string& path) {
    error.clear();
    return defaults.read(path, error) ? "" : error;
  }

  MemoryFileSystem disk;
  FactoryDefaults defaults{disk, "/own/Skarn.plist"};
  std::string error;
};

TEST_F(FactoryDefaultsTest, GiveTheDefaultSettingsOfAFile) {
  put("/Skarn.plist", defaultsFile(bundle("factory")));
  EXPECT_EQ(defaults.read("/Skarn.plist", error), bundle("factory"));
}

TEST_F(FactoryDefaultsTest, ReadXmlFilesToo) {
  const std::string_view text =
      "<?xml version=\"1.0\"?><plist version=\"1.0\"><dict><key>Default Settings</key><dict><key>Profiles</key>"
      "<array><dict><key>ProfileName</key><string>X</string></dict></array></dict></dict></plist>";
  disk.put("/Skarn.plist", Bytes(text.begin(), text.end()));
  EXPECT_EQ(defaults.read("/Skarn.plist", error), bundleOf({profile("X").without("DPIX").without("DPIY")}));
}

TEST_F(FactoryDefaultsTest, CompleteEveryProfileFromTheFirst) {
  put("/Skarn.plist", defaultsFile(bundleOf({profile("one"), PropertyList::dictionary({{"ProfileName", "two"}})})));
  EXPECT_EQ(defaults.read("/Skarn.plist", error), bundleOf({profile("one"), profile("two")}));
}

TEST_F(FactoryDefaultsTest, RefusePathsThatAreNotAbsolute) {
  EXPECT_EQ(faultOf("Skarn.plist"), "not an absolute path");
  EXPECT_EQ(faultOf(""), "not an absolute path");
  EXPECT_EQ(faultOf(std::string("/a\0b", 4)), "not an absolute path");
}

TEST_F(FactoryDefaultsTest, RefuseFilesThatCannotBeRead) {
  EXPECT_EQ(faultOf("/none.plist"), "No such file or directory");
  disk.failAt(1, std::errc::invalid_argument);
  EXPECT_EQ(faultOf("/folder"), "not a regular file");
}

TEST_F(FactoryDefaultsTest, RefuseFilesThatAreTooLarge) {
  disk.put("/large.plist", Bytes(FactoryDefaults::maximumFileSize + 1));
  EXPECT_EQ(faultOf("/large.plist"), "File too large");
}

TEST_F(FactoryDefaultsTest, RefuseFilesThatHoldNoSettings) {
  disk.put("/garbage.plist", {1, 2, 3});
  EXPECT_NE(faultOf("/garbage.plist"), "");
  put("/bare.plist", bundle());
  EXPECT_EQ(faultOf("/bare.plist"), "no \"Default Settings\" in it");
  put("/empty.plist", defaultsFile(bundleOf({})));
  EXPECT_EQ(faultOf("/empty.plist"), "no profile in the settings");
}

TEST_F(FactoryDefaultsTest, GiveTheFirstProfileOfTheOwnFile) {
  EXPECT_EQ(defaults.ownProfile(), PropertyList());
  put("/own/Skarn.plist", defaultsFile(bundleOf({profile("one"), profile("two")}, 1)));
  EXPECT_EQ(defaults.ownProfile(), profile("one"));
}

}  // namespace
}  // namespace vorn::engine::test
