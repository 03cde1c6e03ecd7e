// The commands that tell the fake engine what to do; FakeEngine.h has the grammar.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "model/PropertyList.h"

namespace vorn::test {

// One thing that the engine does, after a delay from the receipt of the request.
struct Action {
  enum class Kind { Silent, Data, Post, Exit, Freeze };
  Kind kind = Kind::Silent;
  std::chrono::milliseconds delay{0};
  Bytes data;        // Data: the body of the answer
  std::string name;  // Post: the notification
  std::string object;
  PropertyList userInfo;
  int status = 0;  // Exit
};

struct Command {
  enum class Kind { OnRequest, Do, Quit };
  Kind kind = Kind::Do;
  std::optional<std::int32_t> messageID;  // OnRequest: nothing for every request without a command of its own
  std::vector<Action> actions;
};

// Nothing when the line is no command; error then says why. Reads the files that the line names.
std::optional<Command> parseCommand(std::string_view line, std::string* error);

// Lower-case hexadecimal text; "-" for no bytes.
std::string hexOf(BytesView bytes);

}  // namespace vorn::test
