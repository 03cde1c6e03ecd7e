#include <cstdio>

#include "ctl/Context.h"
#include "ctl/Json.h"

namespace vorn::ctl {

void Output::line(const std::string& text) {
  std::string printed;
  for (const char character : text) {
    const bool isControl = (character >= 0 && character < ' ' && character != '\n') || character == '\x7f';
    printed += isControl ? '?' : character;
  }
  printed += '\n';
  std::fwrite(printed.data(), 1, printed.size(), stdout);
}

void Output::json(const PropertyList& value) {
  const std::string printed = jsonOf(value) + "\n";
  std::fwrite(printed.data(), 1, printed.size(), stdout);
}

Outcome Output::flush() {
  if (std::fflush(stdout) == 0 && std::ferror(stdout) == 0) return std::nullopt;
  return Failure{ExitStatus::FileError, "cannot write to standard output"};
}

}  // namespace vorn::ctl
