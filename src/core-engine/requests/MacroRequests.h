// Requests about macros, their recording, and single keys. Each is answered with "ReturnStatus" (ReturnStatus.h); what
// is refused changes nothing and is told in the log.
#pragma once

#include "core-engine/requests/Request.h"

namespace vorn::engine {

Answer addMacro(EngineParts& parts, const Request& request);
Answer renameMacro(EngineParts& parts, const Request& request);
Answer deleteMacro(EngineParts& parts, const Request& request);

Answer getMacroDetails(EngineParts& parts, const Request& request);  // "MacroSequences": the lines of all events
Answer getMacroEvent(EngineParts& parts, const Request& request);    // "sequenceInMacro": the event of a row
Answer updateMacroEvent(EngineParts& parts, const Request& request);
Answer removeMacroEvent(EngineParts& parts, const Request& request);
Answer removeAllMacroEvents(EngineParts& parts, const Request& request);
Answer setEventDelay(EngineParts& parts, const Request& request);
Answer setAllEventsDelay(EngineParts& parts, const Request& request);

Answer startMacroRecording(EngineParts& parts, const Request& request);
Answer stopMacroRecording(EngineParts& parts, const Request& request);
Answer saveRecordedEvents(EngineParts& parts, const Request& request);

Answer startSingleKeyRecording(EngineParts& parts, const Request& request);  // for an assignment
Answer startEditHID(EngineParts& parts, const Request& request);             // for an event of a macro
Answer stopSingleKeyRecording(EngineParts& parts, const Request& request);   // ends either

}  // namespace vorn::engine
