#include <csignal>
#include <cstddef>
#include <cstdio>
#include <span>
#include <string>

#include "ctl/CommandTable.h"

namespace {

using namespace vorn::ctl;

int ended(const Failure& failure) {
  std::string text = failure.text;
  for (char& character : text) {
    if ((character >= 0 && character < ' ') || character == '\x7f') character = '?';
  }
  std::fprintf(stderr, "vornctl: %s\n", text.c_str());
  return static_cast<int>(failure.status);
}

int run(const CommandLine& line) {
  Output output(line.isJson);
  Outcome failure;
  if (line.isHelpWanted) {
    std::fputs(helpText().c_str(), stdout);
  } else if (line.isVersionWanted) {
    std::puts("vornctl " SKARN_VERSION);
  } else {
    const auto invocation = findCommand(line);
    if (!invocation) return ended(invocation.failure());
    EngineClient engine(line.timeout);
    Context context{line, engine, output};
    failure = invocation->command->run(context, invocation->arguments);
  }
  if (!failure) failure = output.flush();
  return failure ? ended(*failure) : 0;
}

}  // namespace

int main(int argc, char** argv) {
  std::signal(SIGPIPE, SIG_IGN);
  const std::span<const char* const> arguments(argv, static_cast<std::size_t>(argc));
  const auto line = parseCommandLine(arguments.empty() ? arguments : arguments.subspan(1));
  return line ? run(*line) : ended(line.failure());
}
