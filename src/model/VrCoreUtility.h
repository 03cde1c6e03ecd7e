// Conversion of settings dictionaries to bytes and back, and the rule for unique names. Stateless; any thread.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "model/PropertyList.h"
#include "model/SettingsKeys.h"

namespace vorn {

class VrCoreUtility {
 public:
  VrCoreUtility() = delete;

  // Binary property list (version 1.0). Nothing when the argument is missing (none) or cannot be encoded.
  static std::optional<Bytes> convertDictionaryToData(const PropertyList& dictionary);

  // Binary or XML property list. None when there are no bytes or they are no property list.
  static PropertyList convertDataToDictionary(BytesView data);

  // A name for a new, copied, renamed or imported record. records: array of dictionaries that carry their name under
  // nameKey. Without a match the wanted name itself, else the wanted name and "(n)" with n = matches + 1, where the
  // matches of every candidate tried so far add up; it is no search for the lowest free number.
  static std::string generateName(const PropertyList& records, std::string_view usingDefaultName,
                                  std::string_view nameKey = keys::MacroName);
};

}  // namespace vorn
