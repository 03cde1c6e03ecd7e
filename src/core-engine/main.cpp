#include <malloc.h>

#include <csignal>
#include <cstddef>
#include <cstdio>
#include <span>
#include <string>
#include <variant>

#include "core-engine/CoreEngine.h"
#include "core-engine/Log.h"
#include "core-engine/Options.h"

using vorn::engine::Log;
using vorn::engine::Options;

int main(int argc, char** argv) {
  // A log that nobody reads any more is no reason to end, and neither is a file that may not grow: the write fails.
  std::signal(SIGPIPE, SIG_IGN);
  std::signal(SIGXFSZ, SIG_IGN);
  // Threads take their memory from one place, so that less of it lies idle: the one that saves does little else.
  mallopt(M_ARENA_MAX, 1);
  Log log;
  const std::span<const char* const> arguments(argv, static_cast<std::size_t>(argc));
  const auto parsed = vorn::engine::parseOptions(arguments.empty() ? arguments : arguments.subspan(1));
  if (const auto* fault = std::get_if<std::string>(&parsed)) {
    log.line(*fault + "; --help lists the options");
    return 2;
  }
  Options options = std::get<Options>(parsed);
  if (options.isHelpWanted) return std::fputs(vorn::engine::helpText().c_str(), stdout) < 0;
  if (options.isVersionWanted) return std::puts("vorn-core-engine " SKARN_VERSION) < 0;
  if (options.stateFolder.empty()) options.stateFolder = vorn::engine::usualStateFolder();
  if (options.stateFolder.empty()) {
    log.line("neither XDG_STATE_HOME nor HOME names a folder for the settings; use --state-dir");
    return 1;
  }
  if (options.defaultsFile.empty()) options.defaultsFile = vorn::engine::usualDefaultsFile();
  log.setVerbose(options.isVerbose);
  return vorn::engine::CoreEngine(options, log).run();
}
