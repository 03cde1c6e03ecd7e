// What differs between two profiles.
#include <optional>
#include <string_view>

#include "ctl/AssignmentWords.h"
#include "ctl/Commands.h"
#include "ctl/Settings.h"
#include "ctl/Values.h"
#include "model/ProfileComparison.h"
#include "model/SettingsKeys.h"

namespace vorn::ctl {

namespace {

std::string_view wordOf(ProfilePart part) {
  switch (part) {
    case ProfilePart::Application:
      return "application";
    case ProfilePart::Controls:
      return "controls";
    case ProfilePart::Sensitivity:
      return "sensitivity";
    case ProfilePart::Light:
      return "light";
    case ProfilePart::Other:
      break;
  }
  return "other";
}

std::string valueWords(const PropertyList& value) {
  return value.isNone() ? "none" : textOf(value);
}

std::string lineOf(const ProfileDifference& difference, const PropertyList& bundle) {
  if (difference.control == nullptr) {
    return difference.key + ": " + valueWords(difference.left) + " | " + valueWords(difference.right);
  }
  const Control& control = *difference.control;
  return "keymap " + std::to_string(difference.keymap + 1) + ", " + std::to_string(control.number) + " " +
         std::string(control.name) + ": " + wordsOf(difference.left, control, bundle) + " | " +
         wordsOf(difference.right, control, bundle);
}

PropertyList objectOf(const ProfileDifference& difference) {
  PropertyList object = PropertyList::dictionary({{"part", wordOf(difference.part)}, {"key", difference.key}});
  if (!difference.left.isNone()) object = object.with("left", difference.left);
  if (!difference.right.isNone()) object = object.with("right", difference.right);
  if (difference.control == nullptr) return object;
  return object.with("keymap", difference.keymap).with("control", difference.control->number);
}

}  // namespace

Outcome compareProfiles(Context& context, const Arguments& arguments) {
  const auto bundle = allSettings(context.engine);
  if (!bundle) return bundle.failure();
  const auto left = profileNamed(*bundle, arguments[0]);
  if (!left) return left.failure();
  const auto right = profileNamed(*bundle, arguments[1]);
  if (!right) return right.failure();
  const PropertyList& profiles = (*bundle)[keys::Profiles];
  const auto differences = profileDifferences(profiles.at(*left), profiles.at(*right));
  std::vector<std::string> lines;
  PropertyList objects = PropertyList::array();
  std::optional<ProfilePart> part;
  for (const ProfileDifference& difference : differences) {
    if (part != difference.part) lines.emplace_back(wordOf(difference.part));
    part = difference.part;
    lines.push_back("  " + lineOf(difference, *bundle));
    objects = objects.appending(objectOf(difference));
  }
  if (lines.empty()) lines.emplace_back("no differences");
  context.output.either(lines, objects);
  return std::nullopt;
}

}  // namespace vorn::ctl
