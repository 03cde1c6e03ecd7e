#include "core-engine/focus/ApplicationMatch.h"

#include <gtest/gtest.h>

#include <map>
#include <string>

#include "model/SettingsKeys.h"

namespace vorn::engine::test {
namespace {

class ApplicationMatchTest : public testing::Test {
 protected:
  ApplicationMatch matchOf(const std::string& identifier, const std::string& executable,
                           const std::string& application = "Game") {
    return {PropertyList::dictionary({{keys::Application, application},
                                      {keys::Identifier, identifier},
                                      {keys::Executable, executable},
                                      {keys::Signature, "????"}}),
            [this](const std::string& id) {
              asked.push_back(id);
              const auto found = entries.find(id);
              return found == entries.end() ? std::nullopt : DesktopEntry::read(found->second);
            }};
  }
  static Application window(const std::string& identifier, const std::string& executable = "") {
    return {identifier, executable, "Some title"};
  }

  std::map<std::string, std::string> entries;
  std::vector<std::string> asked;
};

TEST_F(ApplicationMatchTest, KnowsAnApplicationByItsIdentifierWithoutRegardToCaseAndSuffix) {
  const ApplicationMatch match = matchOf("org.example.Game.desktop", "");
  for (const char* same : {"org.example.Game", "ORG.example.game", "org.example.Game.desktop"}) {
    EXPECT_TRUE(match.fits(window(same))) << same;
  }
  for (const char* other : {"", "Game", "org.example", "org.example.Game2", "desktop"}) {
    EXPECT_FALSE(match.fits(window(other))) << other;
  }
}

TEST_F(ApplicationMatchTest, KnowsAWindowByTheClassOfTheDesktopEntry) {
  entries["browser"] = "[Desktop Entry]\nExec=web\nStartupWMClass=Web-Browser\n";
  const ApplicationMatch match = matchOf("browser.desktop", "");
  EXPECT_TRUE(match.fits(window("web-browser")));
  EXPECT_TRUE(match.fits({"Other", "", "", "Web-Browser"}));
  EXPECT_FALSE(match.fits(window("web")));
  EXPECT_EQ(asked, std::vector<std::string>{"browser"});
}

TEST_F(ApplicationMatchTest, KnowsAGameOfAShopByItsNumber) {
  entries["Dungeon"] = "[Desktop Entry]\nExec=steam steam://rungameid/4711\n";
  const ApplicationMatch match = matchOf("Dungeon.desktop", "steam");
  EXPECT_TRUE(match.fits(window("steam_app_4711", "/games/wine64-preloader")));
  EXPECT_FALSE(match.fits(window("steam_app_47110")));
  EXPECT_FALSE(match.fits(window("steam", "/usr/games/steam")));
}

TEST_F(ApplicationMatchTest, KnowsAProgramByTheNameOfItsFile) {
  const ApplicationMatch match = matchOf("", "/opt/game/bin/game");
  EXPECT_TRUE(match.fits(window("Unrelated", "/usr/games/game")));
  EXPECT_TRUE(match.fits(window("", "game")));
  EXPECT_FALSE(match.fits(window("", "/opt/game/bin/Game")));
  EXPECT_TRUE(matchOf("", "C:\\Games\\Game.exe").fits(window("", "D:\\Game.exe")));
}

TEST_F(ApplicationMatchTest, KnowsNothingByAProgramThatRunsOthers) {
  for (const char* launcher : {"python3", "/usr/bin/python3.11", "java", "sh", "/usr/bin/bwrap", "flatpak", "env",
                               "electron22", "wine", "wine64", "wine64-preloader", "/usr/bin/bash"}) {
    const ApplicationMatch match = matchOf("", launcher);
    EXPECT_FALSE(match.fits(window("", launcher))) << launcher;
    EXPECT_FALSE(match.isTied()) << launcher;
  }
}

TEST_F(ApplicationMatchTest, IsTiedToNothingWithoutAnApplication) {
  const ApplicationMatch match = matchOf("game.desktop", "game", "");
  EXPECT_FALSE(match.isTied());
  EXPECT_FALSE(match.fits(window("game", "game")));
  EXPECT_FALSE(match.fits({}));
  EXPECT_TRUE(asked.empty());
  for (const PropertyList& shapeless : {PropertyList(), PropertyList("game"), PropertyList::array()}) {
    EXPECT_FALSE(ApplicationMatch(shapeless, {}).fits(window("game", "game")));
  }
}

TEST_F(ApplicationMatchTest, NeverFitsTheBareDesktop) {
  EXPECT_FALSE(matchOf("game.desktop", "game").fits({}));
  EXPECT_FALSE(matchOf("", "").fits({}));
}

}  // namespace
}  // namespace vorn::engine::test
