// Queries about the mouse. They have no answer of their own: the notification "commandReplyNotification%d" answers,
// under the product ID that asked.
#pragma once

#include "core-engine/requests/Request.h"

namespace vorn::engine {

// Followed by the charging status while the mouse is here: a client that asks has just learned of the mouse, and may
// have begun to listen under this product only after the mouse was announced.
Answer queryFirmwareVersion(EngineParts& parts, const Request& request);

Answer queryBatteryLevel(EngineParts& parts, const Request& request);

Answer queryChargingStatus(EngineParts& parts, const Request& request);

}  // namespace vorn::engine
