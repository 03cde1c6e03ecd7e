#include "model/ProfileFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "model/SettingsKeys.h"
#include "support/SampleSettings.h"
#include "support/TemporaryFolder.h"

namespace vorn {
namespace {

using test::plainProfile;

std::vector<std::string> filesIn(const std::string& path) {
  std::vector<std::string> names;
  for (const auto& each : std::filesystem::directory_iterator(path)) names.push_back(each.path().filename().string());
  std::ranges::sort(names);
  return names;
}

class ProfileFolderTest : public testing::Test {
 protected:
  engine::test::TemporaryFolder folder;
  std::string path = folder.path("All.SkarnProfiles");
};

TEST_F(ProfileFolderTest, HoldsAFileOfEachProfileAndGivesThemBackInTheirOrder) {
  std::vector<PropertyList> profiles;
  for (const char* name : {"Work", "A/B\n", "Work", "..", "é"}) profiles.push_back(plainProfile(name));
  ASSERT_FALSE(writeProfileFolder(path, PropertyList::array(profiles)));
  EXPECT_EQ(filesIn(path), (std::vector<std::string>{"1 Work.SkarnProfile", "2 A-B-.SkarnProfile",
                                                     "3 Work.SkarnProfile", "4 ...SkarnProfile", "5 é.SkarnProfile"}));
  const ProfileFolder read = readProfileFolder(path);
  ASSERT_EQ(read.entries.size(), profiles.size());
  for (std::size_t place = 0; place < profiles.size(); ++place) {
    EXPECT_EQ(read.entries[place].contents.record, profiles[place]);
  }
}

TEST_F(ProfileFolderTest, ReadsByNumberThenByName) {
  std::filesystem::create_directory(path);
  for (const char* name : {"10 Ten", "9 Nine", "b", "a", "2 Two"}) {
    ASSERT_FALSE(writeRecordFile(path + "/" + name + ".SkarnProfile", plainProfile(name), RecordKind::Profile));
  }
  std::ofstream(path + "/notes.txt") << "no profile";
  std::ofstream(path + "/3 Bad.SkarnProfile") << "no profile";
  std::vector<std::string> names;
  for (const ProfileFolderEntry& entry : readProfileFolder(path).entries) {
    names.push_back(entry.contents.problem ? "bad" : entry.contents.record[keys::ProfileName].toString());
  }
  EXPECT_EQ(names, (std::vector<std::string>{"2 Two", "bad", "9 Nine", "10 Ten", "a", "b"}));
}

TEST_F(ProfileFolderTest, CutsALongNameBetweenCharacters) {
  std::string name = "x";
  for (int i = 0; i < 200; ++i) name += "é";
  const std::string file = profileFileName(plainProfile(name), 0);
  EXPECT_LE(file.size(), 255U);
  EXPECT_EQ(file.find(".SkarnProfile") % 2, 1U);
  ASSERT_FALSE(writeProfileFolder(path, PropertyList::array({plainProfile(name)})));
}

TEST_F(ProfileFolderTest, LeavesWhatIsThereAlone) {
  for (const bool isFolder : {false, true}) {
    const std::string taken = folder.path(isFolder ? "folder" : "file");
    if (isFolder) {
      std::filesystem::create_directory(taken);
    } else {
      std::ofstream(taken) << "mine";
    }
    const auto problem = writeProfileFolder(taken, PropertyList::array({plainProfile("A")}));
    ASSERT_TRUE(problem);
    EXPECT_EQ(problem->error, std::errc::file_exists);
  }
  EXPECT_EQ(filesIn(folder.path("folder")), std::vector<std::string>());
}

TEST_F(ProfileFolderTest, LeavesNothingBehindWhereItCannotBeWritten) {
  EXPECT_TRUE(writeProfileFolder(folder.path("no/All.SkarnProfiles"), PropertyList::array({plainProfile("A")})));
  EXPECT_TRUE(writeProfileFolder(path, PropertyList::array({PropertyList()})));
  EXPECT_EQ(filesIn(folder.path()), std::vector<std::string>());
}

TEST_F(ProfileFolderTest, IsWrittenBesideWhatAKilledExportLeft) {
  const std::string left = path + ".part";
  std::filesystem::create_directory(left);
  std::ofstream(left + "/1 A.SkarnProfile") << "half of";
  ASSERT_FALSE(writeProfileFolder(path, PropertyList::array({plainProfile("A")})));
  EXPECT_EQ(filesIn(path), std::vector<std::string>{"1 A.SkarnProfile"});
  EXPECT_EQ(filesIn(folder.path()), (std::vector<std::string>{"All.SkarnProfiles", "All.SkarnProfiles.part"}));
}

TEST_F(ProfileFolderTest, TellsWhatIsNoSuchFolder) {
  EXPECT_TRUE(readProfileFolder(folder.path("none")).problem);
  std::filesystem::create_directory(path);
  EXPECT_EQ(readProfileFolder(path).problem->kind, RecordFileProblem::Kind::Empty);
}

}  // namespace
}  // namespace vorn
