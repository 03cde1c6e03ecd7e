#include <unistd.h>

#include <cstdio>

#include "ctl/Context.h"
#include "ctl/Json.h"
#include "ctl/Text.h"

namespace vorn::ctl {

namespace {

void write(std::FILE* stream, const std::string& line) {
  const std::string printed = line + "\n";
  std::fwrite(printed.data(), 1, printed.size(), stream);
}

}  // namespace

void Output::line(std::string_view text) {
  write(stdout, printable(text));
}

void Output::json(const PropertyList& value) {
  write(stdout, jsonOf(value));
}

void Output::either(const std::vector<std::string>& lines, const PropertyList& value) {
  if (mIsJson) return json(value);
  for (const std::string& each : lines) line(each);
}

void Output::columns(const std::vector<std::string>& texts) {
  std::string joined;
  for (const std::string& text : texts) {
    if (printable(text) != text) return;
    joined += (&text == &texts.front() ? "" : "\t") + text;
  }
  write(stdout, joined);
}

Outcome Output::file(BytesView bytes) {
  if (::isatty(STDOUT_FILENO) != 0) {
    return Failure{ExitStatus::FileError, "standard output is a terminal; send it to a file or a program"};
  }
  std::fwrite(bytes.data(), 1, bytes.size(), stdout);
  return std::nullopt;
}

Outcome Output::flush() {
  if (std::fflush(stdout) == 0 && std::ferror(stdout) == 0) return std::nullopt;
  return Failure{ExitStatus::FileError, "cannot write to standard output"};
}

int Output::failure(const Failure& failure) {
  const auto status = static_cast<int>(failure.status);
  write(stderr, mIsJson ? jsonOf(PropertyList::dictionary(
                              {{"error", wordOf(failure.status)}, {"message", failure.text}, {"status", status}}))
                        : printable("vornctl: " + failure.text));
  return status;
}

}  // namespace vorn::ctl
