#include "core-engine/requests/MacroRequests.h"

#include <optional>
#include <string>
#include <string_view>
#include <utility>

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

void doNothing() {}

// edit makes the new bundle of the bundle in force; follow is called when that is in force.
template <typename Edit, typename Follow = void (*)()>
void change(EngineParts& parts, const Request& request, Reply reply, std::string_view aim, const Edit& edit,
            const Follow& follow = doNothing) {
  if (!provideSettings(parts, request, {})) return reply(answer(ReturnStatus::NoSettings));
  const MacroResult result = edit(parts.store.bundle());
  if (result.status != ReturnStatus::Done) return reply(answer(refuse(parts, request, aim, result)));
  const auto done = [&parts, &request, reply = std::move(reply), aim, follow](SettingsStore::Outcome outcome) {
    if (outcome == SettingsStore::Outcome::TooLarge) {
      return reply(answer(refuse(parts, request, aim, {{}, ReturnStatus::TooLarge, unsendableReason})));
    }
    if (outcome != SettingsStore::Outcome::Done) return reply(answer(ReturnStatus::NotSaved));
    follow();
    reply(answer(ReturnStatus::Done));
  };
  parts.store.put(result.value, done, originOf(request));
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

// Without a port of its own nobody would ever stop what the request begins.
std::optional<Answer> refusalWithoutPort(EngineParts& parts, const Request& request, std::string_view aim) {
  if (request.namesPort()) return std::nullopt;
  return answer(refuse(parts, request, aim, {{}, ReturnStatus::Malformed, "it names no port of a client"}));
}

Answer startCapture(EngineParts& parts, const Request& request, KeyCapture::Purpose purpose) {
  if (const auto refusal = refusalWithoutPort(parts, request, "capture keys")) return *refusal;
  parts.capture.start(purpose, request.replyPort(), request.sender);
  return answer(ReturnStatus::Done);
}

}  // namespace

void addMacro(EngineParts& parts, const Request& request, Reply reply) {
  change(parts, request, std::move(reply), "add a macro",
         [&](const PropertyList& bundle) { return withAddedMacro(bundle, request.body[requestKeys::MacroContents]); });
}

void renameMacro(EngineParts& parts, const Request& request, Reply reply) {
  const PropertyList& contents = request.body[requestKeys::MacroContents];
  change(parts, request, std::move(reply), "rename a macro", [&](const PropertyList& bundle) {
    return withRenamedMacro(bundle, contents[keys::MacroID], contents[keys::MacroName]);
  });
}

void deleteMacro(EngineParts& parts, const Request& request, Reply reply) {
  const auto remove = [&](const PropertyList& bundle) { return withoutMacro(bundle, macroID(request)); };
  change(parts, request, std::move(reply), "delete a macro", remove,
         [&parts, &request] { parts.recorder.macrosMoved(macroID(request).toInt64(), 1, 0); });
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

void updateMacroEvent(EngineParts& parts, const Request& request, Reply reply) {
  change(parts, request, std::move(reply), "replace an event", [&](const PropertyList& bundle) {
    return withReplacedEvent(bundle, macroID(request), row(request), request.body[requestKeys::Sequence]);
  });
}

void replaceMacroSequence(EngineParts& parts, const Request& request, Reply reply) {
  change(parts, request, std::move(reply), "replace a sequence", [&](const PropertyList& bundle) {
    return withReplacedSequence(bundle, request.body[requestKeys::MacroContents],
                                request.body[requestKeys::ExpectedSequence]);
  });
}

void removeMacroEvent(EngineParts& parts, const Request& request, Reply reply) {
  change(parts, request, std::move(reply), "remove an event", [&](const PropertyList& bundle) {
    return withoutRow(bundle, macroID(request), request.body[requestKeys::MacroEventTableIndex]);
  });
}

void removeAllMacroEvents(EngineParts& parts, const Request& request, Reply reply) {
  change(parts, request, std::move(reply), "remove all events",
         [&](const PropertyList& bundle) { return withoutEvents(bundle, macroID(request)); });
}

void setEventDelay(EngineParts& parts, const Request& request, Reply reply) {
  change(parts, request, std::move(reply), "set a delay", [&](const PropertyList& bundle) {
    return withDelay(bundle, macroID(request), row(request), request.body[requestKeys::Delay]);
  });
}

void setAllEventsDelay(EngineParts& parts, const Request& request, Reply reply) {
  change(parts, request, std::move(reply), "set all delays", [&](const PropertyList& bundle) {
    if (request.body[requestKeys::HasNoDelay].toBool()) return withoutDelays(bundle, macroID(request));
    return withDelayOfRow(bundle, macroID(request), request.body[requestKeys::Delay]);
  });
}

Answer startMacroRecording(EngineParts& parts, const Request& request) {
  if (const auto refusal = refusalWithoutPort(parts, request, "record a macro")) return *refusal;
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
                        isContinuing ? macro.value[keys::Delay].toInt64() : 0, request.sender});
  return answer(ReturnStatus::Done);
}

Answer stopMacroRecording(EngineParts& parts, const Request& request) {
  return answer(parts.recorder.stop(request.replyPort()) ? ReturnStatus::Done : ReturnStatus::NotRunning);
}

void saveRecordedEvents(EngineParts& parts, const Request& request, Reply reply) {
  constexpr std::string_view aim = "save a recording";
  MacroRecorder& recorder = parts.recorder;
  const std::string client = request.replyPort();
  if (!recorder.belongsTo(client)) return reply(answer(ReturnStatus::NotRunning));
  if (!macroID(request).isInteger()) {
    return reply(answer(refuse(parts, request, aim, {{}, ReturnStatus::Malformed, "it names no macro"})));
  }
  if (macroID(request).toInt64() != recorder.macro()) {
    return reply(answer(refuse(parts, request, aim, {{}, ReturnStatus::OutOfRange, "it was made for another macro"})));
  }
  recorder.stop(client);
  const PropertyList events = recorder.events();
  if (events.isEmpty()) {
    // A macro is not emptied because a person typed nothing.
    recorder.discard();
    return reply(answer(ReturnStatus::NotRunning));
  }
  const bool isAppending = request.body[requestKeys::IsAppendRecording].toBool();
  const auto save = [&](const PropertyList& bundle) {
    return withRecordedEvents(bundle, macroID(request), events, isAppending);
  };
  // What was not saved can be saved again.
  change(parts, request, std::move(reply), aim, save, [&recorder] { recorder.discard(); });
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
