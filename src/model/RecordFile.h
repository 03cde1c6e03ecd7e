// Files that hold one settings record, a profile or a macro, as a property list and nothing else: how they are read,
// checked and written. Pure but for the files themselves; any thread.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

#include "model/PropertyList.h"
#include "model/RecordRules.h"

namespace vorn {

// What is wrong with a file.
struct RecordFileProblem {
  enum class Kind : std::uint8_t {
    File,      // it cannot be read or written
    Empty,     // it holds no bytes
    Encoding,  // it holds no property list; or the record cannot be put into one
    Record,    // it holds something else than a record of its kind
  };
  Kind kind;
  std::string reason;                  // in English, one line, whatever the kind
  std::error_code error{};             // of a File (RegularFile.h)
  std::optional<RecordFault> fault{};  // of a Record
};

struct RecordFileContents {
  PropertyList record;  // as it stands in the file, but a macro comes without "macroID"; none when there is a problem
  std::optional<RecordFileProblem> problem;
};

// "SkarnProfile" or "SkarnMacro".
std::string_view recordFileExtension(RecordKind kind);

// Reads a regular file of either property-list encoding. Nothing here crashes or hangs, whatever lies under the path.
RecordFileContents readRecordFile(const std::string& path, RecordKind kind);

// The bytes of such a file: a binary property list, a macro without its "macroID". Nothing, with the problem, for a
// record that cannot be put into one.
std::optional<Bytes> recordFileBytes(const PropertyList& record, RecordKind kind, RecordFileProblem& problem);

// Writes the record, a macro without its "macroID", as a binary property list: the whole file or, on failure, nothing.
std::optional<RecordFileProblem> writeRecordFile(const std::string& path, const PropertyList& record, RecordKind kind);

}  // namespace vorn
