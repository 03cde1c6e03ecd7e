#include "core-engine/storage/PosixFileSystem.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>

#include "support/TemporaryFolder.h"

namespace vorn::engine::test {
namespace {

const Bytes hello = {'h', 'e', 'l', 'l', 'o'};
const Bytes world = {'w', 'o', 'r', 'l', 'd'};

class PosixFileSystemTest : public testing::Test {
 protected:
  std::error_code read(const std::string& path, std::size_t maximum = 100) {
    return files.read(path, maximum, contents);
  }

  TemporaryFolder folder;
  PosixFileSystem files;
  Bytes contents;
};

TEST_F(PosixFileSystemTest, ReadsAFileUpToItsMaximum) {
  const std::string path = folder.write("file", hello);
  EXPECT_EQ(read(path, 5), std::error_code());
  EXPECT_EQ(contents, hello);
  EXPECT_EQ(read(path, 4), std::errc::file_too_large);
  EXPECT_EQ(contents, Bytes());
}

TEST_F(PosixFileSystemTest, ReadsAnEmptyFile) {
  EXPECT_EQ(read(folder.write("file", {})), std::error_code());
  EXPECT_EQ(contents, Bytes());
}

TEST_F(PosixFileSystemTest, TellsAMissingFile) {
  EXPECT_EQ(read(folder.path("none")), std::errc::no_such_file_or_directory);
}

TEST_F(PosixFileSystemTest, ReadsNeitherFoldersNorPipesNorEndlessDevices) {
  ASSERT_EQ(::mkfifo(folder.path("pipe").c_str(), 0600), 0);
  EXPECT_EQ(read(folder.path("pipe")), std::errc::invalid_argument);
  EXPECT_EQ(read(folder.path()), std::errc::invalid_argument);
  EXPECT_EQ(read("/dev/zero"), std::errc::invalid_argument);
}

TEST_F(PosixFileSystemTest, ReadsAFileWhoseSizeIsNotKnownBeforehand) {
  EXPECT_EQ(read("/proc/self/status", 100'000), std::error_code());
  EXPECT_FALSE(contents.empty());
  EXPECT_EQ(read("/proc/self/status", 10), std::errc::file_too_large);
}

TEST_F(PosixFileSystemTest, WritesAFileForItsUserAlone) {
  FileSystem::Handle handle = -1;
  std::size_t written = 0;
  const std::string path = folder.path("file");
  ASSERT_EQ(files.create(path, handle), std::error_code());
  EXPECT_EQ(files.write(handle, hello, written), std::error_code());
  EXPECT_EQ(written, hello.size());
  EXPECT_EQ(files.sync(handle), std::error_code());
  EXPECT_EQ(files.close(handle), std::error_code());
  EXPECT_EQ(files.syncFolder(folder.path()), std::error_code());
  EXPECT_EQ(folder.read("file"), hello);
  EXPECT_EQ(std::filesystem::status(path).permissions(), std::filesystem::perms(0600));
}

TEST_F(PosixFileSystemTest, TellsAFullDisk) {
  FileSystem::Handle handle = -1;
  std::size_t written = 0;
  ASSERT_EQ(files.create("/dev/full", handle), std::error_code());
  EXPECT_EQ(files.write(handle, hello, written), std::errc::no_space_on_device);
  EXPECT_EQ(files.close(handle), std::error_code());
}

TEST_F(PosixFileSystemTest, CreatesNothingThroughASymbolicLink) {
  std::filesystem::create_symlink(folder.path("target"), folder.path("link"));
  FileSystem::Handle handle = -1;
  EXPECT_EQ(files.create(folder.path("link"), handle), std::errc::too_many_symbolic_link_levels);
  EXPECT_FALSE(std::filesystem::exists(folder.path("target")));
}

TEST_F(PosixFileSystemTest, MakesFoldersWithTheirParents) {
  EXPECT_EQ(files.createFolder(folder.path("a/b/c")), std::error_code());
  EXPECT_EQ(files.createFolder(folder.path("a/b/c")), std::error_code());
  EXPECT_TRUE(std::filesystem::is_directory(folder.path("a/b/c")));
}

TEST_F(PosixFileSystemTest, MakesNoFolderWhereAFileIs) {
  folder.write("file", hello);
  EXPECT_EQ(files.createFolder(folder.path("file/a")), std::errc::not_a_directory);
  EXPECT_EQ(files.createFolder(folder.path("file")), std::errc::not_a_directory);
}

TEST_F(PosixFileSystemTest, RenamesOverAFileOnlyWhenAskedTo) {
  folder.write("one", hello);
  folder.write("two", world);
  EXPECT_EQ(files.renameToFree(folder.path("one"), folder.path("two")), std::errc::file_exists);
  EXPECT_EQ(folder.read("two"), world);
  EXPECT_EQ(files.renameToFree(folder.path("one"), folder.path("three")), std::error_code());
  EXPECT_EQ(folder.read("three"), hello);
  EXPECT_EQ(files.rename(folder.path("three"), folder.path("two")), std::error_code());
  EXPECT_EQ(folder.read("two"), hello);
}

TEST_F(PosixFileSystemTest, RemovesAFile) {
  const std::string path = folder.write("file", hello);
  EXPECT_EQ(files.remove(path), std::error_code());
  EXPECT_EQ(files.remove(path), std::errc::no_such_file_or_directory);
}

TEST_F(PosixFileSystemTest, HoldsALockUntilItGoes) {
  const std::string path = folder.path("lock");
  {
    PosixFileSystem other;
    EXPECT_EQ(other.lock(path), std::error_code());
    EXPECT_EQ(files.lock(path), std::errc::resource_unavailable_try_again);
  }
  EXPECT_EQ(files.lock(path), std::error_code());
}

TEST_F(PosixFileSystemTest, HoldsALockAgainAfterItsFileWasRemoved) {
  const std::string path = folder.path("lock");
  ASSERT_EQ(files.lock(path), std::error_code());
  std::filesystem::remove(path);
  EXPECT_EQ(files.lock(path), std::error_code());
  PosixFileSystem other;
  EXPECT_EQ(other.lock(path), std::errc::resource_unavailable_try_again);
}

TEST_F(PosixFileSystemTest, LosesALockToAnotherProcessThatReplacedItsFile) {
  const std::string path = folder.path("lock");
  ASSERT_EQ(files.lock(path), std::error_code());
  std::filesystem::remove(path);
  PosixFileSystem other;
  ASSERT_EQ(other.lock(path), std::error_code());
  EXPECT_EQ(files.lock(path), std::errc::resource_unavailable_try_again);
}

TEST_F(PosixFileSystemTest, KnowsAFileAgainUnlessSomebodyReplacedOrChangedIt) {
  const std::string path = folder.write("file", hello);
  FileSystem::Identity before;
  FileSystem::Identity after;
  ASSERT_EQ(files.identify(path, before), std::error_code());
  ASSERT_EQ(files.rename(path, folder.path("other")), std::error_code());
  ASSERT_EQ(files.identify(folder.path("other"), after), std::error_code());
  EXPECT_EQ(after, before);
  folder.write("file", hello);
  ASSERT_EQ(files.identify(path, after), std::error_code());
  EXPECT_NE(after, before);
  folder.write("other", Bytes{1});
  ASSERT_EQ(files.identify(folder.path("other"), after), std::error_code());
  EXPECT_NE(after, before);
  EXPECT_EQ(files.identify(folder.path("none"), after), std::errc::no_such_file_or_directory);
}

}  // namespace
}  // namespace vorn::engine::test
