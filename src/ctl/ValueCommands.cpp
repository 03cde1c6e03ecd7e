#include "ctl/Commands.h"
#include "ctl/Names.h"
#include "ctl/Settings.h"
#include "ctl/Text.h"
#include "ctl/Values.h"
#include "model/ProfileKeys.h"
#include "model/SettingsKeys.h"

namespace vorn::ctl {

namespace {

struct Place {
  std::string path;
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
  const auto resolved = resolvedPath(profile, path);
  if (!resolved) return resolved.failure();
  const PropertyList value = valueAt(profile, *resolved);
  if (!value.isNone()) return Place{*resolved, profile, *position, value};
  const std::vector<std::string_view> keys = profile.keys();
  return Failure{ExitStatus::Refused, "the profile has no value \"" + path + "\"" +
                                          suggestion(Names(keys.begin(), keys.end()), path, "; get --list lists them")};
}

std::string_view typeWord(SettingType type) {
  switch (type) {
    case SettingType::Text:
      return "text";
    case SettingType::Integer:
      return "integer";
    case SettingType::Flag:
      return "flag";
    case SettingType::Dictionary:
      return "dictionary";
    case SettingType::Array:
    case SettingType::Texts:
    case SettingType::Keymaps:
    case SettingType::Stages:
    case SettingType::Colors:
      break;
  }
  return "array";
}

std::string_view scopeWord(SettingScope scope) {
  return scope == SettingScope::Device ? "device" : "profile";
}

PropertyList describedSetting(const ProfileKey& setting) {
  PropertyList result = PropertyList::dictionary({{"key", setting.key},
                                                  {"type", typeWord(setting.type)},
                                                  {"scope", scopeWord(setting.scope)},
                                                  {"takes", choiceExpectation(setting)}});
  if (setting.type == SettingType::Integer || setting.type == SettingType::Flag) {
    result = result.with("minimum", setting.range.minimum).with("maximum", setting.range.maximum);
  }
  if (const auto choices = choicesOf(setting); !choices.empty()) {
    result = result.with("choices", PropertyList::array({choices.begin(), choices.end()}));
  }
  const std::string_view unit = unitWord(setting.unit);
  return unit.empty() ? result : result.with("unit", unit);
}

Outcome listSettings(Context& context) {
  constexpr std::size_t keyWidth = 22;
  constexpr std::size_t scopeWidth = 9;
  std::vector<std::string> lines;
  std::vector<PropertyList> settings;
  for (const ProfileKey& setting : profileKeys) {
    lines.push_back(padded(std::string(setting.key), keyWidth) +
                    padded(std::string(scopeWord(setting.scope)), scopeWidth) + choiceExpectation(setting));
    settings.push_back(describedSetting(setting));
  }
  context.output.either(lines, PropertyList::array(std::move(settings)));
  return std::nullopt;
}

}  // namespace

Outcome getValue(Context& context, const Arguments& arguments) {
  if (context.line.isList != arguments.empty()) return Failure{ExitStatus::Usage, "get takes either KEY or --list"};
  if (context.line.isList) return listSettings(context);
  const auto place = findPlace(context, arguments[0]);
  if (!place) return place.failure();
  context.output.either(textOf(place->value), place->value);
  return std::nullopt;
}

Outcome setValue(Context& context, const Arguments& arguments) {
  const auto place = findPlace(context, arguments[0]);
  if (!place) return place.failure();
  const std::string& path = place->path;
  const auto value = parseValue(arguments[1], place->value);
  if (!value) return value.failure();
  const std::string key = path.substr(0, path.find('/'));
  const PropertyList changed = withValueAt(place->profile, path, *value);
  const ProfileKey* setting = profileKeyOf(key);
  if (setting != nullptr && !isChoice(*setting, changed[key])) {
    return Failure{ExitStatus::Refused, key + " takes " + choiceExpectation(*setting)};
  }
  return updateProfile(context.engine, place->profileID, PropertyList::dictionary({{key, changed[key]}}));
}

}  // namespace vorn::ctl
