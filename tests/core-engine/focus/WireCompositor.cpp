#include "core-engine/focus/WireCompositor.h"

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>

#include <cstring>

namespace vorn::engine::test {

namespace {

constexpr std::size_t wordSize = sizeof(std::uint32_t);
constexpr std::uint32_t display = 1;
constexpr std::uint32_t registry = 2;  // the first object that a client makes

std::uint32_t wordAt(const std::string& bytes, std::size_t index) {
  std::uint32_t word = 0;
  if ((index + 1) * wordSize <= bytes.size()) std::memcpy(&word, bytes.data() + index * wordSize, wordSize);
  return word;
}

std::string wordsOf(const std::string& bytes) {
  std::string words;
  for (std::size_t index = 0; (index + 1) * wordSize <= bytes.size(); ++index)
    words += " " + std::to_string(wordAt(bytes, index));
  return words;
}

std::string inWords(std::uint32_t object, std::uint32_t opcode, const std::string& arguments) {
  if (object == display && opcode < 2) return (opcode == 0 ? "sync" : "get_registry") + wordsOf(arguments);
  if (object != registry || opcode != 0)
    return std::to_string(object) + "." + std::to_string(opcode) + wordsOf(arguments);
  const std::uint32_t length = wordAt(arguments, 1);
  const std::size_t behind = 2 * wordSize + (length + wordSize - 1) / wordSize * wordSize;
  return "bind " + std::to_string(wordAt(arguments, 0)) + " " + arguments.substr(2 * wordSize, length - 1) +
         wordsOf(arguments.substr(behind));
}

int listenAt(const std::string& path, int backlog) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  path.copy(address.sun_path, sizeof address.sun_path - 1);
  const int descriptor = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
  if (::bind(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 ||
      ::listen(descriptor, backlog) != 0)
    std::abort();
  return descriptor;
}

}  // namespace

WireArguments& WireArguments::word(std::uint32_t value) {
  mBytes.append(reinterpret_cast<const char*>(&value), wordSize);
  return *this;
}

WireArguments& WireArguments::text(const std::string& value) {
  word(static_cast<std::uint32_t>(value.size() + 1));
  mBytes.append(value.c_str(), value.size() + 1);
  pad();
  return *this;
}

WireArguments& WireArguments::array(std::initializer_list<std::uint32_t> values) {
  word(static_cast<std::uint32_t>(values.size() * wordSize));
  for (const std::uint32_t value : values) word(value);
  return *this;
}

void WireArguments::pad() {
  while (mBytes.size() % wordSize != 0) mBytes += '\0';
}

WireCompositor::WireCompositor(int backlog) : mPath(mFolder.path("wayland-0")), mListener(listenAt(mPath, backlog)) {}

bool WireCompositor::hasClient() {
  if (mClient) return true;
  const int descriptor = ::accept4(mListener.get(), nullptr, nullptr, SOCK_NONBLOCK | SOCK_CLOEXEC);
  if (descriptor >= 0) mClient.emplace(descriptor);
  return mClient.has_value();
}

bool WireCompositor::readMore() {
  char buffer[4096];
  const ssize_t size = ::recv(mClient->get(), buffer, sizeof buffer, 0);
  if (size > 0) mReceived.append(buffer, static_cast<std::size_t>(size));
  return size != 0;
}

bool WireCompositor::hasLostClient() {
  return mClient && !readMore();
}

std::optional<std::string> WireCompositor::request() {
  if (!mClient) return std::nullopt;
  constexpr std::size_t headerSize = 2 * wordSize;
  if (mReceived.size() < headerSize) readMore();
  if (mReceived.size() < headerSize) return std::nullopt;
  const std::uint32_t sizeAndOpcode = wordAt(mReceived, 1);
  const std::size_t size = sizeAndOpcode >> 16;
  if (mReceived.size() < size) readMore();
  if (mReceived.size() < size) return std::nullopt;
  std::string words =
      inWords(wordAt(mReceived, 0), sizeAndOpcode & 0xffff, mReceived.substr(headerSize, size - headerSize));
  mReceived.erase(0, size);
  return words;
}

void WireCompositor::send(std::uint32_t object, std::uint16_t opcode, const WireArguments& arguments) {
  const auto size = static_cast<std::uint32_t>(2 * wordSize + arguments.bytes().size());
  EXPECT_TRUE(sendBytes(WireArguments().word(object).word(size << 16 | opcode).bytes() + arguments.bytes()));
}

bool WireCompositor::sendBytes(const std::string& bytes) {
  const ssize_t sent = ::send(mClient->get(), bytes.data(), bytes.size(), MSG_NOSIGNAL);
  return sent == static_cast<ssize_t>(bytes.size());
}

}  // namespace vorn::engine::test
