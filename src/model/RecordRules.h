// What a profile record and a macro record must be: the one rule by which the engine takes a record and by which a file
// is imported. Pure; any thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "model/PropertyList.h"

namespace vorn {

enum class RecordKind { Profile, Macro };

struct RecordFault {
  enum class Kind : std::uint8_t {
    NoDictionary,
    TooLarge,  // or nested too deep (RecordLimits.h)
    NoName,    // none, an empty one or no text
    Missing,   // the member
    Unusable,  // the member is of another type, or out of its range
    TooManyEvents,
    NoEvent,  // one of the events cannot be played
  };
  Kind kind;
  std::string reason;         // in English, one line
  std::string_view member{};  // the key, where it is about one
  std::size_t event = 0;      // its number, from 1, where it is about one
};

// The key under which a record of this kind has its name.
std::string_view nameKeyOf(RecordKind kind);

// Nothing for a record that can be a profile or a macro. A profile needs a name and the dictionaries "Keys" and
// "Buttons"; the engine takes less than these two and fills in what is missing. A macro needs a name; its "delay" and
// "sequence" may be missing, and so may the events of the sequence. Values of a profile that are out of range are left
// to the engine, which takes the profile without them. Takes a time bounded by the limits, whatever the record holds.
std::optional<RecordFault> faultOfRecord(const PropertyList& record, RecordKind kind);

}  // namespace vorn
