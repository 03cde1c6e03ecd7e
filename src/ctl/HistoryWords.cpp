#include "ctl/HistoryWords.h"

#include <algorithm>
#include <iterator>
#include <set>
#include <string_view>

#include "ctl/AssignmentWords.h"
#include "ctl/Controls.h"
#include "model/SettingsKeys.h"
#include "protocol/History.h"

namespace vorn::ctl {

namespace {

namespace kinds = history::kinds;
namespace words = history::keys;

std::string quoted(const PropertyList& name) {
  return '"' + name.toString() + '"';
}

// `Profile "Work"`, or `3 profiles`.
std::string recordsOf(const PropertyList& entry, words::Key name, std::string_view one, std::string_view many) {
  if (entry.contains(words::Count)) {
    return std::to_string(entry[words::Count].toInt64()).append(" ").append(many);
  }
  return std::string(one).append(" ").append(quoted(entry[name]));
}

std::string place(const PropertyList& entry) {
  std::string result;
  if (entry.contains(words::Profile)) result += ", profile " + quoted(entry[words::Profile]);
  if (entry.contains(words::Keymap)) result += ", keymap " + std::to_string(entry[words::Keymap].toInt64() + 1);
  return result;
}

// "Controls 4 and 6"; empty where the entry names none.
std::string fewControls(const PropertyList& entry) {
  std::set<int> numbers;
  for (const PropertyList& identifier : entry[words::Controls].arrayOrEmpty().elements()) {
    if (const Control* control = controlOf(identifier.string())) numbers.insert(control->number);
  }
  if (numbers.size() < 2) return {};
  const int last = *numbers.rbegin();
  std::string result;
  for (const int number : numbers) {
    if (!result.empty()) result += number == last ? " and " : ", ";
    result += std::to_string(number);
  }
  return "Controls " + result;
}

std::string assignment(const PropertyList& entry) {
  const auto control = std::find_if(controls.begin(), controls.end(), [&](const Control& each) {
    return each.identifier == entry[words::Control].string();
  });
  const std::string several = fewControls(entry);
  if (!several.empty()) return several + place(entry);
  if (control == controls.end()) return std::to_string(entry[words::Count].toInt64()) + " assignments" + place(entry);
  const PropertyList record = PropertyList::dictionary({{keys::Command, entry[words::Command]},
                                                        {keys::Param1, entry[words::Param1]},
                                                        {keys::Param2, entry[words::Param2]}});
  std::string action;
  if (!entry.contains(words::Target)) {
    action = wordsOf(record, *control, {});
  } else {
    const bool isMacro = commandOf(record) == AssignmentCommand::Macro;
    action = (isMacro ? "macro " : "profile ") + quoted(entry[words::Target]);
  }
  return "Control " + std::to_string(control->number) + " to " + action + place(entry);
}

std::string eventsRemoved(const PropertyList& entry) {
  const std::int64_t count = entry[words::Count].toInt64();
  const std::string which = !entry.contains(words::Count) ? "All events"
                            : count == 1                  ? "1 event"
                                                          : std::to_string(count) + " events";
  return which + " of macro " + quoted(entry[words::Macro]) + " removed";
}

struct ValueWords {
  kinds::Kind kind;
  std::string_view words;
};

constexpr ValueWords valueWords[] = {
    {kinds::KeymapInForce, "Keymap in force"},
    {kinds::ProfileChanged, "Several settings"},
    {kinds::Sensitivity, "Sensitivity"},
    {kinds::Stages, "Sensitivity stages"},
    {kinds::PollingRate, "Polling rate"},
    {kinds::Acceleration, "Acceleration"},
    {kinds::Light, "Light"},
    {kinds::Power, "Power settings"},
    {kinds::Application, "Application"},
    {kinds::Messages, "Messages on the screen"},
};

}  // namespace

std::string wordsOfChange(const PropertyList& entry) {
  const std::string_view kind = entry[words::Kind].string();
  const auto profiles = [&] { return recordsOf(entry, words::Profile, "Profile", "profiles"); };
  const auto macros = [&] { return recordsOf(entry, words::Macro, "Macro", "macros"); };
  if (kind == kinds::Assignment) return assignment(entry);
  if (kind == kinds::ProfileAdded) return profiles() + " added";
  if (kind == kinds::ProfileDeleted) return profiles() + " deleted";
  if (kind == kinds::ProfileRenamed) return profiles() + " renamed to " + quoted(entry[words::NewName]);
  if (kind == kinds::ProfileRestored) return profiles() + " restored to its factory settings";
  if (kind == kinds::ProfileSwitched) return "Switched to profile " + quoted(entry[words::Profile]);
  if (kind == kinds::ProfilesReordered) return "Profiles in another order";
  if (kind == kinds::MacroAdded) return macros() + " added";
  if (kind == kinds::MacroDeleted) return macros() + " deleted";
  if (kind == kinds::MacroRenamed) return macros() + " renamed to " + quoted(entry[words::NewName]);
  if (kind == kinds::BackupRestored) return "Backup of " + entry[words::Date].toString() + " restored";
  if (kind == kinds::MacroEvents) return "Events of macro " + quoted(entry[words::Macro]);
  if (kind == kinds::MacroDelays) return "Delays of macro " + quoted(entry[words::Macro]);
  if (kind == kinds::MacroRecorded) return macros() + " recorded";
  if (kind == kinds::MacroEventsRemoved) return eventsRemoved(entry);
  const auto* const value = std::find_if(std::begin(valueWords), std::end(valueWords),
                                         [&](const ValueWords& each) { return each.kind == kind; });
  return std::string(value == std::end(valueWords) ? "Settings" : value->words) + place(entry);
}

}  // namespace vorn::ctl
