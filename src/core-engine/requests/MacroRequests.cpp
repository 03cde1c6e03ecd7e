#include "core-engine/requests/MacroRequests.h"

#include <functional>
#include <string>
#include <string_view>

#include "core-engine/requests/SettingsRequests.h"
#include "core-engine/rules/BundleRules.h"
#include "core-engine/rules/MacroRules.h"
#include "model/MacroEvents.h"
#include "model/SettingsKeys.h"
#include "model/eventParser.h"

namespace vorn::engine {

namespace {

Answer answer(ReturnStatus status) {
  return PropertyList::dictionary({{replyKeys::ReturnStatus, static_cast<std::int32_t>(status)}});
}

// aim: what the request wanted, as in "rename a macro".
ReturnStatus refuse(EngineParts& parts, const Request& request, std::string_view aim, const MacroResult& result) {
  const std::string kind = "cannot " + std::string(aim);
  parts.log.fault(request.sender, kind, kind + ": " + result.reason);
  return result.status;
}

// Makes the new bundle of the bundle in force.
using Edit = std::function<MacroResult(const PropertyList& bundle)>;

ReturnStatus change(EngineParts& parts, const Request& request, std::string_view aim, const Edit& edit) {
  if (!provideSettings(parts, request, {})) return ReturnStatus::NoSettings;
  MacroResult result;
  const auto outcome = parts.store.apply([&](const PropertyList& bundle) -> std::optional<PropertyList> {
    result = edit(bundle);
    return result.status == ReturnStatus::Done ? std::optional(result.value) : std::nullopt;
  });
  if (result.status != ReturnStatus::Done) return refuse(parts, request, aim, result);
  if (outcome == SettingsStore::Outcome::TooLarge) {
    return refuse(parts, request, aim, {{}, ReturnStatus::TooLarge, unsendableReason});
  }
  return outcome == SettingsStore::Outcome::Done ? ReturnStatus::Done : ReturnStatus::NotSaved;
}

// Answers with what is read from the bundle in force, made of the result, under the key.
template <typename Look, typename Make>
Answer read(EngineParts& parts, const Request& request, std::string_view key, const Look& look, const Make& make) {
  if (!provideSettings(parts, request, {})) return answer(ReturnStatus::NoSettings);
  const MacroResult result = look(parts.store.bundle());
  if (result.status != ReturnStatus::Done) return answer(refuse(parts, request, "read a macro", result));
  return PropertyList::dictionary({{replyKeys::ReturnStatus, 0}, {key, make(result.value)}});
}

const PropertyList& macroID(const Request& request) {
  return request.body[requestKeys::MacroID];
}

const PropertyList& row(const Request& request) {
  return request.body[requestKeys::SequenceIdx];
}

Answer startCapture(EngineParts& parts, const Request& request, KeyCapture::Purpose purpose) {
  parts.capture.start(purpose, request.replyPort());
  return answer(ReturnStatus::Done);
}

}  // namespace

Answer addMacro(EngineParts& parts, const Request& request) {
  return answer(change(parts, request, "add a macro", [&](const PropertyList& bundle) {
    return withAddedMacro(bundle, request.body[requestKeys::MacroContents]);
  }));
}

Answer renameMacro(EngineParts& parts, const Request& request) {
  const PropertyList& contents = request.body[requestKeys::MacroContents];
  return answer(change(parts, request, "rename a macro", [&](const PropertyList& bundle) {
    return withRenamedMacro(bundle, contents[keys::MacroID], contents[keys::MacroName]);
  }));
}

Answer deleteMacro(EngineParts& parts, const Request& request) {
  const ReturnStatus status = change(parts, request, "delete a macro", [&](const PropertyList& bundle) {
    return withoutMacro(bundle, macroID(request));
  });
  if (status == ReturnStatus::Done) parts.recorder.macroDeleted(macroID(request).toInt64());
  return answer(status);
}

Answer getMacroDetails(EngineParts& parts, const Request& request) {
  return read(
      parts, request, replyKeys::MacroSequences,
      [&](const PropertyList& bundle) { return macroAt(bundle, request.body[requestKeys::IndexOfMacroSequence]); },
      [](const PropertyList& macro) { return eventParser::getMessagesArray(macroEvents(macro)); });
}

Answer getMacroEvent(EngineParts& parts, const Request& request) {
  return read(
      parts, request, replyKeys::SequenceInMacro,
      [&](const PropertyList& bundle) { return eventAt(bundle, macroID(request), row(request)); },
      [](const PropertyList& event) { return event; });
}

Answer updateMacroEvent(EngineParts& parts, const Request& request) {
  return answer(change(parts, request, "replace an event", [&](const PropertyList& bundle) {
    return withReplacedEvent(bundle, macroID(request), row(request), request.body[requestKeys::Sequence]);
  }));
}

Answer removeMacroEvent(EngineParts& parts, const Request& request) {
  return answer(change(parts, request, "remove an event", [&](const PropertyList& bundle) {
    return withoutRow(bundle, macroID(request), request.body[requestKeys::MacroEventTableIndex]);
  }));
}

Answer removeAllMacroEvents(EngineParts& parts, const Request& request) {
  return answer(change(parts, request, "remove all events",
                       [&](const PropertyList& bundle) { return withoutEvents(bundle, macroID(request)); }));
}

Answer setEventDelay(EngineParts& parts, const Request& request) {
  return answer(change(parts, request, "set a delay", [&](const PropertyList& bundle) {
    return withDelay(bundle, macroID(request), row(request), request.body[requestKeys::Delay]);
  }));
}

Answer setAllEventsDelay(EngineParts& parts, const Request& request) {
  return answer(change(parts, request, "set all delays", [&](const PropertyList& bundle) {
    if (request.body[requestKeys::HasNoDelay].toBool()) return withoutDelays(bundle, macroID(request));
    return withDelayOfRow(bundle, macroID(request), request.body[requestKeys::Delay]);
  }));
}

Answer startMacroRecording(EngineParts& parts, const Request& request) {
  if (!provideSettings(parts, request, {})) return answer(ReturnStatus::NoSettings);
  const MacroResult macro = macroAt(parts.store.bundle(), macroID(request));
  if (macro.status != ReturnStatus::Done) return answer(refuse(parts, request, "record a macro", macro));
  const bool isAppending = request.body[requestKeys::IsAppendRecording].toBool();
  const std::size_t present = isAppending ? macroEvents(macro.value).size() : 0;
  if (present >= maximumMacroEvents) {
    return answer(refuse(parts, request, "record a macro", {{}, ReturnStatus::TooLarge, "it is full"}));
  }
  const bool isContinuing = present > 0;
  parts.recorder.start({request.replyPort(), macroID(request).toInt64(), maximumMacroEvents - present, isContinuing,
                        isContinuing ? macro.value[keys::Delay].toInt64() : 0});
  return answer(ReturnStatus::Done);
}

Answer stopMacroRecording(EngineParts& parts, const Request& request) {
  return answer(parts.recorder.stop(request.replyPort()) ? ReturnStatus::Done : ReturnStatus::NotRunning);
}

Answer saveRecordedEvents(EngineParts& parts, const Request& request) {
  constexpr std::string_view aim = "save a recording";
  MacroRecorder& recorder = parts.recorder;
  const std::string client = request.replyPort();
  if (!recorder.belongsTo(client)) return answer(ReturnStatus::NotRunning);
  if (!macroID(request).isInteger()) {
    return answer(refuse(parts, request, aim, {{}, ReturnStatus::Malformed, "it names no macro"}));
  }
  if (macroID(request).toInt64() != recorder.macro()) {
    return answer(refuse(parts, request, aim, {{}, ReturnStatus::OutOfRange, "it was made for another macro"}));
  }
  recorder.stop(client);
  const PropertyList events = recorder.events();
  if (events.isEmpty()) {
    // A macro is not emptied because a person typed nothing.
    recorder.discard();
    return answer(ReturnStatus::NotRunning);
  }
  const bool isAppending = request.body[requestKeys::IsAppendRecording].toBool();
  const ReturnStatus status = change(parts, request, aim, [&](const PropertyList& bundle) {
    return withRecordedEvents(bundle, macroID(request), events, isAppending);
  });
  // What was not saved can be saved again.
  if (status == ReturnStatus::Done) recorder.discard();
  return answer(status);
}

Answer startSingleKeyRecording(EngineParts& parts, const Request& request) {
  return startCapture(parts, request, KeyCapture::Purpose::Assignment);
}

Answer startEditHID(EngineParts& parts, const Request& request) {
  return startCapture(parts, request, KeyCapture::Purpose::MacroEvent);
}

Answer stopSingleKeyRecording(EngineParts& parts, const Request& request) {
  return answer(parts.capture.stop(request.replyPort()) ? ReturnStatus::Done : ReturnStatus::NotRunning);
}

}  // namespace vorn::engine
