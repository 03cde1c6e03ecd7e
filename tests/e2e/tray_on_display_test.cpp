// The window and the tray of a desktop: the real window on a real display with a window manager, the real engine, and a
// double of the tray, which reads the menu as a desktop does ("com.canonical.dbusmenu").
#include <gtest/gtest.h>
#include <systemd/sd-bus.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include "e2e/ConfiguratorProcess.h"
#include "e2e/Display.h"
#include "e2e/Vornctl.h"
#include "support/FakeTray.h"
#include "support/PrivateBus.h"
#include "support/TemporaryFolder.h"

namespace vorn::test {
namespace {

using engine::test::TemporaryFolder;
using skarn::test::runVornctl;
using skarn::test::vornctl;

constexpr std::chrono::seconds patience{60};

struct MenuEntry {
  std::int32_t id = 0;
  std::string label;  // empty for a line between entries
  bool isEnabled = true;
  bool isTicked = false;
};

class TrayOnDisplayTest : public testing::Test {
 protected:
  void SetUp() override {
    setenv("XDG_CONFIG_HOME", mFolder.path("config").c_str(), 1);
    setenv("XDG_CACHE_HOME", mFolder.path("cache").c_str(), 1);
    setenv("NO_AT_BRIDGE", "1", 1);
    setenv("LSAN_OPTIONS", "suppressions=" LEAKS_OF_OTHERS ":print_suppressions=0", 1);
    mDisplay = startX11Display(mDisplayFolder.path());
    ASSERT_TRUE(mDisplay);
    mEngine = std::make_unique<EngineProcess>(mFolder.path("state"));
    ASSERT_TRUE(runVornctl({"profiles", "add", "R&D_work"}));
    ASSERT_GE(sd_bus_open_user(&mBus), 0);
  }
  void TearDown() override { mBus = sd_bus_flush_close_unref(mBus); }

  void wantTray() {
    std::filesystem::create_directories(mFolder.path("config/skarn-configurator"));
    const std::string file = mFolder.path("config/skarn-configurator/window.ini");
    if (!std::filesystem::exists(file)) std::ofstream(file) << "[tray]\nisWanted=true\n";
  }
  void openWindow() {
    mWindow = std::make_unique<ConfiguratorProcess>(std::vector<std::string>{"--verbose"}, mDisplay->platform());
    ASSERT_FALSE(mWindow->waitFor("window painted").empty());
    ASSERT_TRUE(mDisplay->waitForFocus(mWindow->process().id(), Display::Window::Main));
  }
  void openWindowWithItem() {
    wantTray();
    ASSERT_NO_FATAL_FAILURE(openWindow());
    mItem = mTray.waitForItem(patience);
    ASSERT_FALSE(mItem.empty());
  }

