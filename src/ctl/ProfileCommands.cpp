#include <cstddef>
#include <utility>
#include <vector>

#include "ctl/Commands.h"
#include "ctl/Numbers.h"
#include "ctl/RecordFile.h"
#include "ctl/Settings.h"
#include "model/ProfileFolder.h"
#include "model/ProfileOrder.h"
#include "model/SettingsKeys.h"
#include "model/VrCoreUtility.h"

namespace vorn::ctl {

namespace {

constexpr std::string_view newProfileName = "Untitled Profile";

std::string lineOf(const PropertyList& bundle, std::int64_t position) {
  const PropertyList& profile = bundle[keys::Profiles].at(position);
  const bool isActive = position == activeProfileID(bundle);
  return (isActive ? "* " : "  ") + std::to_string(position + 1) + "  " + profile[keys::ProfileName].toString();
}

Failure namelessness() {
  return {ExitStatus::Usage, "a profile needs a name"};
}

// The new profile with its name made unique among the others, sent to the engine: its "id" and "name". isContinuation:
// it is one change with the profile that was added before it.
Result<PropertyList> added(Context& context, const PropertyList& profiles, const PropertyList& record,
                           std::string_view wantedName, bool isContinuation = false) {
  if (wantedName.empty()) return namelessness();
  const std::string name = VrCoreUtility::generateName(profiles, wantedName, keys::ProfileName);
  PropertyList request =
      PropertyList::dictionary({{requestKeys::DeviceSettingsDictionary, record.with(keys::ProfileName, name)}});
  if (isContinuation) request = request.with(requestKeys::IsContinuation, true);
  const auto answer = change(context.engine, MessageID::AddProfile, request);
  if (!answer) return answer.failure();
  return PropertyList::dictionary({{"id", profiles.size()}, {"name", name}});
}

std::string titleOfAdded(const PropertyList& profile) {
  return titleOf("Profile", profile["id"].toInt64(), profile["name"]);
}

// The same, told to the user.
Outcome add(Context& context, const PropertyList& bundle, const PropertyList& record, std::string_view wantedName) {
  const auto profile = added(context, bundle[keys::Profiles], record, wantedName);
  if (!profile) return profile.failure();
  context.output.either(titleOfAdded(*profile), *profile);
  return std::nullopt;
}

struct Chosen {
  PropertyList bundle;
  std::int64_t position = 0;
  const PropertyList& profile() const { return bundle[keys::Profiles].at(position); }
};

Result<Chosen> choose(Context& context, const std::string& word) {
  const auto bundle = allSettings(context.engine);
  if (!bundle) return bundle.failure();
  const auto position = profileNamed(*bundle, word);
  if (!position) return position.failure();
  return Chosen{*bundle, *position};
}

PropertyList profileRequest(std::int64_t position) {
  return PropertyList::dictionary({{requestKeys::ProfileID, position}});
}

}  // namespace

Outcome listProfiles(Context& context, const Arguments&) {
  const auto bundle = allSettings(context.engine);
  if (!bundle) return bundle.failure();
  PropertyList list = PropertyList::array();
  for (std::int64_t position = 0; position < static_cast<std::int64_t>((*bundle)[keys::Profiles].size()); ++position) {
    if (!context.output.isJson()) context.output.line(lineOf(*bundle, position));
    list = list.appending(
        PropertyList::dictionary({{"id", position},
                                  {"name", (*bundle)[keys::Profiles].at(position)[keys::ProfileName].toString()},
                                  {"isActive", position == activeProfileID(*bundle)}}));
  }
  if (context.output.isJson()) context.output.json(list);
  return std::nullopt;
}

Outcome switchProfile(Context& context, const Arguments& arguments) {
  const auto chosen = choose(context, arguments[0]);
  if (!chosen) return chosen.failure();
  return outcomeOf(change(context.engine, MessageID::SwitchProfile, profileRequest(chosen->position)));
}

Outcome addProfile(Context& context, const Arguments& arguments) {
  const auto bundle = allSettings(context.engine);
  if (!bundle) return bundle.failure();
  return add(context, *bundle, PropertyList::dictionary(), arguments.empty() ? newProfileName : arguments[0]);
}

Outcome copyProfile(Context& context, const Arguments& arguments) {
  const auto chosen = choose(context, arguments[0]);
  if (!chosen) return chosen.failure();
  const std::string name = arguments.size() > 1 ? arguments[1] : chosen->profile()[keys::ProfileName].toString();
  return add(context, chosen->bundle, chosen->profile(), name);
}

Outcome renameProfile(Context& context, const Arguments& arguments) {
  if (arguments[1].empty()) return namelessness();
  const auto chosen = choose(context, arguments[0]);
  if (!chosen) return chosen.failure();
  // Its own name does not stand in its way.
  const PropertyList others =
      chosen->bundle[keys::Profiles].replacing(chosen->position, chosen->profile().with(keys::ProfileName, ""));
  const std::string name = VrCoreUtility::generateName(others, arguments[1], keys::ProfileName);
  if (auto failure =
          updateProfile(context.engine, chosen->position, PropertyList::dictionary({{keys::ProfileName, name}}))) {
    return failure;
  }
  context.output.either(titleOf("Profile", chosen->position, name),
                        PropertyList::dictionary({{"id", chosen->position}, {"name", name}}));
  return std::nullopt;
}

Outcome deleteProfile(Context& context, const Arguments& arguments) {
  const auto chosen = choose(context, arguments[0]);
  if (!chosen) return chosen.failure();
  const auto answer = change(context.engine, MessageID::DeleteProfile, profileRequest(chosen->position));
  if (!answer) return answer.failure();
  return keepReferences(context.engine, chosen->bundle, (*answer)[replyKeys::ReturnDictionary],
                        {AssignmentCommand::Profile, chosen->position, chosen->bundle[keys::Profiles].size()});
}

Outcome moveProfile(Context& context, const Arguments& arguments) {
  const auto place = numberOf(arguments[1]);
  if (!place) return Failure{ExitStatus::Usage, "\"" + arguments[1] + "\" is no position"};
  const auto chosen = choose(context, arguments[0]);
  if (!chosen) return chosen.failure();
  const PropertyList& profiles = chosen->bundle[keys::Profiles];
  if (*place < 1 || std::cmp_greater(*place, profiles.size())) {
    return Failure{ExitStatus::Refused,
                   "there is no position " + arguments[1] + "; the last is " + std::to_string(profiles.size())};
  }
  const ProfileOrder order =
      orderAfterMove(profiles.size(), static_cast<std::size_t>(chosen->position), static_cast<std::size_t>(*place - 1));
  return outcomeOf(change(context.engine, MessageID::ReorderProfiles,
                          PropertyList::dictionary({{requestKeys::ProfileOrder, orderRecord(order)},
                                                    {requestKeys::ProfileNames, profileNames(profiles)}})));
}

namespace {

Outcome exportAll(Context& context, const std::string& path) {
  if (path == "-") return Failure{ExitStatus::Usage, "all profiles go into a folder, not to standard output"};
  const auto bundle = allSettings(context.engine);
  if (!bundle) return bundle.failure();
  const std::string ending = "." + std::string(profileFolderExtension);
  const std::string folder = path.ends_with(ending) ? path : path + ending;
  const auto problem = writeProfileFolder(folder, (*bundle)[keys::Profiles]);
  return problem ? Outcome(Failure{ExitStatus::FileError, folder + ": " + problem->reason}) : std::nullopt;
}

struct LeftOut {
  std::string path;
  std::string reason;
};

// Takes what does not fit out of the folder: what is no profile, and what finds no room.
std::vector<LeftOut> takeLeftOut(ProfileFolder& folder, std::size_t count) {
  std::vector<LeftOut> leftOut;
  std::vector<ProfileFolderEntry> fitting;
  for (ProfileFolderEntry& entry : folder.entries) {
    if (entry.contents.problem) {
      leftOut.push_back({entry.path, entry.contents.problem->reason});
    } else if (count + fitting.size() >= keys::maximumProfiles) {
      leftOut.push_back({entry.path, "the mouse holds five profiles"});
    } else {
      fitting.push_back(std::move(entry));
    }
  }
  folder.entries = std::move(fitting);
  return leftOut;
}

Outcome importAll(Context& context, const std::string& path) {
  ProfileFolder folder = readProfileFolder(path);
  if (folder.problem) return Failure{ExitStatus::FileError, path + ": " + folder.problem->reason};
  const auto bundle = allSettings(context.engine);
  if (!bundle) return bundle.failure();
  PropertyList profiles = (*bundle)[keys::Profiles];
  const std::vector<LeftOut> leftOut = takeLeftOut(folder, profiles.size());
  PropertyList objects = PropertyList::array();
  for (const LeftOut& each : leftOut) {
    if (!context.output.isJson()) context.output.line("not imported: " + each.path + ": " + each.reason);
    objects = objects.appending(PropertyList::dictionary({{"file", each.path}, {"reason", each.reason}}));
  }
  Outcome failure;
  bool isContinuation = false;
  for (const ProfileFolderEntry& entry : folder.entries) {
    const PropertyList& record = entry.contents.record;
    const auto profile = added(context, profiles, record, record[keys::ProfileName].string(), isContinuation);
    if (!profile) {
      failure = profile.failure();
      break;
    }
    isContinuation = true;
    if (!context.output.isJson()) context.output.line(titleOfAdded(*profile));
    objects = objects.appending(*profile);
    profiles = profiles.appending(record.with(keys::ProfileName, (*profile)["name"]));
  }
  // Also where not all could be added: those that were are there.
  if (context.output.isJson()) context.output.json(objects);
  if (!failure && leftOut.empty()) return std::nullopt;
  // Before what standard error says of it.
  if (auto unwritten = context.output.flush()) return unwritten;
  if (failure) return failure;
  return Failure{ExitStatus::Refused,
                 std::to_string(leftOut.size()) + " of " + std::to_string(leftOut.size() + folder.entries.size()) +
                     (leftOut.size() == 1 ? " files was not imported" : " files were not imported")};
}

}  // namespace

Outcome exportProfile(Context& context, const Arguments& arguments) {
  if (arguments.size() != (context.line.isAll ? 1 : 2)) {
    return Failure{ExitStatus::Usage,
                   "usage: vornctl profiles export PROFILE FILE|-, or vornctl profiles export --all FOLDER"};
  }
  if (context.line.isAll) return exportAll(context, arguments[0]);
  const auto chosen = choose(context, arguments[0]);
  if (!chosen) return chosen.failure();
  return exportRecord(context.output, arguments[1], chosen->profile(), RecordKind::Profile);
}

Outcome importProfile(Context& context, const Arguments& arguments) {
  if (context.line.isAll) return importAll(context, arguments[0]);
  const auto record = readRecord(arguments[0], RecordKind::Profile);
  if (!record) return record.failure();
  const auto bundle = allSettings(context.engine);
  if (!bundle) return bundle.failure();
  return add(context, *bundle, *record, (*record)[keys::ProfileName].string());
}

}  // namespace vorn::ctl
