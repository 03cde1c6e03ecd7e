// A Wayland compositor that does byte by byte what a test says: it takes one connection, shows each request as it came
// and sends whatever events it is told to, sound or not. It never waits for its client.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>
#include <vector>

#include "model/FileDescriptor.h"
#include "support/TemporaryFolder.h"

namespace vorn::engine::test {

// The arguments of an event, encoded as the protocol says: words of the machine's order, texts and arrays with their
// length before and padding behind.
class WireArguments {
 public:
  WireArguments& word(std::uint32_t value);
  WireArguments& text(const std::string& value);
  WireArguments& array(std::initializer_list<std::uint32_t> values);
  const std::string& bytes() const { return mBytes; }

 private:
  void pad();
  std::string mBytes;
};

class WireCompositor {
 public:
  // backlog: how many may wait to be taken.
  explicit WireCompositor(int backlog = 8);

  const std::string& path() const { return mPath; }
  bool hasClient();      // takes the next one that has come
  bool hasLostClient();  // the client has ended the connection
  void leaveClient() { mClient.reset(); }

  // The next request, in words: "get_registry ID", "sync ID", "bind NAME INTERFACE VERSION ID" and, of all other
  // objects, "OBJECT.OPCODE" with the words of its arguments. Nothing while there is none.
  std::optional<std::string> request();

  void send(std::uint32_t object, std::uint16_t opcode, const WireArguments& arguments = {});
  // False where the client takes no more.
  bool sendBytes(const std::string& bytes);

 private:
  bool readMore();

  TemporaryFolder mFolder;
  std::string mPath;
  FileDescriptor mListener;
  std::optional<FileDescriptor> mClient;
  std::string mReceived;
};

}  // namespace vorn::engine::test
