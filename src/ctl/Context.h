// What a command works with.
#pragma once

#include <string>
#include <vector>

#include "ctl/CommandLine.h"
#include "ctl/EngineClient.h"
#include "ctl/Failure.h"
#include "model/PropertyList.h"

namespace vorn::ctl {

// Standard output. What was printed is checked once, at the end.
class Output {
 public:
  explicit Output(bool isJson) : mIsJson(isJson) {}

  bool isJson() const { return mIsJson; }
  // For people: one line, or several. Control characters from elsewhere are made harmless.
  void line(const std::string& text);
  void json(const PropertyList& value);
  // One or the other, as --json says.
  void either(const std::string& text, const PropertyList& value) { mIsJson ? json(value) : line(text); }
  Outcome flush();

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
