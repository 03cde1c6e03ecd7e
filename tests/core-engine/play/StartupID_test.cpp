#include "core-engine/play/StartupID.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <chrono>
#include <optional>
#include <string>

#include "support/ChangedEnvironment.h"

namespace vorn::engine::test {
namespace {

class StartupIDTest : public testing::Test {
 protected:
  std::string idOn(const std::optional<std::string>& x11, const std::optional<std::string>& wayland,
                   const std::optional<std::string>& session = std::nullopt) {
    environment.set("DISPLAY", x11);
    environment.set("WAYLAND_DISPLAY", wayland);
    environment.set("XDG_SESSION_TYPE", session);
    return startupID("My Editor/2");
  }
  static std::uint32_t now() {
    return static_cast<std::uint32_t>(
        std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now().time_since_epoch())
            .count());
  }

  vorn::test::ChangedEnvironment environment;
};

TEST_F(StartupIDTest, HasTheTimeOfNowOnX11) {
  const std::uint32_t before = now();
  const std::string id = idOn(":0", std::nullopt);
  EXPECT_TRUE(id.starts_with("vorn-core-engine/My_Editor_2/" + std::to_string(::getpid()) + "-")) << id;
  const auto time = static_cast<std::uint32_t>(std::stoul(id.substr(id.find("_TIME") + 5)));
  EXPECT_LE(time - before, now() - before);
}

TEST_F(StartupIDTest, IsAnotherOneEachTime) {
  EXPECT_NE(idOn(":0", std::nullopt), idOn(":0", std::nullopt));
}

TEST_F(StartupIDTest, IsNoneWhereItsTimeMeansNothing) {
  EXPECT_EQ(idOn(std::nullopt, std::nullopt), "");
  EXPECT_EQ(idOn(std::nullopt, "wayland-0"), "");
  EXPECT_EQ(idOn(":0", "wayland-0"), "");
  EXPECT_EQ(idOn(":0", std::nullopt, "wayland"), "");
  EXPECT_EQ(idOn("far:0", std::nullopt), "");
  EXPECT_NE(idOn("unix:0", std::nullopt, "x11"), "");
}

}  // namespace
}  // namespace vorn::engine::test