  std::vector<MenuEntry> menu() {
    sd_bus_message* reply = nullptr;
    std::vector<MenuEntry> entries;
    if (sd_bus_call_method(mBus, mItem.c_str(), "/MenuBar", "com.canonical.dbusmenu", "GetLayout", nullptr, &reply,
                           "iias", 0, -1, 0) < 0) {
      return entries;
    }
    sd_bus_message_skip(reply, "u");
    sd_bus_message_enter_container(reply, 'r', "ia{sv}av");
    sd_bus_message_skip(reply, "ia{sv}");
    sd_bus_message_enter_container(reply, 'a', "v");
    while (sd_bus_message_enter_container(reply, 'v', "(ia{sv}av)") > 0) {
      sd_bus_message_enter_container(reply, 'r', "ia{sv}av");
      entries.push_back(entryOf(reply));
      sd_bus_message_skip(reply, "av");
      sd_bus_message_exit_container(reply);
      sd_bus_message_exit_container(reply);
    }
    sd_bus_message_unref(reply);
    return entries;
  }
  // Two "_" are one, a single one marks a letter.
  static std::string shownText(const std::string& label) {
    std::string shown;
    for (std::size_t i = 0; i < label.size(); ++i) {
      if (label[i] == '_' && ++i == label.size()) break;
      shown += label[i];
    }
    return shown;
  }
  static MenuEntry entryOf(sd_bus_message* reply) {
    MenuEntry entry;
    sd_bus_message_read(reply, "i", &entry.id);
    sd_bus_message_enter_container(reply, 'a', "{sv}");
    while (sd_bus_message_enter_container(reply, 'e', "sv") > 0) {
      const char* key = nullptr;
      sd_bus_message_read(reply, "s", &key);
      const std::string name = key;
      int number = 0;
      const char* text = nullptr;
      if (name == "label" && sd_bus_message_read(reply, "v", "s", &text) >= 0) {
        entry.label = shownText(text);
      } else if (name == "enabled" && sd_bus_message_read(reply, "v", "b", &number) >= 0) {
        entry.isEnabled = number != 0;
      } else if (name == "toggle-state" && sd_bus_message_read(reply, "v", "i", &number) >= 0) {
        entry.isTicked = number == 1;
      } else if (name != "label" && name != "enabled" && name != "toggle-state") {
        sd_bus_message_skip(reply, "v");
      }
      sd_bus_message_exit_container(reply);
    }
    sd_bus_message_exit_container(reply);
    return entry;
  }
  // As the tray shows them: "(x)" before a ticked one, brackets around what is off.
  std::vector<std::string> shownMenu() {
    std::vector<std::string> shown;
    for (const MenuEntry& each : menu()) {
      std::string text = each.label.empty() ? "-" : (each.isTicked ? "(x) " : "") + each.label;
      shown.push_back(each.isEnabled ? text : "[" + text + "]");
    }
    return shown;
  }
  // Whether the menu comes to look like that.
  testing::AssertionResult showsMenu(const std::vector<std::string>& expected) {
    const auto end = std::chrono::steady_clock::now() + patience;
    std::vector<std::string> shown;
    do {
      shown = shownMenu();
      if (shown == expected) return testing::AssertionSuccess();
    } while (std::chrono::steady_clock::now() < end);
    return testing::AssertionFailure() << testing::PrintToString(shown);
  }
  void choose(const std::string& label) {
    for (const MenuEntry& each : menu()) {
      if (each.label != label) continue;
      EXPECT_GE(sd_bus_call_method(mBus, mItem.c_str(), "/MenuBar", "com.canonical.dbusmenu", "Event", nullptr, nullptr,
                                   "isvu", each.id, "clicked", "s", "", 0U),
                0);
      return;
    }
    ADD_FAILURE() << "no entry " << label;
  }
  void clickItem() {
    EXPECT_GE(sd_bus_call_method(mBus, mItem.c_str(), "/StatusNotifierItem", "org.kde.StatusNotifierItem", "Activate",
                                 nullptr, nullptr, "ii", 0, 0),
              0);
  }

