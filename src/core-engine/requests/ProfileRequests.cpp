#include "core-engine/requests/ProfileRequests.h"

#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "core-engine/requests/SettingsRequests.h"
#include "core-engine/rules/BundleRules.h"
#include "core-engine/rules/ProfileRules.h"
#include "model/ProfileOrder.h"
#include "model/SettingsKeys.h"
#include "protocol/ReturnStatus.h"

namespace vorn::engine {

namespace {

PropertyList statusValue(ReturnStatus status) {
  return static_cast<std::int32_t>(status);
}

PropertyList statusOnly(ReturnStatus status) {
  return PropertyList::dictionary({{replyKeys::ReturnStatus, statusValue(status)}});
}

void report(Log& log, const std::string& client, std::string_view title, const Complaint& complaint) {
  const std::string kind = std::string(title) + ": " + complaint.reason;
  log.fault(client, kind, complaint.detail.empty() ? kind : kind + " (" + complaint.detail + ")");
}

// What the store made of the change.
ReturnStatus statusOf(EngineParts& parts, const Request& request, std::string_view title, ReturnStatus status,
                      SettingsStore::Outcome outcome) {
  switch (outcome) {
    case SettingsStore::Outcome::NotSaved:
      return ReturnStatus::NotSaved;
    case SettingsStore::Outcome::TooLarge:
      report(parts.log, request.sender, title, {unsendableReason, {}});
      return ReturnStatus::TooLarge;
    case SettingsStore::Outcome::Refused:
      if (status != ReturnStatus::Done) return status;
      report(parts.log, request.sender, title, {"the result is no complete bundle", {}});
      return ReturnStatus::Malformed;
    case SettingsStore::Outcome::Done:
      break;
  }
  return status;
}

void doNothing() {}

ChangeOrigin originOf(const EngineParts& parts, const Request& request) {
  ChangeOrigin origin = originOf(request);
  if (request.messageID != MessageID::UpdateProfile) return origin;
  const PropertyList& settings = request.body[requestKeys::DeviceSettingsDictionary];
  // Whatever else changes all these at once is rare enough to have the factory settings read for it.
  const bool isWhole = settings.contains(keys::Keymap) && settings.contains(keys::Stages);
  // A restored profile keeps its name: a new one that is named is sent whole, too.
  const PropertyList& profile = parts.store.bundle()[keys::Profiles].at(request.body[requestKeys::ProfileID].toInt64());
  const bool mayRestore =
      isWhole && (!settings.contains(keys::ProfileName) || settings[keys::ProfileName] == profile[keys::ProfileName]);
  origin.isRestoring = mayRestore && areFactorySettings(settings, parts.defaults.ownProfile());
  return origin;
}

// title: the request, for the log. change makes a ProfileChange of the bundle; follow is called when it is in force.
template <typename Change, typename Follow = void (*)()>
void changeProfiles(EngineParts& parts, const Request& request, Reply reply, std::string_view title,
                    const Change& change, const Follow& follow = doNothing) {
  if (!provideSettings(parts, request, {})) return reply(statusOnly(ReturnStatus::NoSettings));
  // What such a client sends comes from its own default settings and would overwrite the user's.
  if (parts.clients.showsDefaults(request.replyPort())) return reply(statusOnly(ReturnStatus::NoMouse));
  const ProfileChange result = change(parts.store.bundle());
  for (const Complaint& complaint : result.complaints) report(parts.log, request.sender, title, complaint);
  const auto done = [&parts, &request, reply = std::move(reply), title, status = result.status,
                     follow](SettingsStore::Outcome outcome) {
    if (outcome == SettingsStore::Outcome::Done) follow();
    const ReturnStatus told = statusOf(parts, request, title, status, outcome);
    reply(PropertyList::dictionary(
        {{replyKeys::ReturnDictionary, parts.store.bundle()}, {replyKeys::ReturnStatus, statusValue(told)}}));
  };
  parts.store.put(result.bundle, done, originOf(parts, request));
}

}  // namespace

void addProfile(EngineParts& parts, const Request& request, Reply reply) {
  changeProfiles(parts, request, std::move(reply), "add profile", [&](const PropertyList& bundle) {
    return withAddedProfile(bundle, request.body[requestKeys::DeviceSettingsDictionary], parts.defaults.ownProfile());
  });
}

void updateProfile(EngineParts& parts, const Request& request, Reply reply) {
  changeProfiles(parts, request, std::move(reply), "update profile", [&](const PropertyList& bundle) {
    return withUpdatedProfile(bundle, request.body[requestKeys::ProfileID],
                              request.body[requestKeys::DeviceSettingsDictionary]);
  });
}

void replaceAllProfiles(EngineParts& parts, const Request& request, Reply reply) {
  const auto replace = [&](const PropertyList& bundle) {
    return withReplacedProfiles(bundle, request.body[requestKeys::AllProfiles], parts.defaults.ownProfile());
  };
  changeProfiles(parts, request, std::move(reply), "replace all profiles", replace,
                 [&parts, former = parts.store.bundle()[keys::Profiles]] { parts.profiles.profilesReplaced(former); });
}

void reorderProfiles(EngineParts& parts, const Request& request, Reply reply) {
  const PropertyList& order = request.body[requestKeys::ProfileOrder];
  const auto reorder = [&](const PropertyList& bundle) {
    return withReorderedProfiles(bundle, order, request.body[requestKeys::ProfileNames]);
  };
  const auto follow = [&parts, &order] {
    parts.profiles.profilesReordered(orderOfRecord(order).value_or(ProfileOrder()));
  };
  changeProfiles(parts, request, std::move(reply), "reorder profiles", reorder, follow);
}

void deleteProfile(EngineParts& parts, const Request& request, Reply reply) {
  const PropertyList& profileID = request.body[requestKeys::ProfileID];
  const auto remove = [&](const PropertyList& bundle) { return withoutProfile(bundle, profileID); };
  changeProfiles(parts, request, std::move(reply), "delete profile", remove,
                 [&parts, &profileID] { parts.profiles.profileDeleted(profileID.toInt64()); });
}

void switchProfile(EngineParts& parts, const Request& request, Reply reply) {
  changeProfiles(parts, request, std::move(reply), "switch profile", [&](const PropertyList& bundle) {
    return withActiveProfile(bundle, request.body[requestKeys::ProfileID]);
  });
}

}  // namespace vorn::engine
