#include "model/RegularFile.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <string>
#include <vector>

#include "support/TemporaryFolder.h"

namespace vorn {
namespace {

const Bytes before = {'b', 'e', 'f', 'o', 'r', 'e'};
const Bytes after = {'a', 'f', 't', 'e', 'r'};

// Nothing is forbidden to root: as long as this lives, it is nobody (user 65534 of Debian).
class WithoutPrivileges {
 public:
  WithoutPrivileges() {
    if (::geteuid() == 0) {
      EXPECT_EQ(::seteuid(65534), 0);
    }
  }
  ~WithoutPrivileges() {
    if (::getuid() == 0) {
      EXPECT_EQ(::seteuid(0), 0);
    }
  }
  WithoutPrivileges(const WithoutPrivileges&) = delete;
  WithoutPrivileges& operator=(const WithoutPrivileges&) = delete;
};

class RegularFileTest : public testing::Test {
 protected:
  RegularFileTest() : mMask(::umask(022)) {}
  ~RegularFileTest() override { ::umask(mMask); }

  std::error_code read(const std::string& path, std::size_t maximum = 100) {
    mContents = before;
    return readRegularFile(path, maximum, mContents);
  }
  std::vector<std::string> names() const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(mFolder.path())) {
      names.push_back(entry.path().filename());
    }
    std::ranges::sort(names);
    return names;
  }
  mode_t modeOf(const std::string& name) const {
    struct stat status {};
    EXPECT_EQ(::lstat(mFolder.path(name).c_str(), &status), 0);
    return status.st_mode & 07777;
  }
  std::string makePipe() const {
    EXPECT_EQ(::mkfifo(mFolder.path("pipe").c_str(), 0600), 0);
    return mFolder.path("pipe");
  }
  std::string makeSocket() const {
    const std::string path = mFolder.path("socket");
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    EXPECT_LT(path.size(), sizeof address.sun_path);
    std::ranges::copy(path, address.sun_path);
    const int descriptor = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    EXPECT_EQ(::bind(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    ::close(descriptor);
    return path;
  }
  std::string link(const std::string& target, const std::string& name) const {
    std::filesystem::create_symlink(target, mFolder.path(name));
    return mFolder.path(name);
  }

  engine::test::TemporaryFolder mFolder;
  Bytes mContents;

 private:
  mode_t mMask;
};

TEST_F(RegularFileTest, IsReadWholeUpToTheMaximumAlsoThroughALink) {
  const std::string path = mFolder.write("file", after);
  for (const std::string& each : {path, link("file", "link")}) {
    EXPECT_EQ(read(each, after.size()), std::error_code());
    EXPECT_EQ(mContents, after);
    EXPECT_EQ(read(each, after.size() - 1), std::errc::file_too_large);
    EXPECT_EQ(mContents, Bytes());
  }
}

TEST_F(RegularFileTest, IsReadToItsEndWhereItsSizeIsNotKnownBeforehand) {
  EXPECT_EQ(read("/proc/self/status", 100'000), std::error_code());
  EXPECT_FALSE(mContents.empty());
  EXPECT_EQ(read("/proc/self/status", 10), std::errc::file_too_large);
}

TEST_F(RegularFileTest, IsToldFromEverythingElseThatHasAName) {
  for (const std::string& path : {mFolder.path(), makePipe(), makeSocket(), link("pipe", "link"),
                                  std::string("/dev/zero"), std::string("/dev/null")}) {
    EXPECT_EQ(read(path), std::errc::invalid_argument) << path;
    EXPECT_EQ(mContents, Bytes()) << path;
  }
}

TEST_F(RegularFileTest, ThatIsMissingIsToldAsMissing) {
  mFolder.write("file", after);
  for (const std::string& path : {mFolder.path("none"), mFolder.path("no/folder"), mFolder.path("file/in"),
                                  link("nowhere", "link"), std::string(), mFolder.path("file") + '\0' + "x"}) {
    EXPECT_TRUE(isMissingFile(read(path))) << path;
    EXPECT_EQ(mContents, Bytes()) << path;
  }
  EXPECT_FALSE(isMissingFile(read(mFolder.path())));
  EXPECT_FALSE(isMissingFile(read(mFolder.path("file"))));
}

TEST_F(RegularFileTest, IsWrittenUnderANewNameWithTheModeThatTheProcessGives) {
  EXPECT_EQ(writeRegularFile(mFolder.path("new"), after), std::error_code());
  EXPECT_EQ(mFolder.read("new"), after);
  EXPECT_EQ(modeOf("new"), 0644U);
  ::umask(077);
  EXPECT_EQ(writeRegularFile(mFolder.path("own"), {}), std::error_code());
  EXPECT_EQ(mFolder.read("own"), Bytes());
  EXPECT_EQ(modeOf("own"), 0600U);
  EXPECT_EQ(names(), (std::vector<std::string>{"new", "own"}));
}

TEST_F(RegularFileTest, IsReplacedWholeAndKeepsItsMode) {
  const std::string path = mFolder.write("file", Bytes(100'000, 'x'));
  for (const mode_t mode : {0666U, 0600U, 0755U}) {
    ASSERT_EQ(::chmod(path.c_str(), mode), 0);
    EXPECT_EQ(writeRegularFile(path, after), std::error_code());
    EXPECT_EQ(mFolder.read("file"), after);
    EXPECT_EQ(modeOf("file"), mode);
  }
  EXPECT_EQ(names(), std::vector<std::string>{"file"});
}

TEST_F(RegularFileTest, IsReplacedByAnotherOneSoThatWhoReadsItSeesOneOfThem) {
  const std::string path = mFolder.write("file", before);
  struct stat old {};
  struct stat now {};
  ASSERT_EQ(::stat(path.c_str(), &old), 0);
  std::filesystem::create_hard_link(path, mFolder.path("other name"));
  EXPECT_EQ(writeRegularFile(path, after), std::error_code());
  ASSERT_EQ(::stat(path.c_str(), &now), 0);
  EXPECT_NE(old.st_ino, now.st_ino);
  EXPECT_EQ(mFolder.read("other name"), before);
}

TEST_F(RegularFileTest, IsWrittenInPlaceOfTheTargetOfALinkThatStaysOne) {
  std::filesystem::create_directory(mFolder.path("folder"));
  mFolder.write("folder/file", before);
  link("folder/file", "link");
  const std::string chain = link(mFolder.path("link"), "chain");
  EXPECT_EQ(writeRegularFile(chain, after), std::error_code());
  EXPECT_EQ(mFolder.read("folder/file"), after);
  EXPECT_TRUE(std::filesystem::is_symlink(mFolder.path("link")));
  EXPECT_TRUE(std::filesystem::is_symlink(chain));
}

TEST_F(RegularFileTest, IsCreatedWhereALinkLeadsNowhere) {
  std::filesystem::create_directory(mFolder.path("folder"));
  EXPECT_EQ(writeRegularFile(link("folder/file", "link"), after), std::error_code());
  EXPECT_EQ(mFolder.read("folder/file"), after);
  EXPECT_TRUE(std::filesystem::is_symlink(mFolder.path("link")));
  EXPECT_EQ(modeOf("folder/file"), 0644U);
}

TEST_F(RegularFileTest, IsNeverWrittenThroughOrOverAnythingElse) {
  std::filesystem::create_directory(mFolder.path("folder"));
  const std::string self = link("self", "self");
  std::vector<std::string> paths{mFolder.path("folder"), makePipe(), makeSocket()};
  for (const char* target : {"folder", "pipe", "socket", "/dev/null"}) {
    paths.push_back(link(target, "to " + std::filesystem::path(target).filename().string()));
  }
  const std::vector<std::string> present = names();
  for (const std::string& path : paths) {
    const auto type = std::filesystem::symlink_status(path).type();
    EXPECT_EQ(writeRegularFile(path, after), std::errc::invalid_argument) << path;
    EXPECT_EQ(std::filesystem::symlink_status(path).type(), type) << path;
  }
  EXPECT_EQ(writeRegularFile(mFolder.path("a") + '\0', after), std::errc::invalid_argument);
  EXPECT_EQ(writeRegularFile(self, after), std::errc::too_many_symbolic_link_levels);
  EXPECT_EQ(names(), present);
}

TEST_F(RegularFileTest, IsLeftAsItWasWhereTheDiskTakesNoMore) {
  const std::string path = mFolder.write("file", before);
  rlimit limit{};
  ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &limit), 0);
  const auto handler = std::signal(SIGXFSZ, SIG_IGN);
  const rlimit small = {10, limit.rlim_max};
  ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &small), 0);
  const std::error_code replacing = writeRegularFile(path, Bytes(20, 'x'));
  const std::error_code creating = writeRegularFile(mFolder.path("new"), Bytes(20, 'x'));
  ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &limit), 0);
  std::signal(SIGXFSZ, handler);
  EXPECT_EQ(replacing, std::errc::file_too_large);
  EXPECT_EQ(creating, std::errc::file_too_large);
  EXPECT_EQ(mFolder.read("file"), before);
  EXPECT_EQ(names(), std::vector<std::string>{"file"});
}