  PrivateBus mSessionBus;
  TemporaryFolder mFolder;
  TemporaryFolder mDisplayFolder;
  FakeTray mTray;
  std::unique_ptr<Display> mDisplay;
  std::unique_ptr<EngineProcess> mEngine;
  std::unique_ptr<ConfiguratorProcess> mWindow;
  std::string mItem;
  sd_bus* mBus = nullptr;
};

TEST_F(TrayOnDisplayTest, ShowsTheProfilesAndSwitchesToTheChosenOne) {
  ASSERT_NO_FATAL_FAILURE(openWindowWithItem());
  EXPECT_TRUE(showsMenu({"(x) Default", "R&D_work", "-", "Open Skarn", "Quit"}));
  choose("R&D_work");
  EXPECT_TRUE(showsMenu({"Default", "(x) R&D_work", "-", "Open Skarn", "Quit"}));
  EXPECT_EQ(vornctl({"get", "ProfileName"}), "R&D_work");
}

TEST_F(TrayOnDisplayTest, FollowsWhatOthersSwitchTo) {
  ASSERT_NO_FATAL_FAILURE(openWindowWithItem());
  ASSERT_TRUE(runVornctl({"profiles", "switch", "R&D_work"}));
  EXPECT_TRUE(showsMenu({"Default", "(x) R&D_work", "-", "Open Skarn", "Quit"}));
}

TEST_F(TrayOnDisplayTest, SaysTheBatteryAndSwitchesNothingWithoutAMouse) {
  ASSERT_TRUE(runVornctl({"device", "plug", "wireless"}));
  ASSERT_TRUE(runVornctl({"device", "battery", "40"}));
  ASSERT_NO_FATAL_FAILURE(openWindowWithItem());
  EXPECT_TRUE(showsMenu({"[Battery at 40 percent]", "-", "(x) Default", "R&D_work", "-", "Open Skarn", "Quit"}));
  ASSERT_TRUE(runVornctl({"device", "unplug"}));
  EXPECT_TRUE(showsMenu({"[No mouse connected.]", "-", "[(x) Default]", "[R&D_work]", "-", "Open Skarn", "Quit"}));
}

TEST_F(TrayOnDisplayTest, HidesTheWindowWhereItsCloseButtonIsClickedAndOpensItAgain) {
  ASSERT_NO_FATAL_FAILURE(openWindowWithItem());
  const pid_t window = mWindow->process().id();
  ASSERT_TRUE(mDisplay->closeWindow(window));
  EXPECT_TRUE(showsMenu({"(x) Default", "R&D_work", "-", "Open Skarn", "Quit"}));
  clickItem();
  EXPECT_TRUE(mDisplay->waitForFocus(window, Display::Window::Main));
  ASSERT_TRUE(mDisplay->closeWindow(window));
  choose("Open Skarn");
  EXPECT_TRUE(mDisplay->waitForFocus(window, Display::Window::Main));
  ASSERT_TRUE(mDisplay->closeWindow(window));
  choose("Quit");
  EXPECT_EQ(mWindow->process().waitForEnd(patience), 0);
}

TEST_F(TrayOnDisplayTest, SaysOnceThatTheClosedWindowIsStillThere) {
  ASSERT_NO_FATAL_FAILURE(openWindowWithItem());
  ASSERT_TRUE(mDisplay->closeWindow(mWindow->process().id()));
  EXPECT_EQ(mTray.waitForMessages(1, patience), std::vector<std::string>{"Skarn is still there"});
  // Not in another run either. What is told at all is told before the answer to this.
  EXPECT_EQ(mWindow->quit(), 0);
  ASSERT_NO_FATAL_FAILURE(openWindowWithItem());
  ASSERT_TRUE(mDisplay->closeWindow(mWindow->process().id()));
  EXPECT_TRUE(showsMenu({"(x) Default", "R&D_work", "-", "Open Skarn", "Quit"}));
  EXPECT_EQ(mTray.waitForMessages(0, patience), std::vector<std::string>{"Skarn is still there"});
}

TEST_F(TrayOnDisplayTest, QuitsByItsKey) {
  ASSERT_NO_FATAL_FAILURE(openWindowWithItem());
  using Strokes = std::vector<Stroke>;
  EXPECT_FALSE(mDisplay->type(Strokes{{224, true}, {20, true}, {20, false}, {224, false}}).empty());  // Ctrl+Q
  EXPECT_EQ(mWindow->process().waitForEnd(patience), 0);
}

TEST_F(TrayOnDisplayTest, ClosesForGoodWhereNothingStandsInTheTray) {
  ASSERT_NO_FATAL_FAILURE(openWindow());
  ASSERT_TRUE(mDisplay->closeWindow(mWindow->process().id()));
  EXPECT_EQ(mWindow->process().waitForEnd(patience), 0);
  EXPECT_EQ(mTray.waitForItem(std::chrono::seconds(0)), "");
}

TEST_F(TrayOnDisplayTest, ClosesForGoodWhereTheTrayHasGone) {
  ASSERT_NO_FATAL_FAILURE(openWindowWithItem());
  mTray.disappear();
  // The window has heard of it when its item has gone.
  const auto end = std::chrono::steady_clock::now() + patience;
  while (!menu().empty() && std::chrono::steady_clock::now() < end) {
  }
  ASSERT_TRUE(mDisplay->closeWindow(mWindow->process().id()));
  EXPECT_EQ(mWindow->process().waitForEnd(patience), 0);
}

TEST_F(TrayOnDisplayTest, StandsInATrayThatComesLater) {
  mTray.disappear();
  wantTray();
  ASSERT_NO_FATAL_FAILURE(openWindow());
  mTray.appear();
  mItem = mTray.waitForItem(patience);
  EXPECT_TRUE(showsMenu({"(x) Default", "R&D_work", "-", "Open Skarn", "Quit"}));
}

}  // namespace
}  // namespace vorn::test
