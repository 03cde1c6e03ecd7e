#include <csignal>
#include <cstddef>
#include <cstdio>
#include <span>
#include <string>

#include "ctl/CommandTable.h"

namespace {

using namespace vorn::ctl;

int run(const CommandLine& line) {
  Output output(line.isJson);
  Outcome failure;
  if (line.isHelpWanted) {
    std::fputs(helpText().c_str(), stdout);
  } else if (line.isVersionWanted) {
    std::puts("vornctl " SKARN_VERSION);
  } else {
    const auto invocation = findCommand(line);
    if (!invocation) return output.failure(invocation.failure());
    EngineClient engine(line.timeout, !line.isNoStart && !invocation->command->isOnlyLooking);
    Context context{line, engine, output};
    failure = invocation->command->run(context, invocation->arguments);
  }
  if (!failure) failure = output.flush();
  return failure ? output.failure(*failure) : 0;
}

}  // namespace

int main(int argc, char** argv) {
  std::signal(SIGPIPE, SIG_IGN);
  const std::span<const char* const> all(argv, static_cast<std::size_t>(argc));
  const auto arguments = all.empty() ? all : all.subspan(1);
  const auto line = parseCommandLine(arguments);
  return line ? run(*line) : Output(isJsonWanted(arguments)).failure(line.failure());
}
