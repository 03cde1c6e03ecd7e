#include "ctl/MiceWords.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "ctl/Controls.h"
#include "ctl/Names.h"
#include "ctl/Text.h"
#include "protocol/Mice.h"

namespace vorn::ctl {

namespace {

namespace words = mice::keys;

bool isVirtual(const PropertyList& mouse) {
  return mouse[words::ID].string() == mice::virtualMouse;
}

std::string connectionOf(const PropertyList& mouse) {
  if (!mouse[words::IsPresent].toBool()) return "not plugged in";
  const std::string_view connection = mouse[words::Connection].string();
  if (connection == mice::connections::Wired) return "on its cable";
  if (connection == mice::connections::Wireless) return "wireless";
  return "";
}

// In the order of their numbers, behind them the fixed keys.
std::string controlsOf(const PropertyList& identifiers) {
  const auto place = [](const PropertyList& identifier) {
    const Control* control = controlOf(identifier.string());
    return control == nullptr ? static_cast<int>(controls.size()) + 1 : control->number;
  };
  std::vector<PropertyList> sorted(identifiers.elements().begin(), identifiers.elements().end());
  std::ranges::stable_sort(sorted, {}, place);
  std::string text;
  for (const PropertyList& each : sorted) text += (text.empty() ? "" : ", ") + nameOfControl(each.toString());
  return text.empty() ? "none" : text;
}

std::string sensitivityOf(const PropertyList& mouse) {
  const std::string_view way = mouse[words::Sensitivity].string();
  if (way == mice::sensitivities::Hardware) return "set in the mouse";
  if (way == mice::sensitivities::Scaled) return "by scaling its motion";
  return "cannot be changed";
}

std::string offersOf(const PropertyList& mouse) {
  std::string text;
  for (const auto& [key, name] :
       {std::pair(words::HasPollingRate, "polling rate"), std::pair(words::HasLight, "light"),
        std::pair(words::HasPower, "power settings"), std::pair(words::HasBattery, "battery")}) {
    if (mouse[key].toBool()) text += (text.empty() ? "" : ", ") + std::string(name);
  }
  return text.empty() ? "nothing further" : text;
}

// The mice that the test takes.
template <typename Test>
std::vector<PropertyList> those(const PropertyList& all, const Test& isMeant) {
  std::vector<PropertyList> result;
  const auto mice = all.elements();
  std::copy_if(mice.begin(), mice.end(), std::back_inserter(result), isMeant);
  return result;
}

Failure ambiguous(const std::vector<PropertyList>& found, const std::string& word) {
  std::string ids;
  for (const PropertyList& each : found) ids += (ids.empty() ? "" : ", ") + each[words::ID].toString();
  return {ExitStatus::Refused, "\"" + word + "\" may be several mice; say which by its ID: " + ids};
}

}  // namespace

std::string withCommas(const PropertyList& texts) {
  std::string text;
  for (const PropertyList& each : texts.elements()) text += (text.empty() ? "" : ", ") + each.toString();
  return text;
}

Result<PropertyList> mouseNamed(const PropertyList& all, const std::string& word) {
  const std::u32string folded = foldedCase(word);
  const auto hasID = [&word](const PropertyList& mouse) { return mouse[words::ID].string() == word; };
  const auto hasName = [&word](const PropertyList& mouse) { return mouse[words::Name].string() == word; };
  const auto hasPart = [&folded](const PropertyList& mouse) {
    return foldedCase(mouse[words::Name].string()).find(folded) != std::u32string::npos;
  };
  std::vector<PropertyList> found = those(all, hasID);
  if (found.empty()) found = those(all, hasName);
  if (found.empty() && !word.empty()) found = those(all, hasPart);
  if (found.size() > 1) return ambiguous(found, word);
  if (found.empty())
    return Failure{ExitStatus::Refused, "there is no mouse \"" + word + "\"; \"vornctl mice list\" lists them"};
  return found.front();
}

std::string lineOfMouse(const PropertyList& mouse) {
  constexpr std::size_t widthOfName = 30;
  constexpr std::size_t widthOfID = 34;
  std::string line = mouse[words::IsInUse].toBool() ? "* " : "  ";
  line += padded(mouse[words::Name].toString(), widthOfName) + padded(mouse[words::ID].toString(), widthOfID);
  line += connectionOf(mouse);
  if (!mouse[words::Forbidden].isEmpty()) line += "; no access to " + withCommas(mouse[words::Forbidden]);
  line.erase(line.find_last_not_of(' ') + 1);
  return line;
}

std::vector<std::string> linesOfMouse(const PropertyList& mouse) {
  const bool isInUse = mouse[words::IsInUse].toBool();
  const std::string connection = connectionOf(mouse);
  std::vector<std::string> lines = {"Name:         " + mouse[words::Name].toString(),
                                    "ID:           " + mouse[words::ID].toString(),
                                    "State:        " + std::string(isInUse ? "in use" : "not in use") +
                                        (connection.empty() ? "" : ", " + connection)};
  if (!isVirtual(mouse)) {
    lines.push_back("Device files: " + withCommas(mouse[words::Nodes]));
    if (!mouse[words::Forbidden].isEmpty()) lines.push_back("No access to: " + withCommas(mouse[words::Forbidden]));
    if (const PropertyList& held = mouse[words::Held]; !held.isEmpty())
      lines.push_back("Not used:     " + withCommas(held) +
                      ", since something on it is held down; press it and let it go");
    if (const PropertyList& busy = mouse[words::Busy]; !busy.isEmpty())
      lines.push_back("Not used:     " + withCommas(busy) + ", since another program keeps it for itself");
    lines.push_back("Controls:     " + controlsOf(mouse[words::Controls]));
    lines.push_back("Taught:       " + controlsOf(mouse[words::Taught]));
    const std::int64_t resolution = mouse[words::Resolution].toInt64();
    lines.push_back("Resolution:   " + (resolution == 0 ? "unknown" : std::to_string(resolution) + " DPI"));
  }
  if (!isInUse) return lines;
  lines.push_back("Sensitivity:  " + sensitivityOf(mouse));
  lines.push_back("Offers:       " + offersOf(mouse));
  return lines;
}

std::string nameOfControl(const std::string& identifier) {
  const Control* control = controlOf(identifier);
  return control == nullptr ? identifier : std::to_string(control->number) + " " + std::string(control->name);
}

std::string lineOfTaught(const PropertyList& taught) {
  const std::string former = taught["former"].toString();
  return "Control " + nameOfControl(taught["control"].toString()) + " is " + taught["source"].toString() + " now" +
         (former.empty() ? "" : ", which control " + nameOfControl(former) + " has lost");
}

Result<std::string> controlArgument(const std::string& word) {
  if (std::ranges::find(fixedKeys, word) != fixedKeys.end()) return word;
  const Control* control = controlNamed(word);
  if (control == nullptr) return Failure{ExitStatus::Usage, "there is no control \"" + word + "\""};
  return std::string(control->identifier);
}

}  // namespace vorn::ctl
