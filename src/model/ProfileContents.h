// What a profile holds that somebody wants to know who does not have it yet. Pure; any thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "model/PropertyList.h"

namespace vorn {

struct ProfileContents {
  std::size_t controls = 0;  // that do not do what they do from the factory, in whatever keymap; each once
  std::size_t keymaps = 0;   // that hold such controls
  // The positions of the macros and profiles that its controls point at, in ascending order: it brings none of them
  // along, and they mean others on another mouse.
  std::vector<std::int64_t> macros;
  std::vector<std::int64_t> profiles;
  std::string application;            // empty for none
  std::vector<std::string> unusable;  // the keys whose values the engine will not take
};

ProfileContents contentsOf(const PropertyList& profile);

}  // namespace vorn
