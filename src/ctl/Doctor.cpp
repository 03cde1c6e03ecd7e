#include "ctl/Doctor.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "ctl/MiceWords.h"
#include "ctl/Text.h"
#include "protocol/Mice.h"

namespace vorn::ctl {

namespace {

using State = Finding::State;
namespace words = mice::keys;

// Has udev look at what is plugged in once more.
constexpr const char* applyRules = "sudo udevadm control --reload && sudo udevadm trigger";

std::string installRules(const Examination& found) {
  return "sudo install -m 644 '" + found.rulesAtHand + "' /etc/udev/rules.d/ && " + applyRules;
}

std::string joined(const std::vector<std::string>& all) {
  std::string text;
  for (const std::string& each : all) text += (text.empty() ? "" : ", ") + each;
  return text;
}

std::vector<std::string> pathsOf(const std::vector<MouseNode>& nodes) {
  std::vector<std::string> paths;
  paths.reserve(nodes.size());
  for (const MouseNode& node : nodes) paths.push_back(node.path);
  return paths;
}

std::vector<std::string> forbiddenOf(const MouseHardware& mouse) {
  std::vector<MouseNode> nodes = mouse.nodes;
  std::erase_if(nodes, [](const MouseNode& node) { return !node.isForbidden; });
  return pathsOf(nodes);
}

Finding engineFinding(const Examination& found) {
  switch (found.engine) {
    case ServiceState::Running:
      if (found.mice.isNone())
        return {"Engine", State::Missing, "it runs, but says nothing of mice: it is an older one",
                "systemctl --user restart vorn-core-engine"};
      return {"Engine", State::Fine, "it runs"};
    case ServiceState::Startable:
      return {"Engine", State::Fine, "it does not run; it is started when it is needed"};
    case ServiceState::Missing:
      break;
  }
  return {"Engine", State::Missing, "it does not run, and this session cannot start it", "vorn-core-engine &"};
}

std::string remedyOfAccess(const Examination& found) {
  return found.rules.empty() ? installRules(found) : applyRules;
}

Finding mouseFinding(const Examination& found, const MouseHardware& mouse, const std::string& what) {
  const std::vector<std::string> forbidden = forbiddenOf(mouse);
  if (!forbidden.empty()) return {what, State::Missing, "no access to " + joined(forbidden), remedyOfAccess(found)};
  if (mouse.otherNodes.empty()) return {what, State::Fine, "you may use it: " + joined(pathsOf(mouse.nodes))};
  return {what, State::Optional,
          "its keys stay closed, since they may be those of a keyboard: " + joined(mouse.otherNodes)};
}

std::vector<Finding> miceFindings(const Examination& found) {
  std::vector<Finding> findings;
  if (found.machineMice.empty())
    findings.push_back({"Mice", State::Optional, "none is plugged in; the virtual one can be used"});
  const auto whatIs = [](const MouseHardware& mouse) { return "Mouse \"" + mouse.name + "\""; };
  for (const MouseHardware& mouse : found.machineMice) findings.push_back(mouseFinding(found, mouse, whatIs(mouse)));
  for (const MouseHardware& mouse : found.leftAlone) {
    findings.push_back(
        {whatIs(mouse), State::Optional, "it is left alone, since it may be a keyboard: " + joined(mouse.otherNodes)});
  }
  return findings;
}

Finding outputFinding(const Examination& found) {
  const std::string what = mice::outputNode;
  switch (found.output) {
    case FileAccess::Allowed:
      return {what, State::Fine, "the engine may type and click"};
    case FileAccess::Forbidden:
      return {what, State::Missing, "no access, so the engine can neither type nor click", remedyOfAccess(found)};
    case FileAccess::Missing:
      break;
  }
  return {what, State::Missing, "it is not there, so the engine can neither type nor click", "sudo modprobe uinput"};
}

Finding rulesFinding(const Examination& found) {
  if (!found.rules.empty()) return {"udev rules", State::Fine, found.rules};
  // Whoever has access already gets it in another way.
  const bool isNeeded =
      found.output == FileAccess::Forbidden ||
      std::ranges::any_of(found.machineMice, [](const MouseHardware& mouse) { return !forbiddenOf(mouse).empty(); });
  return {"udev rules", isNeeded ? State::Missing : State::Optional, "they are not installed", installRules(found)};
}

std::vector<Finding> useFindings(const Examination& found) {
  const auto mice = found.mice.elements();
  const auto used =
      std::find_if(mice.begin(), mice.end(), [](const PropertyList& mouse) { return mouse[words::IsInUse].toBool(); });
  if (used == mice.end()) return {};
  const std::string what = "Mouse in use";
  const std::string name = (*used)[words::Name].toString();
  if ((*used)[words::ID].string() == mice::virtualMouse) {
    const bool isAnother = mice.size() > 1;
    return {{what, State::Fine, isAnother ? "the virtual one; another can be chosen" : "the virtual one",
             isAnother ? "vornctl mice list" : ""}};
  }
  if (!(*used)[words::IsPresent].toBool()) return {{what, State::Missing, "\"" + name + "\" is not plugged in"}};
  if (!(*used)[words::IsAllowed].toBool())
    return {{what, State::Missing, "the engine has no access to all of \"" + name + "\"", remedyOfAccess(found)}};
  std::vector<Finding> findings;
  if (const std::string held = withCommas((*used)[words::Held]); !held.empty()) {
    findings.push_back({what, State::Missing,
                        "\"" + name + "\" is not used where something is held down (" + held +
                            "): press it and let it go, or plug the mouse in again"});
  }
  if (const std::string busy = withCommas((*used)[words::Busy]); !busy.empty())
    findings.push_back({what, State::Missing, "another program keeps " + busy + " of \"" + name + "\" for itself"});
  if (findings.empty()) findings.push_back({what, State::Fine, "\"" + name + "\", and the engine has it open"});
  return findings;
}

Finding serviceFinding(const Examination& found, const std::string& what, ServiceState state, const std::string& use,
                       const std::string& package) {
  if (!found.hasSystemBus) return {what, State::Optional, "there is no system bus to ask; it is for " + use};
  if (state == ServiceState::Missing)
    return {what, State::Optional, "not installed; it is for " + use, "sudo apt install " + package};
  return {what, State::Fine, std::string(state == ServiceState::Running ? "it runs" : "it is there") + ", for " + use};
}

std::string_view wordOf(State state) {
  switch (state) {
    case State::Fine:
      return "fine";
    case State::Missing:
      return "missing";
    case State::Optional:
      break;
  }
  return "optional";
}

}  // namespace

std::vector<Finding> findingsOf(const Examination& examination) {
  std::vector<Finding> findings = {engineFinding(examination)};
  const auto add = [&findings](std::vector<Finding> further) {
    std::move(further.begin(), further.end(), std::back_inserter(findings));
  };
  add(miceFindings(examination));
  add({outputFinding(examination), rulesFinding(examination)});
  add(useFindings(examination));
  add({serviceFinding(examination, "ratbagd", examination.ratbag,
                      "the hardware settings of mice that it knows (sensitivity, polling rate, light)", "ratbagd"),
       serviceFinding(examination, "UPower", examination.power, "the battery of wireless mice", "upower")});
  return findings;
}

std::vector<std::string> linesOf(const Finding& finding) {
  constexpr std::size_t width = 10;
  std::vector<std::string> lines = {padded(std::string(wordOf(finding.state)), width) + finding.what + ": " +
                                    finding.text};
  if (!finding.remedy.empty()) lines.push_back(padded("", width) + "  " + finding.remedy);
  return lines;
}

PropertyList dictionaryOf(const Finding& finding) {
  return PropertyList::dictionary(
      {{"what", finding.what}, {"state", wordOf(finding.state)}, {"text", finding.text}, {"remedy", finding.remedy}});
}

}  // namespace vorn::ctl
