#include "ctl/RecordFile.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <fstream>
#include <iterator>

#include "model/PropertyListCodec.h"
#include "support/TemporaryFolder.h"

namespace vorn::ctl {
namespace {

using engine::test::TemporaryFolder;

const PropertyList profile = PropertyList::dictionary({{"ProfileName", "Work"},
                                                       {"Keys", PropertyList::dictionary()},
                                                       {"Buttons", PropertyList::dictionary()},
                                                       {"Further", 1.5}});
const PropertyList macro = PropertyList::dictionary({{"MacroName", "Jump"}, {"delay", 20}});

std::size_t fileCount(const TemporaryFolder& folder) {
  return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(folder.path()), {}));
}

TEST(RecordFileTest, GetsItsExtensionOnce) {
  EXPECT_EQ(withExtension("a/Work", RecordKind::Profile), "a/Work.SkarnProfile");
  EXPECT_EQ(withExtension("Work.SkarnProfile", RecordKind::Profile), "Work.SkarnProfile");
  EXPECT_EQ(withExtension("Jump.SkarnProfile", RecordKind::Macro), "Jump.SkarnProfile.SkarnMacro");
}

TEST(RecordFileTest, HoldsTheRecordAndReplacesAnOlderOneWhole) {
  const TemporaryFolder folder;
  const std::string path = folder.write("file", Bytes{'o', 'l', 'd'});
  EXPECT_FALSE(writeRecord(path, profile));
  EXPECT_EQ(folder.read("file"), encodeBinaryPropertyList(profile));
  EXPECT_EQ(*readRecord(path, RecordKind::Profile), profile);
  EXPECT_EQ(fileCount(folder), 1U);
}

TEST(RecordFileTest, LeavesNothingBehindWhereItCannotBeWritten) {
  const TemporaryFolder folder;
  std::filesystem::create_directory(folder.path("taken"));
  const Outcome failure = writeRecord(folder.path("taken"), profile);
  ASSERT_TRUE(failure);
  EXPECT_EQ(failure->status, ExitStatus::FileError);
  EXPECT_EQ(failure->text, folder.path("taken") + ": Is a directory");
  EXPECT_EQ(fileCount(folder), 1U);
  EXPECT_EQ(writeRecord(folder.path("no/file"), profile)->status, ExitStatus::FileError);
}

TEST(RecordFileTest, ReadsXmlAndLeavesOutTheNumberOfAMacro) {
  const TemporaryFolder folder;
  std::ofstream(folder.path("m.SkarnMacro"))
      << "<?xml version=\"1.0\"?><plist version=\"1.0\"><dict><key>MacroName</key><string>Jump</string>"
         "<key>macroID</key><integer>4</integer><key>delay</key><integer>20</integer></dict></plist>";
  EXPECT_EQ(*readRecord(folder.path("m.SkarnMacro"), RecordKind::Macro), macro);
}

TEST(RecordFileTest, RefusesWhatIsNoRecordOfItsKind) {
  const TemporaryFolder folder;
  const auto fault = [&](const PropertyList& contents, RecordKind kind) {
    const std::string path = folder.write("file", encodeBinaryPropertyList(contents).value());
    const auto record = readRecord(path, kind);
    if (record) return std::string();
    EXPECT_EQ(record.failure().status, ExitStatus::FileError);
    return record.failure().text.substr(path.size());
  };
  EXPECT_EQ(fault(PropertyList::array(), RecordKind::Profile), ": not a profile: holds no dictionary");
  EXPECT_EQ(fault(macro, RecordKind::Profile), ": not a profile: holds no \"ProfileName\"");
  EXPECT_EQ(fault(profile.with("ProfileName", 5), RecordKind::Profile), ": not a profile: holds no \"ProfileName\"");
  EXPECT_EQ(fault(profile.without("Keys"), RecordKind::Profile), ": not a profile: holds no dictionary \"Keys\"");
  EXPECT_EQ(fault(profile.with("Buttons", 1), RecordKind::Profile), ": not a profile: holds no dictionary \"Buttons\"");
  EXPECT_EQ(fault(profile, RecordKind::Macro), ": not a macro: holds no \"MacroName\"");
  EXPECT_EQ(fault(macro.with("sequence", 1), RecordKind::Macro), ": not a macro: its \"sequence\" is no dictionary");
  EXPECT_EQ(fault(macro.with("sequence", PropertyList::dictionary()), RecordKind::Macro), "");
}

TEST(RecordFileTest, RefusesWhatIsNoPropertyListOrNoFile) {
  const TemporaryFolder folder;
  const std::string fifo = folder.path("fifo");
  ASSERT_EQ(::mkfifo(fifo.c_str(), 0600), 0);
  for (const std::string& path : {folder.write("junk", Bytes{'j'}), folder.path("missing"), folder.path(), fifo}) {
    const auto record = readRecord(path, RecordKind::Profile);
    ASSERT_FALSE(record) << path;
    EXPECT_EQ(record.failure().status, ExitStatus::FileError) << path;
  }
}

}  // namespace
}  // namespace vorn::ctl
