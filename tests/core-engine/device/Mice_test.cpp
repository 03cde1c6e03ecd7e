#include "core-engine/device/Mice.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core-engine/TestParts.h"
#include "core-engine/device/FakeMice.h"

namespace vorn::engine::test {
namespace {

using namespace std::chrono_literals;
using Fault = Mice::Fault;
using Texts = std::vector<std::string>;

const std::string acme = "usb-16c0:27db-A1";
const std::string bolt = "usb-046d:c548-B2";

class MiceTest : public testing::Test {
 protected:
  MiceTest() {
    real.found = {foundMouse(acme, "Acme"), foundMouse(bolt, "Bolt")};
    begin();
  }

  // As after a start of the engine.
  void begin() {
    mice.reset();
    mice.emplace(Mice::Parts{parts.disk, parts.log, parts.scheduler, parts.store, turns, parts.device, real, inUse},
                 "/state");
    mice->setChangeHandler([this] { ++changes; });
    mice->setLeavingHandler([this] { told.emplace_back("leaving"); });
    mice->setTaughtHandler([this](const Mice::Taught& taught) { all.push_back(taught); });
    mice->load();
    told.clear();
  }
  Fault choose(const std::string& id) {
    Fault result{};
    mice->choose(id, [&](const Mice::Outcome& outcome) { result = outcome.fault; });
    parts.scheduler.advance(0us);
    return result;
  }
  Fault teach(const std::string& control, const std::string& teacher = ":1.1") {
    Fault result{};
    mice->teach(control, teacher, [&](const Mice::Outcome& outcome) { result = outcome.fault; });
    return result;
  }
  Fault forget(const std::string& control) {
    Fault result{};
    mice->forget(control, [&](const Mice::Outcome& outcome) { result = outcome.fault; });
    return result;
  }
  Fault setResolution(std::uint32_t resolution) {
    Fault result{};
    mice->setResolution(resolution, [&](const Mice::Outcome& outcome) { result = outcome.fault; });
    return result;
  }
  Texts listed() const {
    Texts lines;
    for (const Mice::Listed& each : mice->list()) {
      std::string line = each.mouse.id + " " + each.mouse.name;
      if (each.isInUse) line += ", in use";
      if (!each.isPresent) line += ", absent";
      if (each.abilities) line += ", able";
      for (const std::string& control : each.taught) line += ", taught " + control;
      lines.push_back(line + ", " + std::to_string(each.resolution));
    }
    return lines;
  }
  FakeMice::Mouse& mouse() const { return *real.inUse.back(); }
  using All = std::vector<Mice::Taught>;

