// Mice as the engine lists them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "model/Controls.h"
#include "model/PropertyList.h"
#include "protocol/Mice.h"

namespace skarn::test {

namespace miceKeys = vorn::mice::keys;

inline vorn::PropertyList stringArray(const std::vector<std::string>& strings) {
  std::vector<vorn::PropertyList> values;
  for (const std::string& string : strings) values.emplace_back(string);
  return vorn::PropertyList::array(std::move(values));
}

// A mouse of the machine, plugged in and allowed, that has the wheel and its button.
inline vorn::PropertyList realMouse(std::string_view id, std::string_view name) {
  return vorn::PropertyList::dictionary({{miceKeys::ID, id},
                                         {miceKeys::Name, name},
                                         {miceKeys::IsInUse, false},
                                         {miceKeys::IsPresent, true},
                                         {miceKeys::IsAllowed, true},
                                         {miceKeys::Forbidden, stringArray({})},
                                         {miceKeys::Connection, vorn::mice::connections::Wired},
                                         {miceKeys::Controls, stringArray({"03", "06", "07"})},
                                         {miceKeys::Taught, stringArray({})},
                                         {miceKeys::Resolution, 1600}});
}
inline vorn::PropertyList virtualMouse() {
  std::vector<std::string> all;
  for (const vorn::Control& control : vorn::controls) all.emplace_back(control.identifier);
  return realMouse(vorn::mice::virtualMouse, "Virtual mouse")
      .with(miceKeys::Connection, vorn::mice::connections::Virtual)
      .with(miceKeys::Controls, stringArray(all));
}
// It scales, and offers nothing else.
inline vorn::PropertyList inUse(const vorn::PropertyList& mouse) {
  return mouse.with(miceKeys::IsInUse, true).with(miceKeys::Sensitivity, vorn::mice::sensitivities::Scaled);
}
inline vorn::PropertyList forbidden(const vorn::PropertyList& mouse) {
  return mouse.with(miceKeys::IsAllowed, false).with(miceKeys::Forbidden, stringArray({"/dev/input/event5"}));
}
inline vorn::PropertyList absent(const vorn::PropertyList& mouse) {
  return mouse.with(miceKeys::IsPresent, false).with(miceKeys::Connection, "");
}

}  // namespace skarn::test
