#include "model/RecordFile.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "model/PropertyListCodec.h"
#include "support/TemporaryFolder.h"

namespace vorn {
namespace {

using Kind = RecordFileProblem::Kind;

const PropertyList profile = PropertyList::dictionary({{"ProfileName", "Work & <Play> é"},
                                                       {"Keys", PropertyList::dictionary({{"57", 1}})},
                                                       {"Buttons", PropertyList::dictionary()},
                                                       {"from another version", PropertyList::array({1, 2.5, true})}});
const PropertyList macro = PropertyList::dictionary({{"MacroName", "Jump"}, {"delay", 20}});

class RecordFileTest : public testing::Test {
 protected:
  RecordFileProblem problemOf(const std::string& path, RecordKind kind = RecordKind::Profile) const {
    const RecordFileContents contents = readRecordFile(path, kind);
    EXPECT_TRUE(contents.record.isNone());
    EXPECT_TRUE(contents.problem);
    return contents.problem.value_or(RecordFileProblem{});
  }
  RecordFileProblem problemOf(const Bytes& bytes) const { return problemOf(mFolder.write("record", bytes)); }

  engine::test::TemporaryFolder mFolder;
};

TEST_F(RecordFileTest, HoldsTheRecordWithAllItsKeys) {
  const std::string path = mFolder.write("Work.SkarnProfile", Bytes{'o', 'l', 'd'});
  EXPECT_FALSE(writeRecordFile(path, profile, RecordKind::Profile));
  EXPECT_EQ(mFolder.read("Work.SkarnProfile"), encodeBinaryPropertyList(profile));
  const RecordFileContents contents = readRecordFile(path, RecordKind::Profile);
  EXPECT_FALSE(contents.problem);
  EXPECT_EQ(contents.record, profile);
}

TEST_F(RecordFileTest, HoldsAMacroWithoutItsPositionAndIsReadWithoutOne) {
  const std::string path = mFolder.path("Jump.SkarnMacro");
  EXPECT_FALSE(writeRecordFile(path, macro.with("macroID", 4), RecordKind::Macro));
  EXPECT_EQ(mFolder.read("Jump.SkarnMacro"), encodeBinaryPropertyList(macro));
  mFolder.write("Jump.SkarnMacro", encodeBinaryPropertyList(macro.with("macroID", 4)).value());
  EXPECT_EQ(readRecordFile(path, RecordKind::Macro).record, macro);
  // In a profile the key means nothing.
  EXPECT_FALSE(writeRecordFile(path, profile.with("macroID", 4), RecordKind::Profile));
  EXPECT_EQ(readRecordFile(path, RecordKind::Profile).record, profile.with("macroID", 4));
}

TEST_F(RecordFileTest, MayBeXml) {
  std::ofstream(mFolder.path("file"))
      << "<?xml version=\"1.0\"?><plist version=\"1.0\"><dict><key>MacroName</key><string>Jump</string>"
         "<key>delay</key><integer>20</integer></dict></plist>";
  EXPECT_EQ(readRecordFile(mFolder.path("file"), RecordKind::Macro).record, macro);
}

TEST_F(RecordFileTest, ThatIsNoPropertyListIsTold) {
  const RecordFileProblem empty = problemOf(Bytes());
  EXPECT_EQ(empty.kind, Kind::Empty);
  EXPECT_EQ(empty.reason, "there are no bytes");
  Bytes half = encodeBinaryPropertyList(profile).value();
  half.resize(half.size() / 2);
  for (const Bytes& bytes : {Bytes{'h', 'i'}, Bytes(1000, 0), Bytes(1000, 0xff), half}) {
    const RecordFileProblem problem = problemOf(bytes);
    EXPECT_EQ(problem.kind, Kind::Encoding);
    EXPECT_NE(problem.reason, "");
  }
}

TEST_F(RecordFileTest, ThatHoldsSomethingElseIsToldWithWhatIsWrong) {
  const RecordFileProblem problem = problemOf(encodeBinaryPropertyList(profile.without("Keys")).value());
  EXPECT_EQ(problem.kind, Kind::Record);
  EXPECT_EQ(problem.reason, "the profile has no \"Keys\"");
  ASSERT_TRUE(problem.fault);
  EXPECT_EQ(problem.fault->kind, RecordFault::Kind::Missing);
  EXPECT_EQ(problem.fault->member, "Keys");
}

TEST_F(RecordFileTest, ThatCannotBeReadIsToldWithTheReason) {
  const RecordFileProblem missing = problemOf(mFolder.path("none"));
  EXPECT_EQ(missing.kind, Kind::File);
  EXPECT_EQ(missing.error, std::errc::no_such_file_or_directory);
  EXPECT_EQ(missing.reason, "No such file or directory");
  const RecordFileProblem folder = problemOf(mFolder.path());
  EXPECT_EQ(folder.error, std::errc::invalid_argument);
  EXPECT_EQ(folder.reason, "not a regular file");
}

TEST_F(RecordFileTest, BeyondTheLargestSizeIsNotRead) {
  const std::string path = mFolder.write("large", Bytes());
  std::filesystem::resize_file(path, maximumSize + 1);
  EXPECT_EQ(problemOf(path).error, std::errc::file_too_large);
  std::filesystem::resize_file(path, maximumSize);
  EXPECT_EQ(problemOf(path).kind, Kind::Encoding);
}

TEST_F(RecordFileTest, ThatCannotBeWrittenIsToldWithTheReason) {
  std::filesystem::create_directory(mFolder.path("folder"));
  const auto inTheWay = writeRecordFile(mFolder.path("folder"), profile, RecordKind::Profile);
  ASSERT_TRUE(inTheWay);
  EXPECT_EQ(inTheWay->kind, Kind::File);
  EXPECT_EQ(inTheWay->error, std::errc::invalid_argument);
  for (const PropertyList& record : {PropertyList(), profile.with("x", PropertyList())}) {
    const auto unwritable = writeRecordFile(mFolder.path("file"), record, RecordKind::Macro);
    ASSERT_TRUE(unwritable);
    EXPECT_EQ(unwritable->kind, Kind::Encoding);
    EXPECT_NE(unwritable->reason, "");
  }
  EXPECT_FALSE(std::filesystem::exists(mFolder.path("file")));
}

TEST_F(RecordFileTest, HasTheExtensionOfItsKind) {
  EXPECT_EQ(recordFileExtension(RecordKind::Profile), "SkarnProfile");
  EXPECT_EQ(recordFileExtension(RecordKind::Macro), "SkarnMacro");
}

}  // namespace
}  // namespace vorn
