// Property lists as JSON (RFC 8259), for programs that read vornctl's output.
#pragma once

#include <string>

#include "model/PropertyList.h"

namespace vorn::ctl {

// One line. Dictionaries become objects in key order, data lower-case hexadecimal text, dates seconds since 2001, UIDs
// numbers; none, and a real that is no number, become null. Control characters (model/Utf8.h) are escaped, and a byte
// that is no UTF-8 becomes U+FFFD.
std::string jsonOf(const PropertyList& value);

}  // namespace vorn::ctl
