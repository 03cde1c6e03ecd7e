// Which values the keys of a profile record take, as pure functions.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "model/PropertyList.h"

namespace vorn::engine {

// What is wrong with a request, in English.
struct Complaint {
  std::string reason;  // one of a fixed set
  std::string detail;  // what came instead; may be empty
  friend bool operator==(const Complaint&, const Complaint&) = default;
};

struct CheckedSettings {
  PropertyList settings;              // without the keys whose values cannot stand under them
  std::vector<Complaint> complaints;  // about these keys and about incomplete assignments, which stay in settings
  bool isWhole = true;                // no key was taken out
};

// The key between quotation marks; and that it takes something else than what came.
std::string quoted(std::string_view key);
std::string takes(std::string_view key, const std::string& expected);

// settings: keys of a profile record, a dictionary. A key that is not known takes any value.
CheckedSettings checkedSettings(const PropertyList& settings);

}  // namespace vorn::engine
