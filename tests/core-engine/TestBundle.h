// Bundles of settings, for the tests of the engine.
#pragma once

#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

#include "support/SampleSettings.h"

namespace vorn::engine::test {

using namespace vorn::test;

// A profile with its keymaps.
inline PropertyList profile(std::string_view name) {
  return plainProfile(name).with(keys::Keymap,
                                 PropertyList::array(std::vector<PropertyList>(keys::keymapCount, factoryKeymap())));
}

inline PropertyList bundleOf(std::vector<PropertyList> profiles, std::int32_t active = 0) {
  return PropertyList::dictionary({{keys::Profiles, PropertyList::array(std::move(profiles))},
                                   {keys::Macros, PropertyList::array()},
                                   {keys::DeviceSettings, PropertyList::dictionary({{keys::ActiveProfile, active}})}});
}

// A complete bundle with one profile.
inline PropertyList bundle(std::string_view profileName = "Default") {
  return bundleOf({profile(profileName)});
}

inline PropertyList defaultsFile(const PropertyList& settings) {
  return PropertyList::dictionary({{keys::DefaultSettings, settings}});
}

}  // namespace vorn::engine::test
