#include "ctl/Commands.h"
#include "ctl/Settings.h"
#include "ctl/Values.h"
#include "model/ProfileKeys.h"
#include "model/SettingsKeys.h"

namespace vorn::ctl {

namespace {

struct Place {
  PropertyList profile;
  std::int64_t profileID = 0;
  PropertyList value;
};

Result<Place> findPlace(Context& context, const std::string& path) {
  const auto bundle = allSettings(context.engine);
  if (!bundle) return bundle.failure();
  const auto position = chosenProfile(*bundle, context.line);
  if (!position) return position.failure();
  const PropertyList& profile = (*bundle)[keys::Profiles].at(*position);
  const PropertyList value = valueAt(profile, path);
  if (value.isNone()) return Failure{ExitStatus::Refused, "the profile has no value \"" + path + "\""};
  return Place{profile, *position, value};
}

}  // namespace

Outcome getValue(Context& context, const Arguments& arguments) {
  const auto place = findPlace(context, arguments[0]);
  if (!place) return place.failure();
  context.output.either(textOf(place->value), place->value);
  return std::nullopt;
}

Outcome setValue(Context& context, const Arguments& arguments) {
  const std::string& path = arguments[0];
  const auto place = findPlace(context, path);
  if (!place) return place.failure();
  const auto value = parseValue(arguments[1], place->value);
  if (!value) return value.failure();
  const std::string key = path.substr(0, path.find('/'));
  const PropertyList changed = withValueAt(place->profile, path, *value);
  const ProfileKey* setting = profileKeyOf(key);
  if (setting != nullptr && !fits(*setting, changed[key])) {
    return Failure{ExitStatus::Refused, key + " takes " + expectation(*setting)};
  }
  return updateProfile(context.engine, place->profileID, PropertyList::dictionary({{key, changed[key]}}));
}

}  // namespace vorn::ctl
