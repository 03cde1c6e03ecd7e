#include "model/PropertyListCodec.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

#include "model/BinaryPropertyListFormat.h"
#include "model/BinaryPropertyListReader.h"
#include "model/BinaryPropertyListWriter.h"

namespace vorn {

namespace {

class FileDescriptor {
 public:
  explicit FileDescriptor(int descriptor) : mDescriptor(descriptor) {}
  ~FileDescriptor() {
    if (mDescriptor >= 0) ::close(mDescriptor);
  }
  FileDescriptor(const FileDescriptor&) = delete;
  FileDescriptor& operator=(const FileDescriptor&) = delete;
  int get() const { return mDescriptor; }

 private:
  int mDescriptor;
};

void report(std::string* error, const std::string& message) {
  if (error != nullptr) *error = message;
}

bool startsWith(BytesView bytes, std::string_view start) {
  return bytes.size() >= start.size() && std::memcmp(bytes.data(), start.data(), start.size()) == 0;
}

// UTF-8 or UTF-16, with or without a byte-order mark, whose first character that is no blank opens a tag.
bool looksLikeXml(BytesView bytes) {
  const auto meaningless = [](std::uint8_t byte) {
    constexpr std::string_view skipped("\xEF\xBB\xBF\xFE\xFF\0 \t\r\n", 10);
    return skipped.find(static_cast<char>(byte)) != std::string_view::npos;
  };
  const auto first = std::find_if_not(bytes.begin(), bytes.end(), meaningless);
  return first != bytes.end() && *first == '<';
}

std::optional<Bytes> readFile(const std::string& path, std::string* error) {
  // Without blocking, so that a pipe in place of the file is seen instead of waited for.
  const FileDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
  struct stat status {};
  if (file.get() < 0 || ::fstat(file.get(), &status) != 0) {
    report(error, std::strerror(errno));
    return std::nullopt;
  }
  if (!S_ISREG(status.st_mode)) {
    report(error, S_ISDIR(status.st_mode) ? "it is a folder" : "it is no regular file");
    return std::nullopt;
  }
  if (static_cast<std::uint64_t>(status.st_size) > maximumSize) {
    report(error, "the file is too large");
    return std::nullopt;
  }
  Bytes bytes(static_cast<std::size_t>(status.st_size));
  std::size_t filled = 0;
  while (filled < bytes.size()) {
    const ssize_t count = ::read(file.get(), bytes.data() + filled, bytes.size() - filled);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) {
      report(error, std::strerror(errno));
      return std::nullopt;
    }
    if (count == 0) break;
    filled += static_cast<std::size_t>(count);
  }
  bytes.resize(filled);
  return bytes;
}

}  // namespace

std::optional<Bytes> encodeBinaryPropertyList(const PropertyList& value, std::string* error) {
  detail::BinaryPropertyListWriter writer;
  std::optional<Bytes> bytes = writer.write(value);
  if (!bytes) report(error, writer.error());
  return bytes;
}

std::optional<PropertyList> decodeBinaryPropertyList(BytesView bytes, std::string* error) {
  detail::BinaryPropertyListReader reader(bytes);
  std::optional<PropertyList> value = reader.read();
  if (!value) report(error, reader.error());
  return value;
}

std::optional<PropertyList> decodePropertyList(BytesView bytes, std::string* error) {
  if (startsWith(bytes, detail::binaryMagic)) return decodeBinaryPropertyList(bytes, error);
  if (looksLikeXml(bytes)) return decodeXmlPropertyList(bytes, error);
  if (bytes.empty()) {
    report(error, "there are no bytes");
  } else if (startsWith(bytes, "bplist")) {
    report(error, "this version of the binary property-list format is not supported");
  } else {
    report(error, "neither a binary nor an XML property list; the older text format is not supported");
  }
  return std::nullopt;
}

std::optional<PropertyList> readPropertyListFile(const std::string& path, std::string* error) {
  std::string reason;
  const std::optional<Bytes> bytes = readFile(path, &reason);
  std::optional<PropertyList> value;
  if (bytes) value = decodePropertyList(*bytes, &reason);
  if (!value) report(error, path + ": " + reason);
  return value;
}

}  // namespace vorn
