#include "ctl/FocusWords.h"

#include <gtest/gtest.h>

#include "protocol/Focus.h"

namespace vorn::ctl::test {
namespace {

namespace words = focus::keys;
using Lines = std::vector<std::string>;

PropertyList state(std::string_view source, bool isUsed = true) {
  return PropertyList::dictionary({{words::Source, source}, {words::IsUsed, isUsed}});
}

TEST(FocusWordsTest, SayWhoIsInFrontAndWhichProfileThatChooses) {
  EXPECT_EQ(linesOfFocus(state("x11")
                             .with(words::Name, "Chess")
                             .with(words::Identifier, "org.example.Chess")
                             .with(words::Executable, "/usr/games/chess")
                             .with(words::Profile, "Game")),
            (Lines{"In front:  Chess, org.example.Chess, /usr/games/chess",
                   "Told by:   the window manager of the X server", "Profile:   \"Game\""}));
  EXPECT_EQ(linesOfFocus(state("bus").with(words::Name, "chess").with(words::Identifier, "chess")),
            (Lines{"In front:  chess", "Told by:   a program, over the session bus",
                   "Profile:   none for this application"}));
  EXPECT_EQ(linesOfFocus(state("wlroots", false)), (Lines{"In front:  the bare desktop", "Told by:   the compositor",
                                                          "Profile:   none follows an application"}));
}

TEST(FocusWordsTest, SayWhatIsMissing) {
  const auto last = [](std::string_view need) { return linesOfFocus(state("").with(words::Needs, need)).back(); };
  EXPECT_EQ(linesOfFocus(state("").with(words::Needs, "display")),
            (Lines{"In front:  unknown", "Told by:   nothing", "Profile:   none for this application",
                   "Needs:     a display of this session that the engine can reach"}));
  EXPECT_EQ(last("gnome-extension"), "Needs:     the GNOME Shell extension of this program, enabled");
  EXPECT_EQ(last("kde"), "Needs:     a KWin that takes scripts");
  EXPECT_EQ(last("compositor"), "Needs:     a window manager or compositor that tells which window is in front");
  EXPECT_EQ(last("something new"), "Needs:     something new");
}

TEST(FocusWordsTest, TakeWhatHasNoShape) {
  EXPECT_EQ(linesOfFocus({}),
            (Lines{"In front:  unknown", "Told by:   nothing", "Profile:   none follows an application"}));
}

}  // namespace
}  // namespace vorn::ctl::test
