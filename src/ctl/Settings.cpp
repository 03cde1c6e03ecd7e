#include "ctl/Settings.h"

#include <array>
#include <cstddef>
#include <utility>
#include <vector>

#include "ctl/Names.h"
#include "ctl/Numbers.h"
#include "model/SettingsKeys.h"

namespace vorn::ctl {

namespace {

// By the number of the status.
constexpr std::array<std::string_view, static_cast<std::size_t>(lastReturnStatus) + 1> reasons = {
    "",
    "the engine has no settings",
    "the engine could not use the request",
    "out of range: no such position, no room for one more, or the last one",
    "the engine could not save the change",
    "the record is too large",
    "the engine left out values that it cannot use",
    "nothing is running or recorded",
    "no mouse was connected, and the settings have not been read since",
    "the profiles have changed meanwhile",
};

Result<std::int64_t> positionNamed(const PropertyList& records, std::string_view nameKey, std::string_view noun,
                                   std::string_view word) {
  const std::string none = "there is no " + std::string(noun) + " \"" + std::string(word) + "\"";
  if (const auto number = numberOf(word)) {
    if (*number >= 1 && std::cmp_less_equal(*number, records.size())) return *number - 1;
    return Failure{ExitStatus::Refused, none};
  }
  Names names;
  for (const PropertyList& record : records.elements()) names.emplace_back(record[nameKey].string());
  const std::vector<std::size_t> positions = positionsNamed(names, word);
  if (positions.size() == 1) return static_cast<std::int64_t>(positions.front());
  if (positions.empty()) return Failure{ExitStatus::Refused, none + suggestion(names, word)};
  Names candidates;
  for (const std::size_t position : positions) {
    candidates.push_back(std::to_string(position + 1) + " \"" + names[position] + "\"");
  }
  return Failure{ExitStatus::Refused, "\"" + std::string(word) + "\" may be " + std::string(noun) + " " +
                                          alternatives(candidates) + "; give the number"};
}

}  // namespace

Result<PropertyList> allSettings(EngineClient& engine) {
  auto answer = engine.request(MessageID::GetAllSettings);
  if (!answer) return answer;
  if (auto failure = refusal(*answer)) return *failure;
  const PropertyList& bundle = (*answer)[replyKeys::AllDevSettings];
  if (bundle[keys::Profiles].isEmpty()) {
    return Failure{ExitStatus::Refused, std::string(reasonOf(ReturnStatus::NoSettings))};
  }
  return bundle;
}

std::string_view reasonOf(ReturnStatus status) {
  const auto position = static_cast<std::size_t>(status);
  return position < reasons.size() ? reasons[position] : std::string_view();
}

Outcome refusal(const PropertyList& answer) {
  const std::int64_t status = answer[replyKeys::ReturnStatus].toInt64();
  if (status == 0) return std::nullopt;
  // What is no 32-bit number is no status either.
  const bool isInRange = status > 0 && status <= static_cast<std::int64_t>(lastReturnStatus);
  const std::string_view reason = isInRange ? reasonOf(static_cast<ReturnStatus>(status)) : std::string_view();
  return Failure{ExitStatus::Refused,
                 reason.empty() ? "the engine refused with status " + std::to_string(status) : std::string(reason)};
}

Result<PropertyList> change(EngineClient& engine, MessageID messageID, const PropertyList& body) {
  auto answer = engine.request(messageID, body);
  if (!answer) return answer;
  if (auto failure = refusal(*answer)) return *failure;
  return answer;
}

Outcome outcomeOf(const Result<PropertyList>& answer) {
  return answer ? std::nullopt : Outcome(answer.failure());
}

Outcome updateProfile(EngineClient& engine, std::int64_t profileID, const PropertyList& settings) {
  return outcomeOf(change(engine, MessageID::UpdateProfile,
                          PropertyList::dictionary({{requestKeys::ProfileID, profileID},
                                                    {requestKeys::DeviceSettingsDictionary, settings}})));
}

Outcome keepReferences(EngineClient& engine, const PropertyList& before, const PropertyList& after,
                       const Deletion& deletion) {
  // What the factory gives a control needs no default profile.
  const PropertyList& profiles = after[keys::Profiles];
  const PropertyList kept = withReferencesKept(before[keys::Profiles], profiles, deletion, PropertyList());
  if (kept == profiles) return std::nullopt;
  return outcomeOf(
      change(engine, MessageID::ReplaceAllProfiles, PropertyList::dictionary({{requestKeys::AllProfiles, kept}})));
}

Outcome deleteMacroAt(EngineClient& engine, const PropertyList& bundle, std::int64_t position) {
  const auto answer =
      change(engine, MessageID::DeleteMacro, PropertyList::dictionary({{requestKeys::MacroID, position}}));
  if (!answer) return answer.failure();
  const auto after = allSettings(engine);
  if (!after) return after.failure();
  return keepReferences(engine, bundle, *after, {AssignmentCommand::Macro, position, bundle[keys::Macros].size()});
}

std::int64_t activeProfileID(const PropertyList& bundle) {
  return bundle[keys::DeviceSettings][keys::ActiveProfile].toInt64();
}

Result<std::int64_t> profileNamed(const PropertyList& bundle, std::string_view word) {
  return positionNamed(bundle[keys::Profiles], keys::ProfileName, "profile", word);
}

Result<std::int64_t> macroNamed(const PropertyList& bundle, std::string_view word) {
  return positionNamed(bundle[keys::Macros], keys::MacroName, "macro", word);
}

Result<std::int64_t> chosenProfile(const PropertyList& bundle, const CommandLine& line) {
  if (line.profile) return profileNamed(bundle, *line.profile);
  return activeProfileID(bundle);
}

std::string titleOf(std::string_view noun, std::int64_t position, const PropertyList& name) {
  return std::string(noun) + " " + std::to_string(position + 1) + " \"" + name.toString() + "\"";
}

}  // namespace vorn::ctl
