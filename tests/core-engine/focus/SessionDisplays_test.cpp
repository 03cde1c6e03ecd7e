// Displays that come and go, as sockets in folders of the test's own.
#include "core-engine/focus/SessionDisplays.h"

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>

#include <cstdlib>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include "core-engine/focus/LocalSocket.h"
#include "support/LoopPump.h"
#include "support/PrivateBus.h"
#include "support/TemporaryFolder.h"

namespace vorn::engine::test {
namespace {

// Somebody who listens.
class Listener {
 public:
  explicit Listener(std::string path)
      : mPath(std::move(path)), mSocket(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    mPath.copy(address.sun_path, sizeof(address.sun_path) - 1);
    const auto* const generic = reinterpret_cast<const sockaddr*>(&address);
    EXPECT_EQ(bind(mSocket.get(), generic, sizeof(address)), 0);
    EXPECT_EQ(listen(mSocket.get(), 8), 0);
  }
  ~Listener() { std::filesystem::remove(mPath); }
  Listener(const Listener&) = delete;
  Listener& operator=(const Listener&) = delete;

 private:
  std::string mPath;
  FileDescriptor mSocket;
};

class SessionDisplaysTest : public testing::Test {
 protected:
  SessionDisplaysTest() {
    for (const char* name : {"WAYLAND_DISPLAY", "DISPLAY", "XAUTHORITY"}) unsetenv(name);
    std::filesystem::create_directory(folder.path("x11"));
    setenv("XDG_RUNTIME_DIR", folder.path().c_str(), 1);
    setenv("HOME", "/home/someone", 1);
  }
  FoundDisplays find() {
    std::optional<FoundDisplays> result;
    displays.find([&](const FoundDisplays& found) { result = found; });
    EXPECT_TRUE(vorn::test::runUntil(loop, [&] { return result.has_value(); }));
    return result.value_or(FoundDisplays());
  }

  vorn::test::PrivateBus bus;
  TemporaryFolder folder;
  RunLoop loop;
  RunLoopScheduler scheduler{loop};
  SessionDisplays displays{loop, scheduler, folder.path("x11")};
};

TEST_F(SessionDisplaysTest, AreThoseThatTheEnvironmentNames) {
  const Listener x0(folder.path("x11/X0"));
  const Listener x5(folder.path("x11/X5"));
  const Listener wayland(folder.path("wayland-1"));
  setenv("DISPLAY", ":5.0", 1);
  EXPECT_EQ(find(), (FoundDisplays{"", ":5.0", folder.path("x11/X5"), "/home/someone/.Xauthority"}));
  setenv("WAYLAND_DISPLAY", "wayland-1", 1);
  setenv("XAUTHORITY", "/run/keys", 1);
  EXPECT_EQ(find(), (FoundDisplays{folder.path("wayland-1"), ":5.0", folder.path("x11/X5"), "/run/keys"}));
}

TEST_F(SessionDisplaysTest, AreNoneWhereNobodyListensWhereTheEnvironmentPoints) {
  const Listener x0(folder.path("x11/X0"));
  setenv("DISPLAY", ":1", 1);
  EXPECT_EQ(find(), FoundDisplays());
  setenv("DISPLAY", "elsewhere:0", 1);
  EXPECT_EQ(find(), FoundDisplays());
}

TEST_F(SessionDisplaysTest, AreThoseWhoseSocketsAreThereWhereNothingNamesOne) {
  EXPECT_EQ(find(), FoundDisplays());
  const Listener x3(folder.path("x11/X3"));
  EXPECT_EQ(find(), (FoundDisplays{"", ":3", folder.path("x11/X3"), "/home/someone/.Xauthority"}));
  const Listener wayland(folder.path("wayland-7"));
  EXPECT_EQ(find().waylandSocket, folder.path("wayland-7"));
}

TEST_F(SessionDisplaysTest, TellOfSocketsThatComeWhileTheyAreWatched) {
  int changes = 0;
  displays.watch([&] { ++changes; });
  const Listener other(folder.path("pulse"));
  const Listener x3(folder.path("x11/X3"));
  EXPECT_TRUE(vorn::test::runUntil(loop, [&] { return changes == 1; }));
  const Listener wayland(folder.path("wayland-0"));
  EXPECT_TRUE(vorn::test::runUntil(loop, [&] { return changes == 2; }));
  displays.watch({});
  const Listener x4(folder.path("x11/X4"));
  EXPECT_EQ(find().waylandSocket, folder.path("wayland-0"));
  EXPECT_EQ(changes, 2);
}

TEST_F(SessionDisplaysTest, TellOfTheFolderOfTheSocketsToo) {
  std::filesystem::remove(folder.path("x11"));
  int changes = 0;
  displays.watch([&] { ++changes; });
  std::filesystem::create_directory(folder.path("x11"));
  EXPECT_TRUE(vorn::test::runUntil(loop, [&] { return changes == 1; }));
  const Listener x0(folder.path("x11/X0"));
  EXPECT_TRUE(vorn::test::runUntil(loop, [&] { return changes == 2; }));
}

TEST_F(SessionDisplaysTest, UnderstandTheNamesOfDisplays) {
  EXPECT_EQ(numberOfX11Display(":0"), 0);
  EXPECT_EQ(numberOfX11Display(":12.1"), 12);
  EXPECT_EQ(numberOfX11Display("unix:3"), 3);
  for (const char* other : {"", ":", ":x", "host:0", "localhost:10.0", ":-1", ":1x"}) {
    EXPECT_LT(numberOfX11Display(other), 0) << other;
  }
  EXPECT_EQ(waylandSocketOf("wayland-0", "/run/user/1"), "/run/user/1/wayland-0");
  EXPECT_EQ(waylandSocketOf("/tmp/w", "/run/user/1"), "/tmp/w");
  EXPECT_EQ(waylandSocketOf("wayland-0", ""), "");
  EXPECT_EQ(waylandSocketOf("", "/run/user/1"), "");
}

}  // namespace
}  // namespace vorn::engine::test
