#include "ctl/RecordFile.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string_view>
#include <system_error>
#include <utility>

#include "model/PropertyListCodec.h"
#include "model/SettingsKeys.h"

namespace vorn::ctl {

namespace {

Failure trouble(const std::string& path, const std::string& reason) {
  return {ExitStatus::FileError, path + ": " + reason};
}

// A file of its own for the length of a write, beside the one that it is to replace.
class TemporaryFile {
 public:
  explicit TemporaryFile(const std::string& path) : mPath(path + ".XXXXXX"), mDescriptor(::mkstemp(mPath.data())) {}
  ~TemporaryFile() {
    close();
    if (mIsLeft) ::unlink(mPath.c_str());
  }
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;

  // Each of these leaves the reason in errno when it returns false.
  bool isOpen() {
    mIsLeft = mDescriptor >= 0;
    return mIsLeft;
  }
  bool write(BytesView bytes) {
    while (!bytes.empty()) {
      const ssize_t written = ::write(mDescriptor, bytes.data(), bytes.size());
      if (written < 0 && errno != EINTR) return false;
      if (written > 0) bytes = bytes.subspan(static_cast<std::size_t>(written));
    }
    const mode_t mask = ::umask(0);
    ::umask(mask);
    return ::fchmod(mDescriptor, 0666 & ~mask) == 0 && ::fsync(mDescriptor) == 0 && close();
  }
  bool rename(const std::string& path) {
    mIsLeft = ::rename(mPath.c_str(), path.c_str()) != 0;
    return !mIsLeft;
  }

 private:
  bool close() {
    const int descriptor = std::exchange(mDescriptor, -1);
    return descriptor < 0 || ::close(descriptor) == 0;
  }

  std::string mPath;
  int mDescriptor;
  bool mIsLeft = false;
};

// Why this is no record of the kind; empty when it is one.
std::string faultOf(const PropertyList& record, RecordKind kind) {
  if (!record.isDictionary()) return "holds no dictionary";
  const bool isProfile = kind == RecordKind::Profile;
  const std::string name(isProfile ? keys::ProfileName : keys::MacroName);
  if (record[name].string().empty()) return "holds no \"" + name + "\"";
  if (!isProfile) {
    const bool isUsable = !record.contains(keys::Sequence) || record[keys::Sequence].isDictionary();
    return isUsable ? "" : "its \"sequence\" is no dictionary";
  }
  for (const keys::Key group : {keys::Keys, keys::Buttons}) {
    if (!record[group].isDictionary()) return "holds no dictionary \"" + std::string(group) + "\"";
  }
  return {};
}

}  // namespace

std::string withExtension(std::string path, RecordKind kind) {
  const std::string_view extension = kind == RecordKind::Profile ? ".SkarnProfile" : ".SkarnMacro";
  if (!path.ends_with(extension)) path += extension;
  return path;
}

Outcome writeRecord(const std::string& path, const PropertyList& record) {
  std::string error;
  const auto bytes = encodeBinaryPropertyList(record, &error);
  if (!bytes) return Failure{ExitStatus::Refused, "the record cannot be written: " + error};
  TemporaryFile file(path);
  if (!file.isOpen() || !file.write(*bytes) || !file.rename(path)) return trouble(path, std::strerror(errno));
  return std::nullopt;
}

Result<PropertyList> readRecord(const std::string& path, RecordKind kind) {
  std::error_code code;
  const auto file = std::filesystem::status(path, code);
  if (!std::filesystem::exists(file)) return trouble(path, code ? code.message() : "no such file");
  if (!std::filesystem::is_regular_file(file)) return trouble(path, "not a regular file");
  std::string error;
  const auto record = readPropertyListFile(path, &error);
  if (!record) return trouble(path, error);
  if (const std::string fault = faultOf(*record, kind); !fault.empty()) {
    return trouble(path, (kind == RecordKind::Profile ? "not a profile: " : "not a macro: ") + fault);
  }
  return kind == RecordKind::Macro ? record->without(keys::MacroID) : *record;
}

}  // namespace vorn::ctl
