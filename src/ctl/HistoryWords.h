// A change of the settings in words, made of the entry by which the engine tells of it (protocol/History.h).
#pragma once

#include <string>

#include "model/PropertyList.h"

namespace vorn::ctl {

// `Control 4 to key Control+K, profile "Work", keymap 1`, `Macro "Jump" deleted`.
std::string wordsOfChange(const PropertyList& entry);

}  // namespace vorn::ctl
