#include "core-engine/history/DerivedSettings.h"

#include <array>
#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

#include "model/SettingsKeys.h"

namespace vorn::engine {

namespace {

// Stands for it.
constexpr std::string_view derived = "derived from other values";

constexpr std::array groupsInForce = {keys::Keys, keys::Buttons};

const PropertyList& keymapInForce(const PropertyList& profile) {
  return profile[keys::Keymap].at(profile[keys::KeymapID].toInt64());
}

PropertyList withGroupsInForce(PropertyList profile) {
  const PropertyList keymap = keymapInForce(profile);
  for (const keys::Key group : groupsInForce) {
    if (profile[group].string() == derived) profile = profile.with(group, keymap[group]);
  }
  return profile;
}

PropertyList withPosition(const PropertyList& macro, std::size_t position) {
  return macro[keys::MacroID].string() == derived ? macro.with(keys::MacroID, position) : macro;
}

template <typename Function>
PropertyList withEach(const PropertyList& array, const Function& function) {
  std::vector<PropertyList> elements(array.elements().begin(), array.elements().end());
  for (std::size_t position = 0; position < elements.size(); ++position) {
    elements[position] = function(elements[position], position);
  }
  return PropertyList::array(std::move(elements));
}

}  // namespace

PropertyList withoutGroupsInForce(const PropertyList& profile) {
  const PropertyList& keymap = keymapInForce(profile);
  PropertyList result = profile;
  for (const keys::Key group : groupsInForce) {
    if (profile.contains(group) && profile[group] == keymap[group]) result = result.with(group, derived);
  }
  return result;
}

PropertyList withoutPosition(const PropertyList& macro, std::size_t position) {
  return macro[keys::MacroID] == PropertyList(position) ? macro.with(keys::MacroID, derived) : macro;
}

PropertyList withoutDerived(const PropertyList& bundle) {
  const auto forgetGroups = [](const PropertyList& profile, std::size_t) { return withoutGroupsInForce(profile); };
  return bundle.with(keys::Profiles, withEach(bundle[keys::Profiles], forgetGroups))
      .with(keys::Macros, withEach(bundle[keys::Macros], withoutPosition));
}

PropertyList withDerived(const PropertyList& bundle) {
  const auto takeGroups = [](const PropertyList& profile, std::size_t) { return withGroupsInForce(profile); };
  return bundle.with(keys::Profiles, withEach(bundle[keys::Profiles], takeGroups))
      .with(keys::Macros, withEach(bundle[keys::Macros], withPosition));
}

}  // namespace vorn::engine
