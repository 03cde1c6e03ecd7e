// Requests about macros, their recording, and single keys. Each is answered with "ReturnStatus" (ReturnStatus.h); what
// is refused changes nothing and is told in the log.
#pragma once

#include "core-engine/requests/Request.h"

namespace vorn::engine {

void addMacro(EngineParts& parts, const Request& request, Reply reply);
void renameMacro(EngineParts& parts, const Request& request, Reply reply);
void deleteMacro(EngineParts& parts, const Request& request, Reply reply);

Answer getMacroDetails(EngineParts& parts, const Request& request);  // "MacroSequences": the lines of all events
Answer getMacroEvent(EngineParts& parts, const Request& request);    // "sequenceInMacro": the event of a row
void updateMacroEvent(EngineParts& parts, const Request& request, Reply reply);
void replaceMacroSequence(EngineParts& parts, const Request& request, Reply reply);
void removeMacroEvent(EngineParts& parts, const Request& request, Reply reply);
void removeAllMacroEvents(EngineParts& parts, const Request& request, Reply reply);
void setEventDelay(EngineParts& parts, const Request& request, Reply reply);
void setAllEventsDelay(EngineParts& parts, const Request& request, Reply reply);

Answer startMacroRecording(EngineParts& parts, const Request& request);
Answer stopMacroRecording(EngineParts& parts, const Request& request);
void saveRecordedEvents(EngineParts& parts, const Request& request, Reply reply);

Answer startSingleKeyRecording(EngineParts& parts, const Request& request);  // for an assignment
Answer startEditHID(EngineParts& parts, const Request& request);             // for an event of a macro
Answer stopSingleKeyRecording(EngineParts& parts, const Request& request);   // ends either

}  // namespace vorn::engine
