// Profile and macro files as the commands see them (model/RecordFile.h).
#pragma once

#include <string>

#include "ctl/Context.h"
#include "model/RecordFile.h"

namespace vorn::ctl {

// The path with the extension of the kind, unless it has it already.
std::string withExtension(std::string path, RecordKind kind);

// Writes the file, to standard output for the path "-".
Outcome exportRecord(Output& output, const std::string& path, const PropertyList& record, RecordKind kind);
Outcome writeRecord(const std::string& path, const PropertyList& record, RecordKind kind);
Result<PropertyList> readRecord(const std::string& path, RecordKind kind);

}  // namespace vorn::ctl