TEST_F(RegularFileTest, IsNotWrittenWhereItsNameCannotBe) {
  EXPECT_EQ(writeRegularFile(mFolder.path("no/folder"), after), std::errc::no_such_file_or_directory);
  EXPECT_EQ(writeRegularFile(mFolder.path(std::string(300, 'n')), after), std::errc::filename_too_long);
  EXPECT_EQ(writeRegularFile(mFolder.path("new/"), after), std::errc::no_such_file_or_directory);
  EXPECT_EQ(names(), std::vector<std::string>());
  // A name that just fits leaves no room for a longer one beside it.
  EXPECT_EQ(writeRegularFile(mFolder.path(std::string(255, 'n')), after), std::error_code());
}

TEST_F(RegularFileTest, ThatNobodyMayWriteToIsNotReplaced) {
  const std::string path = mFolder.write("file", before);
  ASSERT_EQ(::chmod(path.c_str(), 0444), 0);
  // The folder takes new files, so only the file's own mode stands in the way.
  ASSERT_EQ(::chmod(mFolder.path().c_str(), 0777), 0);
  {
    const WithoutPrivileges nobody;
    EXPECT_EQ(writeRegularFile(path, after), std::errc::permission_denied);
  }
  EXPECT_EQ(mFolder.read("file"), before);
}

TEST_F(RegularFileTest, IsReportedAboutInOneLine) {
  EXPECT_EQ(reasonOf(read(mFolder.path())), "not a regular file");
  EXPECT_EQ(reasonOf(read(mFolder.write("file", after), 1)), "File too large");
  EXPECT_EQ(reasonOf(read(mFolder.path("none"))), "No such file or directory");
}

}  // namespace
}  // namespace vorn
