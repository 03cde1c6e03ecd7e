#include "core-engine/focus/ProcessProgram.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdint>

#include "core-engine/focus/ApplicationMatch.h"

namespace vorn::engine {

namespace {

constexpr std::size_t longest = 4096;

std::string linkTarget(const std::string& path) {
  constexpr std::string_view goneSuffix = " (deleted)";
  std::array<char, longest> target{};
  const ssize_t length = readlink(path.c_str(), target.data(), target.size());
  if (length <= 0) return {};
  std::string_view found(target.data(), static_cast<std::size_t>(length));
  if (found.ends_with(goneSuffix)) found.remove_suffix(goneSuffix.size());
  return std::string(found);
}

// The first of them, as far as they can be read in one piece.
std::vector<std::string> argumentsIn(const std::string& path) {
  std::array<char, longest> text{};
  const int descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (descriptor < 0) return {};
  const ssize_t length = read(descriptor, text.data(), text.size());
  close(descriptor);
  std::vector<std::string> arguments;
  std::string_view rest(text.data(), static_cast<std::size_t>(std::max<ssize_t>(length, 0)));
  while (!rest.empty()) {
    const std::size_t end = std::min(rest.find('\0'), rest.size());
    arguments.emplace_back(rest.substr(0, end));
    rest.remove_prefix(std::min(end + 1, rest.size()));
  }
  return arguments;
}

}  // namespace

std::string programOf(std::string_view file, const std::vector<std::string>& arguments) {
  std::string called = arguments.empty() ? std::string() : arguments.front();
  // A shell that a person has logged in with.
  if (called.starts_with('-')) called.erase(0, 1);
  if (!programNameOf(file).empty()) return std::string(file);
  if (!programNameOf(called).empty()) return called;
  for (std::size_t index = 1; index < arguments.size(); ++index) {
    const std::string& argument = arguments[index];
    if (argument.starts_with('-')) continue;
    // What is no path may be anything: a module, a word for the launcher.
    const bool isPath = argument.find_first_of("/\\") != std::string::npos;
    if (isPath && !programNameOf(argument).empty()) return argument;
    break;
  }
  return file.empty() ? called : std::string(file);
}

std::string programOfProcess(std::int64_t process) {
  if (process <= 0) return {};
  const std::string folder = "/proc/" + std::to_string(process);
  return programOf(linkTarget(folder + "/exe"), argumentsIn(folder + "/cmdline"));
}

}  // namespace vorn::engine
