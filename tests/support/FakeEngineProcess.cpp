#include "support/FakeEngineProcess.h"

#include <stdlib.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "model/PropertyListCodec.h"

namespace vorn::test {

namespace {

std::vector<std::string> commandLineOf(const std::vector<std::string>& commands, const std::string& portName) {
  std::vector<std::string> line{FAKE_ENGINE_PROGRAM};
  if (!portName.empty()) line.insert(line.end(), {"--port", portName});
  for (const std::string& command : commands) line.insert(line.end(), {"--do", command});
  return line;
}

FakeEngineProcess::Request requestOf(const std::string& line) {
  std::istringstream words(line);
  std::string word;
  std::string hex;
  FakeEngineProcess::Request request;
  words >> word >> request.messageID >> hex;
  Bytes data;
  for (std::size_t i = 0; i + 1 < hex.size(); i += 2)
    data.push_back(static_cast<std::uint8_t>(std::stoul(hex.substr(i, 2), nullptr, 16)));
  request.body = decodePropertyList(data).value_or(PropertyList());
  return request;
}

ChildProcess::Predicate startsWith(const std::string& beginning) {
  return [beginning](const std::string& line) { return line.starts_with(beginning); };
}

}  // namespace

FakeEngineProcess::FakeEngineProcess(const std::vector<std::string>& commands, const std::string& portName)
    : mProcess(commandLineOf(commands, portName)) {
  if (mProcess.waitForLine([](const std::string& line) { return line == "ready"; })) return;
  std::fprintf(stderr, "The fake engine did not start\n");
  std::abort();
}

FakeEngineProcess::~FakeEngineProcess() = default;

bool FakeEngineProcess::obey(const std::string& command) {
  mProcess.writeLine(command);
  const auto answer = mProcess.waitForLine(
      [&](const std::string& line) { return line == "ok " + command || line.starts_with("error "); });
  return answer && answer->starts_with("ok ");
}

std::optional<FakeEngineProcess::Request> FakeEngineProcess::waitForRequest(std::optional<std::int32_t> messageID,
                                                                            std::chrono::milliseconds deadline) {
  const std::string beginning = messageID ? "request " + std::to_string(*messageID) + " " : "request ";
  const auto line = mProcess.waitForLine(startsWith(beginning), deadline);
  if (!line) return std::nullopt;
  return requestOf(*line);
}

std::vector<FakeEngineProcess::Request> FakeEngineProcess::takeRequests() {
  std::vector<Request> requests;
  // Its answer comes behind every request that it has received.
  if (mProcess.isRunning()) obey("silent");
  while (auto request = waitForRequest(std::nullopt, std::chrono::milliseconds(0)))
    requests.push_back(std::move(*request));
  return requests;
}

std::optional<std::string> FakeEngineProcess::waitForSent(std::chrono::milliseconds deadline) {
  const auto line = mProcess.waitForLine(startsWith("sent "), deadline);
  if (!line) return std::nullopt;
  return line->substr(line->rfind(' ') + 1);
}

PropertyListFile::PropertyListFile(const PropertyList& contents) {
  mPath = (std::filesystem::temp_directory_path() / "skarn-test-XXXXXX").string();
  const int descriptor = mkstemp(mPath.data());
  const std::optional<Bytes> bytes = encodeBinaryPropertyList(contents);
  if (descriptor < 0 || !bytes) {
    std::fprintf(stderr, "A property list for a test cannot be written\n");
    std::abort();
  }
  close(descriptor);
  std::ofstream(mPath, std::ios::binary)
      .write(reinterpret_cast<const char*>(bytes->data()), static_cast<std::streamsize>(bytes->size()));
}

PropertyListFile::~PropertyListFile() {
  unlink(mPath.c_str());
}

}  // namespace vorn::test
