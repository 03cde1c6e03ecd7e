// What a command works with.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "ctl/CommandLine.h"
#include "ctl/EngineClient.h"
#include "ctl/Failure.h"
#include "model/PropertyList.h"

namespace vorn::ctl {

// Where everything that vornctl writes leaves it, but for what is fixed (--help, --version). What was printed is
// checked once, at the end.
class Output {
 public:
  explicit Output(bool isJson) : mIsJson(isJson) {}

  bool isJson() const { return mIsJson; }
  // For people: one line, made printable (Text.h).
  void line(std::string_view text);
  void json(const PropertyList& value);
  // One or the other, as --json says.
  void either(const std::string& text, const PropertyList& value) { mIsJson ? json(value) : line(text); }
  // The lines, or the one value.
  void either(const std::vector<std::string>& lines, const PropertyList& value);
  // For programs: the texts with tabs between; nothing where one of them is not printable as it is.
  void columns(const std::vector<std::string>& texts);
  // A file that goes to standard output; never to a terminal.
  Outcome file(BytesView bytes);
  Outcome flush();

  // To standard error: a line, or an object of JSON. Returns the exit status.
  int failure(const Failure& failure);

 private:
  bool mIsJson;
};

struct Context {
  const CommandLine& line;
  EngineClient& engine;
  Output& output;
};

// The arguments of a command: the words after its name.
using Arguments = std::vector<std::string>;

}  // namespace vorn::ctl