  TestParts parts{bundle("settings")};
  SettingsTurns turns{parts.store};
  FakeMice real;
  MouseInUse inUse{parts.device};
  int changes = 0;
  Texts told;
  All all;
  std::optional<Mice> mice;
};

TEST_F(MiceTest, UsesTheVirtualMouseAtFirst) {
  EXPECT_TRUE(mice->isVirtualInUse());
  EXPECT_TRUE(inUse.isUsing(parts.device));
  EXPECT_EQ(listed(), (Texts{acme + " Acme, 1000", bolt + " Bolt, 1000", "virtual Virtual mouse, in use, able, 0"}));
}

TEST_F(MiceTest, UsesTheChosenMouseAlsoAfterAStart) {
  EXPECT_EQ(choose(bolt), Fault::None);
  const Texts expected = {acme + " Acme, 1000", bolt + " Bolt, in use, able, 1000", "virtual Virtual mouse, 0"};
  EXPECT_EQ(listed(), expected);
  EXPECT_EQ(told, Texts{"leaving"});
  EXPECT_GT(changes, 0);
  begin();
  EXPECT_EQ(listed(), expected);
  EXPECT_TRUE(inUse.isUsing(mouse()));
  EXPECT_EQ(real.inUse.size(), 1U);
}

TEST_F(MiceTest, GoesFromOneMouseToAnotherAndBackToTheVirtualOne) {
  inUse.setListening(true);
  EXPECT_EQ(choose(acme), Fault::None);
  EXPECT_EQ(mouse().id, acme);
  EXPECT_TRUE(mouse().isListening);
  EXPECT_FALSE(parts.device.isListening());
  EXPECT_EQ(choose(bolt), Fault::None);
  ASSERT_EQ(real.inUse.size(), 1U);
  EXPECT_EQ(mouse().id, bolt);
  EXPECT_EQ(choose("virtual"), Fault::None);
  EXPECT_TRUE(real.inUse.empty());
  EXPECT_TRUE(inUse.isUsing(parts.device));
  begin();
  EXPECT_TRUE(mice->isVirtualInUse());
}

TEST_F(MiceTest, LetsGoOfTheControlsOfTheVirtualMouseThatItLeaves) {
  parts.device.setControl("43", true);
  choose(acme);
  EXPECT_TRUE(parts.device.pressedControls().empty());
}

TEST_F(MiceTest, ChoosesNoMouseThatIsNotThereOrThatThisUserMayNotUse) {
  real.found[0].forbidden = {"/dev/input/event4"};
  real.found[0].isPointerForbidden = true;
  real.found[1].isOutputForbidden = true;
  Mice::Outcome outcome;
  const auto note = [&outcome](const Mice::Outcome& given) { outcome = given; };
  mice->choose("usb-0:0-X", note);
  EXPECT_EQ(outcome, (Mice::Outcome{Fault::NotFound, "There is no mouse \"usb-0:0-X\""}));
  mice->choose(acme, note);
  EXPECT_EQ(outcome, (Mice::Outcome{Fault::NotAllowed,
                                    "You may not use Acme: no access to /dev/input/event4; \"vornctl doctor\" says "
                                    "what mends it"}));
  mice->choose(bolt, note);
  EXPECT_EQ(outcome.fault, Fault::NotAllowed);
  EXPECT_TRUE(mice->isVirtualInUse());
  EXPECT_TRUE(parts.disk.paths() == Texts{} || !parts.disk.contents("/state/mouse.plist"));
}

TEST_F(MiceTest, ChoosesAMouseOfWhichOnlySomeKeysAreForbidden) {
  real.found[0].forbidden = {"/dev/input/event5"};
  EXPECT_EQ(choose(acme), Fault::None);
}

TEST_F(MiceTest, ListsAChosenMouseThatIsUnpluggedUnderItsName) {
  choose(acme);
  real.found.erase(real.found.begin());
  begin();
  EXPECT_EQ(listed(),
            (Texts{acme + " Acme, in use, absent, able, 0", bolt + " Bolt, 1000", "virtual Virtual mouse, 0"}));
  EXPECT_EQ(choose(acme), Fault::None);
}

TEST_F(MiceTest, TeachesTheNextSourceAndKeepsIt) {
  choose(acme);
  EXPECT_EQ(teach("43"), Fault::None);
  mouse().heard(side);
  EXPECT_EQ(all, (All{{"43", true, "BTN_SIDE", ""}}));
  EXPECT_FALSE(mouse().heard);
  EXPECT_EQ(mouse().record.controls.sourceOf("43"), side);
  EXPECT_EQ(teach("06"), Fault::None);
  mouse().heard(tiltLeft);
  EXPECT_EQ(all.back(), (Mice::Taught{"06", true, "REL_HWHEEL -", ""}));
  // What another control has is taken from it.
  EXPECT_EQ(teach("keymap"), Fault::None);
  mouse().heard(side);
  EXPECT_EQ(all.back(), (Mice::Taught{"keymap", true, "BTN_SIDE", "43"}));
  EXPECT_EQ(listed()[0], acme + " Acme, in use, able, taught 06, taught keymap, 1000");
  begin();
  EXPECT_EQ(listed()[0], acme + " Acme, in use, able, taught 06, taught keymap, 1000");
  EXPECT_EQ(real.recordOf(acme).controls.sourceOf("keymap"), side);
  EXPECT_EQ(real.recordOf(bolt), MouseRecord());
}

TEST_F(MiceTest, EndsATeachingAfterAMinuteWithAnEmptyControlWithItsTeacherAndWithItsMouse) {
  choose(acme);
  const Mice::Taught nothing{"43"};
  teach("43");
  parts.scheduler.advance(Mice::teachingTime - 1us);
  EXPECT_EQ(all, All());
  parts.scheduler.advance(1us);
  EXPECT_EQ(all, All{nothing});
  EXPECT_FALSE(mouse().heard);
  teach("43");
  EXPECT_EQ(teach("", ":1.2"), Fault::None);  // somebody else's word
  EXPECT_EQ(all.size(), 1U);
  EXPECT_EQ(teach(""), Fault::None);
  EXPECT_EQ(all.size(), 2U);
  teach("43");
  mice->teacherLost(":1.2");
  EXPECT_EQ(all.size(), 2U);
  mice->teacherLost(":1.1");
  EXPECT_EQ(all.size(), 3U);
  teach("43");
  choose(bolt);
  EXPECT_EQ(all, (All{nothing, nothing, nothing, nothing}));
  EXPECT_EQ(parts.scheduler.pending(), 0U);
}

TEST_F(MiceTest, TeachesForOneAtATime) {
  choose(acme);
  teach("43");
  EXPECT_EQ(teach("20", ":1.2"), Fault::Busy);
  EXPECT_EQ(teach("20"), Fault::None);
  EXPECT_EQ(all, (All{{"43"}}));
  mouse().heard(side);
  EXPECT_EQ(all.back(), (Mice::Taught{"20", true, "BTN_SIDE", ""}));
  EXPECT_EQ(teach("43", ":1.2"), Fault::None);
}

TEST_F(MiceTest, TeachesNeitherTheVirtualMouseNorAnAbsentOneNorWhatIsNoControl) {
  EXPECT_EQ(teach("43"), Fault::NotTeachable);
  EXPECT_EQ(teach(""), Fault::None);
  EXPECT_EQ(forget("43"), Fault::NotTeachable);
  EXPECT_EQ(setResolution(800), Fault::NotTeachable);
  choose(acme);
  for (const char* control : {"3", "99", "id:20"}) {
    EXPECT_EQ(teach(control), Fault::BadArgument);
    EXPECT_EQ(forget(control), Fault::BadArgument);
  }
  for (const std::uint32_t resolution : {1U, 99U, 32'001U, 4'294'967'295U})
    EXPECT_EQ(setResolution(resolution), Fault::BadArgument);
  real.found.clear();
  EXPECT_EQ(teach("43"), Fault::NotTeachable);
  EXPECT_EQ(all, All());
}

TEST_F(MiceTest, ForgetsOneControlOrAll) {
  choose(acme);
  for (const auto& [control, source] : {std::pair("43", side), std::pair("06", tiltLeft)}) {
    teach(control);
    mouse().heard(source);
  }
  EXPECT_EQ(forget("43"), Fault::None);
  EXPECT_EQ(listed()[0], acme + " Acme, in use, able, taught 06, 1000");
  EXPECT_FALSE(mouse().record.controls.isTaught("43"));
  EXPECT_EQ(forget(""), Fault::None);
  EXPECT_EQ(mouse().record, MouseRecord());
}

TEST_F(MiceTest, CorrectsTheResolution) {
  choose(acme);
  EXPECT_EQ(setResolution(32'000), Fault::None);
  EXPECT_EQ(mouse().record.resolution, 32'000);
  choose(bolt);
  EXPECT_EQ(listed()[0], acme + " Acme, 32000");
  choose(acme);
  EXPECT_EQ(mouse().record.resolution, 32'000);
  EXPECT_EQ(setResolution(0), Fault::None);
  EXPECT_EQ(listed()[0], acme + " Acme, in use, able, 1000");
}

TEST_F(MiceTest, ChangesNothingThatTheDiskDoesNotTake) {
  choose(acme);
  parts.disk.failFrom(1, std::errc::no_space_on_device);
  EXPECT_EQ(choose(bolt), Fault::NotSaved);
  EXPECT_EQ(setResolution(800), Fault::NotSaved);
  teach("43");
  mouse().heard(side);
  EXPECT_EQ(all, (All{{"43"}}));
  EXPECT_EQ(mouse().id, acme);
  EXPECT_EQ(mouse().record, MouseRecord());
  EXPECT_EQ(choose(acme), Fault::None);
}

TEST_F(MiceTest, TellsOfMiceThatComeAndGo) {
  const int before = changes;
  real.changed();
  EXPECT_EQ(changes, before + 1);
}

class MiceMovedTest : public MiceTest {
 protected:
  MiceMovedTest() {
    real.found = {placed("usb-1"), foundMouse(bolt, "Bolt")};
    choose(acmeIn("usb-1"));
    teach("20");
    mouse().heard(side);
    settle();
  }
  static std::string acmeIn(const std::string& socket) { return "usb-16c0:27db-pci-0000:00:14.0-" + socket; }
  static FoundMouse placed(const std::string& socket) {
    FoundMouse mouse = foundMouse(acmeIn(socket), "Acme");
    mouse.isMarkedByPlace = true;
    return mouse;
  }
  void settle() { parts.scheduler.advance(0us); }
  void plugIn(const std::vector<FoundMouse>& found) {
    real.found = found;
    real.changed();
    settle();
  }
};

TEST_F(MiceMovedTest, IsUsedInAnotherSocketWithWhatItWasTaught) {
  plugIn({});
  plugIn({placed("usb-2")});
  const Texts moved{acmeIn("usb-2") + " Acme, in use, able, taught 20, 1000", "virtual Virtual mouse, 0"};
  EXPECT_EQ(listed(), moved);
  EXPECT_TRUE(inUse.isUsing(mouse()));
  begin();
  EXPECT_EQ(listed(), moved);
}

TEST_F(MiceMovedTest, IsFoundWhereTheEngineStartsAfterwards) {
  real.found = {placed("usb-2")};
  begin();
  settle();
  EXPECT_EQ(mouse().id, acmeIn("usb-2"));
}

TEST_F(MiceMovedTest, IsNotTheEqualOneThatWasThereBeforeNorOneOfSeveral) {
  plugIn({placed("usb-1"), placed("usb-2")});
  plugIn({placed("usb-2")});
  EXPECT_EQ(mouse().id, acmeIn("usb-1"));
  plugIn({});
  plugIn({placed("usb-3"), placed("usb-4")});
  EXPECT_EQ(mouse().id, acmeIn("usb-1"));
}

TEST_F(MiceMovedTest, IsNotAnotherOrOneWithANumberOrOneThatMayNotBeUsed) {
  plugIn({foundMouse(bolt, "Bolt"), foundMouse("usb-16c0:27db-B2", "Acme")});
  EXPECT_EQ(mouse().id, acmeIn("usb-1"));
  FoundMouse forbidden = placed("usb-2");
  forbidden.isPointerForbidden = true;
  plugIn({forbidden});
  EXPECT_EQ(mouse().id, acmeIn("usb-1"));
}

}  // namespace
}  // namespace vorn::engine::test
