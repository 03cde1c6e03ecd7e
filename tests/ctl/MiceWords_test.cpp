#include "ctl/MiceWords.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace vorn::ctl::test {
namespace {

using Lines = std::vector<std::string>;

PropertyList texts(const std::vector<std::string>& all) {
  return PropertyList::array(std::vector<PropertyList>(all.begin(), all.end()));
}

PropertyList mouse(const std::string& id, const std::string& name) {
  return PropertyList::dictionary({{"id", id},
                                   {"name", name},
                                   {"isInUse", false},
                                   {"isPresent", true},
                                   {"isAllowed", true},
                                   {"forbidden", texts({})},
                                   {"connection", "wired"},
                                   {"nodes", texts({"/dev/input/event4", "/dev/input/event5"})},
                                   {"controls", texts({"03", "20", "keymap"})},
                                   {"taught", texts({"keymap"})},
                                   {"resolution", 1000}});
}

PropertyList allMice() {
  return PropertyList::array({mouse("usb-1", "Acme Grid"), mouse("usb-2", "Acme Grid Pro"), mouse("usb-3", "Bolt"),
                              mouse("virtual", "Virtual mouse")});
}

// The ID of the mouse, or the failure.
std::string found(const std::string& word) {
  const auto result = mouseNamed(allMice(), word);
  return result ? (*result)["id"].toString() : result.failure().text;
}

TEST(MiceWordsTest, FindsAMouseByItsIdItsNameOrAPartOfItAlone) {
  EXPECT_EQ(found("usb-2"), "usb-2");
  EXPECT_EQ(found("Acme Grid"), "usb-1");
  EXPECT_EQ(found("bolt"), "usb-3");
  EXPECT_EQ(found("PRO"), "usb-2");
  EXPECT_EQ(found("virtual"), "virtual");
  EXPECT_EQ(found("acme"), "\"acme\" may be several mice; say which by its ID: usb-1, usb-2");
  EXPECT_EQ(found("usb"), "there is no mouse \"usb\"; \"vornctl mice list\" lists them");
  EXPECT_EQ(found(""), "there is no mouse \"\"; \"vornctl mice list\" lists them");
}

TEST(MiceWordsTest, TellsAMouseInALine) {
  const PropertyList acme = mouse("usb-1", "Acme");
  const std::string start = "Acme                          usb-1                             ";
  EXPECT_EQ(lineOfMouse(acme), "  " + start + "on its cable");
  EXPECT_EQ(lineOfMouse(acme.with("isInUse", true).with("connection", "wireless")), "* " + start + "wireless");
  EXPECT_EQ(lineOfMouse(acme.with("isInUse", true).with("isPresent", false)), "* " + start + "not plugged in");
  EXPECT_EQ(lineOfMouse(acme.with("isAllowed", false).with("forbidden", texts({"/dev/input/event4", "/dev/uinput"}))),
            "  " + start + "on its cable; no access to /dev/input/event4, /dev/uinput");
  EXPECT_EQ(lineOfMouse(acme.with("id", "virtual").with("connection", "virtual")),
            "  Acme                          virtual");
}

TEST(MiceWordsTest, TellsAllOfAMouse) {
  EXPECT_EQ(linesOfMouse(mouse("usb-1", "Acme")),
            (Lines{"Name:         Acme", "ID:           usb-1", "State:        not in use, on its cable",
                   "Device files: /dev/input/event4, /dev/input/event5", "Controls:     2 Q, 17 Wheel, keymap",
                   "Taught:       keymap", "Resolution:   1000 DPI"}));
  const PropertyList used = mouse("virtual", "Virtual mouse")
                                .with("isInUse", true)
                                .with("connection", "virtual")
                                .with("sensitivity", "hardware")
                                .with("hasPollingRate", true)
                                .with("hasBattery", true);
  EXPECT_EQ(linesOfMouse(used), (Lines{"Name:         Virtual mouse", "ID:           virtual", "State:        in use",
                                       "Sensitivity:  set in the mouse", "Offers:       polling rate, battery"}));
}

TEST(MiceWordsTest, TellsWhatOfAMouseIsNotUsed) {
  const Lines lines = linesOfMouse(mouse("usb-1", "Acme")
                                       .with("held", texts({"/dev/input/event4", "/dev/input/event5"}))
                                       .with("busy", texts({"/dev/input/event6"})));
  ASSERT_EQ(lines.size(), 9U);
  EXPECT_EQ(lines[4],
            "Not used:     /dev/input/event4, /dev/input/event5, since something on it is held down; press it and let "
            "it go");
  EXPECT_EQ(lines[5], "Not used:     /dev/input/event6, since another program keeps it for itself");
}

TEST(MiceWordsTest, TellsWhatBecameOfATeaching) {
  const PropertyList taught =
      PropertyList::dictionary({{"control", "20"}, {"source", "BTN_SIDE"}, {"former", ""}, {"isTaught", true}});
  EXPECT_EQ(lineOfTaught(taught), "Control 2 Q is BTN_SIDE now");
  EXPECT_EQ(lineOfTaught(taught.with("former", "keymap")),
            "Control 2 Q is BTN_SIDE now, which control keymap has lost");
}

}  // namespace
}  // namespace vorn::ctl::test
