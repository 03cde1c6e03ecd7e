// Settings built in code, for the tests of the engine.
#pragma once

#include <charconv>
#include <cstdint>
#include <string_view>
#include <vector>

#include "model/Controls.h"
#include "model/PropertyList.h"

namespace vorn::engine::test {

inline PropertyList record(std::int32_t command, std::int32_t param1, std::int32_t param2 = 0) {
  return PropertyList::dictionary({{"command", command}, {"param1", param1}, {"param2", param2}});
}

// The 24 keys, each on command 45 with its own usage.
inline PropertyList keyGroup() {
  PropertyList group = PropertyList::dictionary();
  for (const std::string_view identifier : keys::keyIdentifiers) {
    std::int32_t usage = 0;
    std::from_chars(identifier.data(), identifier.data() + identifier.size(), usage);
    group = group.with(identifier, record(45, usage));
  }
  return group;
}

inline PropertyList buttonGroup() {
  return PropertyList::dictionary({{"03", record(3, 0)}, {"06", record(18, 0)}, {"07", record(19, 0)}});
}

inline PropertyList keymap() {
  return PropertyList::dictionary({{"Keys", keyGroup()}, {"Buttons", buttonGroup()}});
}

inline PropertyList profile(std::string_view name) {
  return PropertyList::dictionary({{"ProfileName", name},
                                   {"KeymapID", 0},
                                   {"Keys", keyGroup()},
                                   {"Buttons", buttonGroup()},
                                   {"Keymap", PropertyList::array(std::vector<PropertyList>(8, keymap()))},
                                   {"DPIX", 800},
                                   {"DPIY", 800}});
}

inline PropertyList bundleOf(std::vector<PropertyList> profiles, std::int32_t active = 0) {
  return PropertyList::dictionary({{"Profiles", PropertyList::array(std::move(profiles))},
                                   {"Macros", PropertyList::array()},
                                   {"DeviceSettings", PropertyList::dictionary({{"ActiveProfile", active}})}});
}

// A complete bundle with one profile.
inline PropertyList bundle(std::string_view profileName = "Default") {
  return bundleOf({profile(profileName)});
}

inline PropertyList defaultsFile(const PropertyList& settings) {
  return PropertyList::dictionary({{"Default Settings", settings}});
}

}  // namespace vorn::engine::test
