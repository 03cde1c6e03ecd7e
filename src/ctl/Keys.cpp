#include "ctl/Keys.h"

#include <algorithm>

#include "ctl/Controls.h"
#include "ctl/Numbers.h"

namespace vorn::ctl {

std::optional<hid::Usage> keyUsage(const std::string& name) {
  constexpr std::string_view prefix = "usage:";
  if (name.starts_with(prefix)) {
    const auto number = numberOf(std::string_view(name).substr(prefix.size()), hid::firstKey, hid::lastModifier);
    return number ? std::optional(static_cast<hid::Usage>(*number)) : std::nullopt;
  }
  // "-" is a key itself.
  if (const auto usage = hid::keyNamed(name)) return usage;
  std::string spaced = name;
  std::replace(spaced.begin(), spaced.end(), '-', ' ');
  return hid::keyNamed(spaced);
}

std::optional<hid::Usage> modifierUsage(const std::string& name) {
  for (const char* each : {"Control", "Shift", "Alt", "Command"}) {
    if (isSameWord(name, each)) return hid::keyNamed("Left " + std::string(each));
  }
  const auto usage = keyUsage(name);
  return usage && *usage >= hid::firstModifier ? usage : std::nullopt;
}

}  // namespace vorn::ctl
