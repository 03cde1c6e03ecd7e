#include "ctl/RecordFile.h"

#include <utility>

namespace vorn::ctl {

namespace {

Failure failureOf(const std::string& path, const RecordFileProblem& problem) {
  return {ExitStatus::FileError, path + ": " + problem.reason};
}

Failure unencodable(const RecordFileProblem& problem) {
  return {ExitStatus::Refused, "the record cannot be written: " + problem.reason};
}

}  // namespace

std::string withExtension(std::string path, RecordKind kind) {
  const std::string extension = "." + std::string(recordFileExtension(kind));
  if (!path.ends_with(extension)) path += extension;
  return path;
}

Outcome writeRecord(const std::string& path, const PropertyList& record, RecordKind kind) {
  const auto problem = writeRecordFile(path, record, kind);
  if (!problem) return std::nullopt;
  if (problem->kind != RecordFileProblem::Kind::Encoding) return failureOf(path, *problem);
  return unencodable(*problem);
}

Outcome exportRecord(Output& output, const std::string& path, const PropertyList& record, RecordKind kind) {
  if (path != "-") return writeRecord(withExtension(path, kind), record, kind);
  RecordFileProblem problem{};
  const auto bytes = recordFileBytes(record, kind, problem);
  return bytes ? output.file(*bytes) : unencodable(problem);
}

Result<PropertyList> readRecord(const std::string& path, RecordKind kind) {
  RecordFileContents contents = readRecordFile(path, kind);
  if (contents.problem) return failureOf(path, *contents.problem);
  return std::move(contents.record);
}

}  // namespace vorn::ctl
