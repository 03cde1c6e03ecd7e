// The engine's settings as the commands need them: fetched, looked up by what people call things, and changed.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "ctl/Context.h"
#include "model/References.h"
#include "protocol/ReturnStatus.h"

namespace vorn::ctl {

// The settings bundle of the engine.
Result<PropertyList> allSettings(EngineClient& engine);

// Why the engine did not do everything, for people; empty for Done and for a number that is no status.
std::string_view reasonOf(ReturnStatus status);
// Nothing for an answer that says that everything was done.
Outcome refusal(const PropertyList& answer);

// The answer to a request about profiles or macros, when it says that everything was done.
Result<PropertyList> change(EngineClient& engine, MessageID messageID, const PropertyList& body);
Outcome outcomeOf(const Result<PropertyList>& answer);
Outcome updateProfile(EngineClient& engine, std::int64_t profileID, const PropertyList& settings);

// Sees to it that a deletion changes what no other control does (model/References.h): sends the profiles once more
// where they are not yet as they must be. before, after: the settings around the deletion.
Outcome keepReferences(EngineClient& engine, const PropertyList& before, const PropertyList& after,
                       const Deletion& deletion);

// Deletes the macro at this place; the bundle: all settings.
Outcome deleteMacroAt(EngineClient& engine, const PropertyList& bundle, std::int64_t position);

std::int64_t activeProfileID(const PropertyList& bundle);

// The position (from 0) of the profile or macro with this number (from 1) or name, in any case where that is one record
// only. A word of digits is a number.
Result<std::int64_t> profileNamed(const PropertyList& bundle, std::string_view word);
Result<std::int64_t> macroNamed(const PropertyList& bundle, std::string_view word);
// That of --profile, else the active one.
Result<std::int64_t> chosenProfile(const PropertyList& bundle, const CommandLine& line);

// `Profile 2 "Games"` for people.
std::string titleOf(std::string_view noun, std::int64_t position, const PropertyList& name);

}  // namespace vorn::ctl
