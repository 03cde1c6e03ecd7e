// Requests about the mouse itself.
#pragma once

#include "core-engine/requests/Request.h"

namespace vorn::engine {

// "ReturnStatus" true: the mouse is here and there are settings for it. An empty store is filled from the
// default-settings file that the request names, or from the engine's own when it names none.
Answer registerDevice(EngineParts& parts, const Request& request);

// Ends the registrations of the connection that asks, and the recording and the key capture that it, or a client that
// it registered, has begun. No answer.
Answer releaseDevice(EngineParts& parts, const Request& request);

}  // namespace vorn::engine
