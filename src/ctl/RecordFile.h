// Files that hold one profile or one macro: its record as a property list, nothing else.
#pragma once

#include <string>

#include "ctl/Failure.h"
#include "model/PropertyList.h"

namespace vorn::ctl {

enum class RecordKind { Profile, Macro };

// The path with the extension of the kind, unless it has it already.
std::string withExtension(std::string path, RecordKind kind);

// Writes a binary property list; a file of that name is replaced only when the new one is whole.
Outcome writeRecord(const std::string& path, const PropertyList& record);

// Reads a binary or XML property list that has what a record of this kind needs; a macro comes without "macroID".
Result<PropertyList> readRecord(const std::string& path, RecordKind kind);

}  // namespace vorn::ctl
