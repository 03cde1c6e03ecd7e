// Mice in words, and by the words that a person has for them. Pure.
#pragma once

#include <string>
#include <vector>

#include "ctl/Failure.h"
#include "model/PropertyList.h"

namespace vorn::ctl {

// Of the mice, dictionaries as org.vorn.Mice1 lists them, the one with this ID, this name, or this part of a name, in
// upper or lower case. A failure where it is none or several.
Result<PropertyList> mouseNamed(const PropertyList& all, const std::string& word);

// A line of the list; a star marks the one in use.
std::string lineOfMouse(const PropertyList& mouse);
// All that is known of it.
std::vector<std::string> linesOfMouse(const PropertyList& mouse);

// The texts of an array, "/dev/input/event4, /dev/input/event5".
std::string withCommas(const PropertyList& texts);

// "12 Z"; a fixed key as it is.
std::string nameOfControl(const std::string& identifier);
// What became of a teaching: a dictionary with "control", "source" and "former".
std::string lineOfTaught(const PropertyList& taught);

// The identifier of the control, or one of the mouse's keys that nothing can be assigned to.
Result<std::string> controlArgument(const std::string& word);

}  // namespace vorn::ctl
