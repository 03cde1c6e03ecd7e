// Values of a profile record by their path, for `vornctl get` and `vornctl set`.
#pragma once

#include <string>
#include <string_view>

#include "ctl/Failure.h"
#include "model/PropertyList.h"

namespace vorn::ctl {

// The value under a key, or under a path of keys and positions (from 0) that are joined by "/": "Stages/0/dpix".
// None where there is nothing.
PropertyList valueAt(const PropertyList& container, std::string_view path);

// The path with every key as it is written in the container, where the path names it in another case. What is not there
// stays as it is; a failure for a key that is ambiguous.
Result<std::string> resolvedPath(const PropertyList& container, std::string_view path);

// The container with another value under the path, which exists.
PropertyList withValueAt(const PropertyList& container, std::string_view path, const PropertyList& value);

// The word as a value of the type that is there. On, off, true and false are 1 and 0 for an integer.
Result<PropertyList> parseValue(std::string_view word, const PropertyList& present);

// One line for people; containers as JSON.
std::string textOf(const PropertyList& value);

}  // namespace vorn::ctl
