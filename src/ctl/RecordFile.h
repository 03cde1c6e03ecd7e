// Profile and macro files as the commands see them (model/RecordFile.h).
#pragma once

#include <string>

#include "ctl/Failure.h"
#include "model/RecordFile.h"

namespace vorn::ctl {

// The path with the extension of the kind, unless it has it already.
std::string withExtension(std::string path, RecordKind kind);

Outcome writeRecord(const std::string& path, const PropertyList& record, RecordKind kind);
Result<PropertyList> readRecord(const std::string& path, RecordKind kind);

}  // namespace vorn::ctl
