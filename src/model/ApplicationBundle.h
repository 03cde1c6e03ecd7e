// Applications that are a folder, a bundle named NAME.app. Pure; any thread.
#pragma once

#include <string_view>

namespace vorn {

// Whether the path, with or without slashes at its end, is named like a bundle. Case does not count: "Editor.APP" is
// one too. Whether there is such a folder is another question.
bool hasBundleName(std::string_view path);

}  // namespace vorn
