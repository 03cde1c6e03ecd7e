// Profiles that are tied to applications, and what is in front.
#pragma once

#include <string>
#include <string_view>

#include "core-engine/TestBundle.h"
#include "core-engine/focus/Application.h"

namespace vorn::engine::test {

// An application that is known by its identifier alone.
inline Application applicationNamed(const std::string& identifier) {
  return identifier.empty() ? Application() : Application{identifier, "/usr/games/" + identifier, identifier};
}

inline PropertyList appInfoOf(std::string_view application) {
  return PropertyList::dictionary({{keys::Application, application},
                                   {keys::Identifier, std::string(application) + ".desktop"},
                                   {keys::Executable, ""},
                                   {keys::Signature, "????"}});
}

// A profile that is tied to the application, or to none where that is empty.
inline PropertyList tiedProfile(std::string_view name, std::string_view application, bool isOn = true) {
  return profile(name).with(keys::AppInfo, appInfoOf(application)).with(keys::AutoSwitchOn, isOn ? 1 : 0);
}

}  // namespace vorn::engine::test
