// Requests about the settings as a whole.
#pragma once

#include <string>

#include "core-engine/requests/Request.h"
#include "core-engine/storage/ChangeOrigin.h"

namespace vorn::engine {

// Fills an empty store from the default-settings file, or from the engine's own where the path is empty. False, with
// the reason in the log, when there are no settings afterwards.
bool provideSettings(EngineParts& parts, const Request& request, const std::string& defaultsPath);

// Who makes the change that the request asks for.
ChangeOrigin originOf(const Request& request);

// "AllDevSettings", the bundle in force, and "ReturnStatus" 0; without any settings "ReturnStatus" 1 alone.
Answer getAllSettings(EngineParts& parts, const Request& request);

}  // namespace vorn::engine
