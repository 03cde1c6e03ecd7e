#include "model/VrCoreUtility.h"

#include <unordered_map>

#include "model/PropertyListCodec.h"

namespace vorn {

std::optional<Bytes> VrCoreUtility::convertDictionaryToData(const PropertyList& dictionary) {
  return encodeBinaryPropertyList(dictionary);
}

PropertyList VrCoreUtility::convertDataToDictionary(BytesView data) {
  return decodePropertyList(data).value_or(PropertyList());
}

std::string VrCoreUtility::generateName(const PropertyList& records, std::string_view usingDefaultName,
                                        std::string_view nameKey) {
  std::unordered_map<std::string_view, std::size_t> occurrences;
  for (const PropertyList& record : records.elements()) ++occurrences[record[nameKey].string()];

  std::string candidate(usingDefaultName);
  std::size_t matches = 0;
  for (std::size_t pass = 0; pass < records.elements().size(); ++pass) {
    const auto found = occurrences.find(candidate);
    if (found == occurrences.end()) break;  // the candidate stays as it is in every further pass
    matches += found->second;
    candidate = std::string(usingDefaultName) + "(" + std::to_string(matches + 1) + ")";
  }
  return candidate;
}

}  // namespace vorn
