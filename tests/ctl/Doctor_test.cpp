#include "ctl/Doctor.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace vorn::ctl::test {
namespace {

using State = Finding::State;
using Findings = std::vector<Finding>;

const std::string apply = "sudo udevadm control --reload && sudo udevadm trigger";
const std::string install = "sudo install -m 644 '70-skarn.rules' /etc/udev/rules.d/ && " + apply;
const std::string hardware = "the hardware settings of mice that it knows (sensitivity, polling rate, light)";

PropertyList mouse(const std::string& id, bool isInUse) {
  return PropertyList::dictionary(
      {{"id", id}, {"name", "Acme"}, {"isInUse", isInUse}, {"isPresent", true}, {"isAllowed", true}});
}

MouseHardware mouseOfMachine() {
  MouseHardware found;
  found.name = "Acme";
  found.nodes = {{"/dev/input/event4", "00 Acme", {}, false}, {"/dev/input/event5", "01 Acme", {}, false}};
  found.nodes[0].codes.relative.set(REL_X).set(REL_Y);
  return found;
}

// A machine where nothing is missing.
Examination well() {
  Examination found;
  found.engine = ServiceState::Running;
  found.mice = PropertyList::array({mouse("usb-1", true), mouse("virtual", false)});
  found.machineMice = {mouseOfMachine()};
  found.output = FileAccess::Allowed;
  found.rules = "/usr/lib/udev/rules.d/70-skarn.rules";
  found.hasSystemBus = true;
  found.ratbag = ServiceState::Startable;
  found.power = ServiceState::Running;
  return found;
}

// Those that differ from the ones of a machine where nothing is missing.
Findings differences(const Examination& examination) {
  const Findings usual = findingsOf(well());
  Findings result;
  for (const Finding& each : findingsOf(examination)) {
    if (std::find(usual.begin(), usual.end(), each) == usual.end()) result.push_back(each);
  }
  return result;
}

TEST(DoctorTest, FindsNothingMissingWhereAllIsWell) {
  EXPECT_EQ(findingsOf(well()),
            (Findings{{"Engine", State::Fine, "it runs"},
                      {"Mouse \"Acme\"", State::Fine, "you may use it: /dev/input/event4, /dev/input/event5"},
                      {"/dev/uinput", State::Fine, "the engine may type and click"},
                      {"udev rules", State::Fine, "/usr/lib/udev/rules.d/70-skarn.rules"},
                      {"Mouse in use", State::Fine, "\"Acme\", and the engine has it open"},
                      {"ratbagd", State::Fine, "it is there, for " + hardware},
                      {"UPower", State::Fine, "it runs, for the battery of wireless mice"}}));
}

TEST(DoctorTest, SaysWhatGivesAccess) {
  Examination found = well();
  found.machineMice[0].nodes[0].isForbidden = true;
  found.output = FileAccess::Forbidden;
  const std::string noOutput = "no access, so the engine can neither type nor click";
  EXPECT_EQ(differences(found), (Findings{{"Mouse \"Acme\"", State::Missing, "no access to /dev/input/event4", apply},
                                          {"/dev/uinput", State::Missing, noOutput, apply}}));
  found.rules.clear();
  EXPECT_EQ(differences(found), (Findings{{"Mouse \"Acme\"", State::Missing, "no access to /dev/input/event4", install},
                                          {"/dev/uinput", State::Missing, noOutput, install},
                                          {"udev rules", State::Missing, "they are not installed", install}}));
}

TEST(DoctorTest, MissesTheKeysOfAMouse) {
  Examination found = well();
  found.machineMice[0].nodes[1].isForbidden = true;
  found.machineMice[0].otherNodes = {"/dev/input/event6"};
  EXPECT_EQ(differences(found),
            (Findings{{"Mouse \"Acme\"", State::Missing, "no access to /dev/input/event5", apply}}));
  found.rules.clear();
  EXPECT_EQ(differences(found), (Findings{{"Mouse \"Acme\"", State::Missing, "no access to /dev/input/event5", install},
                                          {"udev rules", State::Missing, "they are not installed", install}}));
}

TEST(DoctorTest, LeavesKeysClosedThatMayBeThoseOfAKeyboard) {
  Examination found = well();
  found.machineMice[0].otherNodes = {"/dev/input/event6"};
  EXPECT_EQ(differences(found),
            (Findings{{"Mouse \"Acme\"", State::Optional,
                       "its keys stay closed, since they may be those of a keyboard: /dev/input/event6"}}));
  found.rules.clear();
  EXPECT_EQ(differences(found),
            (Findings{{"Mouse \"Acme\"", State::Optional,
                       "its keys stay closed, since they may be those of a keyboard: /dev/input/event6"},
                      {"udev rules", State::Optional, "they are not installed", install}}));
}

TEST(DoctorTest, NamesWhatMayBeAKeyboardAltogether) {
  Examination found = well();
  found.leftAlone = {mouseOfMachine()};
  found.leftAlone[0].name = "Acme Keyboard";
  found.leftAlone[0].nodes.clear();
  found.leftAlone[0].otherNodes = {"/dev/input/event6"};
  EXPECT_EQ(differences(found), (Findings{{"Mouse \"Acme Keyboard\"", State::Optional,
                                           "it is left alone, since it may be a keyboard: /dev/input/event6"}}));
}

TEST(DoctorTest, MissesNoRulesWhereThereIsAccessWithoutThem) {
  Examination found = well();
  found.rules.clear();
  EXPECT_EQ(differences(found), (Findings{{"udev rules", State::Optional, "they are not installed", install}}));
}

TEST(DoctorTest, MissesTheModuleThatTypes) {
  Examination found = well();
  found.output = FileAccess::Missing;
  EXPECT_EQ(differences(found),
            (Findings{{"/dev/uinput", State::Missing, "it is not there, so the engine can neither type nor click",
                       "sudo modprobe uinput"}}));
}

TEST(DoctorTest, TellsOfTheEngine) {
  Examination found = well();
  found.mice = {};
  EXPECT_EQ(differences(found),
            (Findings{{"Engine", State::Missing, "it runs, but says nothing of mice: it is an older one",
                       "systemctl --user restart vorn-core-engine"}}));
  found.engine = ServiceState::Startable;
  EXPECT_EQ(differences(found),
            (Findings{{"Engine", State::Fine, "it does not run; it is started when it is needed"}}));
  found.engine = ServiceState::Missing;
  EXPECT_EQ(differences(found),
            (Findings{{"Engine", State::Missing, "it does not run, and this session cannot start it",
                       "vorn-core-engine &"}}));
}

TEST(DoctorTest, TellsOfTheMouseInUse) {
  Examination found = well();
  found.mice = PropertyList::array({mouse("usb-1", true).with("isAllowed", false), mouse("virtual", false)});
  EXPECT_EQ(differences(found),
            (Findings{{"Mouse in use", State::Missing, "the engine has no access to all of \"Acme\"", apply}}));
  found.mice = PropertyList::array({mouse("usb-1", true).with("isPresent", false), mouse("virtual", false)});
  EXPECT_EQ(differences(found), (Findings{{"Mouse in use", State::Missing, "\"Acme\" is not plugged in"}}));
  found.mice = PropertyList::array({mouse("usb-1", false), mouse("virtual", true)});
  EXPECT_EQ(differences(found),
            (Findings{{"Mouse in use", State::Fine, "the virtual one; another can be chosen", "vornctl mice list"}}));
  found.mice = PropertyList::array({mouse("virtual", true)});
  found.machineMice.clear();
  EXPECT_EQ(differences(found), (Findings{{"Mice", State::Optional, "none is plugged in; the virtual one can be used"},
                                          {"Mouse in use", State::Fine, "the virtual one"}}));
}

TEST(DoctorTest, TellsWhatOfTheMouseInUseCannotBeUsed) {
  const auto files = [](const char* file) { return PropertyList::array({file}); };
  const Finding held{
      "Mouse in use", State::Missing,
      "\"Acme\" is not used where something is held down (/dev/input/event5): press it and let it go, or "
      "plug the mouse in again"};
  const Finding busy{"Mouse in use", State::Missing, "another program keeps /dev/input/event4 of \"Acme\" for itself"};
  Examination found = well();
  const PropertyList acme = mouse("usb-1", true).with("held", files("/dev/input/event5"));
  found.mice = PropertyList::array({acme, mouse("virtual", false)});
  EXPECT_EQ(differences(found), Findings{held});
  found.mice = PropertyList::array({acme.with("busy", files("/dev/input/event4")), mouse("virtual", false)});
  EXPECT_EQ(differences(found), (Findings{held, busy}));
}

TEST(DoctorTest, NeedsNeitherOfTheOtherServices) {
  Examination found = well();
  found.ratbag = found.power = ServiceState::Missing;
  EXPECT_EQ(differences(found),
            (Findings{{"ratbagd", State::Optional, "not installed; it is for " + hardware, "sudo apt install ratbagd"},
                      {"UPower", State::Optional, "not installed; it is for the battery of wireless mice",
                       "sudo apt install upower"}}));
  found.hasSystemBus = false;
  EXPECT_EQ(
      differences(found),
      (Findings{{"ratbagd", State::Optional, "there is no system bus to ask; it is for " + hardware},
                {"UPower", State::Optional, "there is no system bus to ask; it is for the battery of wireless mice"}}));
}

TEST(DoctorTest, WritesAFindingInLinesAndAsADictionary) {
  const Finding finding{"udev rules", State::Missing, "they are not installed", install};
  EXPECT_EQ(linesOf(finding),
            (std::vector<std::string>{"missing   udev rules: they are not installed", "            " + install}));
  EXPECT_EQ(linesOf({"Engine", State::Fine, "it runs"}), (std::vector<std::string>{"fine      Engine: it runs"}));
  EXPECT_EQ(
      dictionaryOf(finding),
      PropertyList::dictionary(
          {{"what", "udev rules"}, {"state", "missing"}, {"text", "they are not installed"}, {"remedy", install}}));
}

}  // namespace
}  // namespace vorn::ctl::test
