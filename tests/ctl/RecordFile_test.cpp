#include "ctl/RecordFile.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>

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

TEST(RecordFileTest, GetsItsExtensionOnce) {
  EXPECT_EQ(withExtension("a/Work", RecordKind::Profile), "a/Work.SkarnProfile");
  EXPECT_EQ(withExtension("Work.SkarnProfile", RecordKind::Profile), "Work.SkarnProfile");
  EXPECT_EQ(withExtension("Jump.SkarnProfile", RecordKind::Macro), "Jump.SkarnProfile.SkarnMacro");
}

TEST(RecordFileTest, IsReadAsItWasWritten) {
  const TemporaryFolder folder;
  EXPECT_FALSE(writeRecord(folder.path("file"), profile, RecordKind::Profile));
  EXPECT_EQ(*readRecord(folder.path("file"), RecordKind::Profile), profile);
  EXPECT_FALSE(writeRecord(folder.path("file"), macro.with("macroID", 4), RecordKind::Macro));
  EXPECT_EQ(*readRecord(folder.path("file"), RecordKind::Macro), macro);
}

TEST(RecordFileTest, ThatCannotBeWrittenIsAFileError) {
  const TemporaryFolder folder;
  std::filesystem::create_directory(folder.path("taken"));
  const Outcome failure = writeRecord(folder.path("taken"), profile, RecordKind::Profile);
  ASSERT_TRUE(failure);
  EXPECT_EQ(failure->status, ExitStatus::FileError);
  EXPECT_EQ(failure->text, folder.path("taken") + ": not a regular file");
  EXPECT_EQ(writeRecord(folder.path("no/file"), profile, RecordKind::Profile)->status, ExitStatus::FileError);
}

TEST(RecordFileTest, OfARecordThatNoFileCanHoldIsRefused) {
  const Outcome failure = writeRecord("/nowhere", PropertyList(), RecordKind::Profile);
  ASSERT_TRUE(failure);
  EXPECT_EQ(failure->status, ExitStatus::Refused);
  EXPECT_EQ(failure->text, "the record cannot be written: there is no record");
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
  EXPECT_EQ(fault(PropertyList::array(), RecordKind::Profile), ": there is no profile record");
  EXPECT_EQ(fault(macro, RecordKind::Profile), ": the profile has no name");
  EXPECT_EQ(fault(profile.with("ProfileName", 5), RecordKind::Profile), ": the profile has no name");
  EXPECT_EQ(fault(profile.without("Keys"), RecordKind::Profile), ": the profile has no \"Keys\"");
  EXPECT_EQ(fault(profile.with("Buttons", 1), RecordKind::Profile), ": its \"Buttons\" is no dictionary");
  EXPECT_EQ(fault(profile, RecordKind::Macro), ": the macro has no name");
  EXPECT_EQ(fault(macro.with("sequence", 1), RecordKind::Macro), ": its sequence is no dictionary");
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
