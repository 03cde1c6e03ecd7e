// The application in front in words, made of what the engine tells of it (protocol/Focus.h). Pure; any thread.
#pragma once

#include <string>
#include <vector>

#include "model/PropertyList.h"

namespace vorn::ctl {

// One fact a line. What is missing is named with what to do about it.
std::vector<std::string> linesOfFocus(const PropertyList& state);

}  // namespace vorn::ctl
