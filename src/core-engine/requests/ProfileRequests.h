// Requests about profiles. Each answers with "ReturnDictionary", the bundle in force when it is served, and
// "ReturnStatus" (ReturnStatus.h); an engine without any settings answers with the status alone. What is refused stays
// as it was, and the log tells why.
#pragma once

#include "core-engine/requests/Request.h"

namespace vorn::engine {

// "DeviceSettingsDictionary": the new profile, which becomes the last of at most five.
Answer addProfile(EngineParts& parts, const Request& request);
// "ProfileID" and "DeviceSettingsDictionary": the keys to put into that profile.
Answer updateProfile(EngineParts& parts, const Request& request);
// "AllProfiles": the new profiles.
Answer replaceAllProfiles(EngineParts& parts, const Request& request);
// "ProfileID". The last profile stays.
Answer deleteProfile(EngineParts& parts, const Request& request);
// "ProfileID": the profile to put in force.
Answer switchProfile(EngineParts& parts, const Request& request);

}  // namespace vorn::engine
