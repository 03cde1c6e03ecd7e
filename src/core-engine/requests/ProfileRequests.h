// Requests about profiles. Each answers with "ReturnDictionary", the bundle in force when it is served, and
// "ReturnStatus" (ReturnStatus.h); an engine without any settings answers with the status alone. What is refused stays
// as it was, and the log tells why.
#pragma once

#include "core-engine/requests/Request.h"

namespace vorn::engine {

// "DeviceSettingsDictionary": the new profile, which becomes the last of at most five.
void addProfile(EngineParts& parts, const Request& request, Reply reply);
// "ProfileID" and "DeviceSettingsDictionary": the keys to put into that profile.
void updateProfile(EngineParts& parts, const Request& request, Reply reply);
// "AllProfiles": the new profiles.
void replaceAllProfiles(EngineParts& parts, const Request& request, Reply reply);
// "ProfileOrder": the position now of the profile at each place then; "ProfileNames": those that the client saw.
void reorderProfiles(EngineParts& parts, const Request& request, Reply reply);
// "ProfileID". The last profile stays.
void deleteProfile(EngineParts& parts, const Request& request, Reply reply);
// "ProfileID": the profile to put in force.
void switchProfile(EngineParts& parts, const Request& request, Reply reply);

}  // namespace vorn::engine
