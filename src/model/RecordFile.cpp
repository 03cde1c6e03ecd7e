#include "model/RecordFile.h"

#include <utility>

#include "model/PropertyListCodec.h"
#include "model/RegularFile.h"
#include "model/SettingsKeys.h"

namespace vorn {

namespace {

using Kind = RecordFileProblem::Kind;

RecordFileProblem fileProblem(std::error_code error) {
  return {Kind::File, reasonOf(error), error};
}

// A macro's position means nothing outside of the list that it stands in.
PropertyList withoutPosition(const PropertyList& record, RecordKind kind) {
  return kind == RecordKind::Macro ? record.without(keys::MacroID) : record;
}

}  // namespace

std::string_view recordFileExtension(RecordKind kind) {
  return kind == RecordKind::Profile ? "SkarnProfile" : "SkarnMacro";
}

RecordFileContents readRecordFile(const std::string& path, RecordKind kind) {
  Bytes bytes;
  if (const std::error_code error = readRegularFile(path, maximumSize, bytes)) return {{}, fileProblem(error)};
  std::string reason;
  const auto record = decodePropertyList(bytes, &reason);
  if (!record) return {{}, RecordFileProblem{bytes.empty() ? Kind::Empty : Kind::Encoding, reason}};
  if (auto fault = faultOfRecord(*record, kind)) {
    return {{}, RecordFileProblem{Kind::Record, fault->reason, {}, std::move(fault)}};
  }
  return {withoutPosition(*record, kind), std::nullopt};
}

std::optional<Bytes> recordFileBytes(const PropertyList& record, RecordKind kind, RecordFileProblem& problem) {
  problem = {Kind::Encoding, "there is no record"};
  return record.isNone() ? std::nullopt : encodeBinaryPropertyList(withoutPosition(record, kind), &problem.reason);
}

std::optional<RecordFileProblem> writeRecordFile(const std::string& path, const PropertyList& record, RecordKind kind) {
  RecordFileProblem problem{};
  const auto bytes = recordFileBytes(record, kind, problem);
  if (!bytes) return problem;
  if (const std::error_code error = writeRegularFile(path, *bytes)) return fileProblem(error);
  return std::nullopt;
}

}  // namespace vorn
