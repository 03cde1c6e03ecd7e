// The keys that X servers ask for, as they lie in a file of Xauthority: entries of a family (two bytes), and address,
// display number, name and data, each with its length (two bytes) before it; the most significant byte first
// (Xau(3), "AuGetBestAuthByAddr"). Pure; any thread. Takes hostile bytes.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "model/PropertyList.h"

namespace vorn::engine {

struct X11Key {
  std::string name;  // "MIT-MAGIC-COOKIE-1"
  std::string data;
  friend bool operator==(const X11Key&, const X11Key&) = default;
};

// The key of the display of this machine, the first in the file that can be used. Nothing where it has none.
std::optional<X11Key> x11KeyIn(BytesView file, std::string_view hostName, int display);

}  // namespace vorn::engine
