#include "core-engine/play/PosixProgramLauncher.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "core-engine/play/LaunchedProgram.h"
#include "model/FileDescriptor.h"
#include "model/RegularFile.h"

namespace vorn::engine {

namespace {

// Tells why the program does not run; the pipe is closed without a word when it does.
[[noreturn]] void giveUp(int pipe) {
  const int reason = errno;
  [[maybe_unused]] const ssize_t told = ::write(pipe, &reason, sizeof reason);
  ::_exit(127);
}

// In the new process. Nothing here may need memory or a lock: the process is a copy of one that may hold them.
[[noreturn]] void become(const char* program, char* const* arguments, const char* folder, int pipe) {
  ::setsid();
  // A grandchild, so that its end is reaped by the system and not waited for by the engine.
  if (const pid_t grandchild = ::fork(); grandchild < 0) {
    giveUp(pipe);
  } else if (grandchild > 0) {
    ::_exit(0);
  }
  if (const int null = ::open("/dev/null", O_RDWR); null >= 0) {
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) ::dup2(null, stream);
    if (null > STDERR_FILENO) ::close(null);
  }
  if (::chdir(folder) < 0 && ::chdir("/") < 0) giveUp(pipe);
  for (int signal = 1; signal < NSIG; ++signal) ::signal(signal, SIG_DFL);
  sigset_t none;
  ::sigemptyset(&none);
  ::sigprocmask(SIG_SETMASK, &none, nullptr);
  ::execv(program, arguments);
  giveUp(pipe);
}

// Why the program of that process does not run; 0 when it does, or when the system takes very long to tell.
int failureOf(pid_t child, int pipe) {
  constexpr int patience = 2000;  // milliseconds
  // It ends as soon as it has a child of its own.
  withoutInterruption([child] { return ::waitpid(child, nullptr, 0); });
  pollfd watched{pipe, POLLIN, 0};
  int reason = 0;
  if (withoutInterruption([&] { return ::poll(&watched, 1, patience); }) <= 0) return 0;
  const ssize_t count = withoutInterruption([&] { return ::read(pipe, &reason, sizeof reason); });
  return count == sizeof reason ? reason : 0;
}

// Why the program cannot be started; empty when it runs.
std::string start(LaunchedProgram program) {
  std::vector<char*> pointers;
  pointers.reserve(program.arguments.size() + 1);
  for (std::string& argument : program.arguments) pointers.push_back(argument.data());
  pointers.push_back(nullptr);

  int ends[2] = {-1, -1};
  const bool hasPipe = ::pipe2(ends, O_CLOEXEC) == 0;
  const FileDescriptor reading(ends[0]);
  FileDescriptor writing(ends[1]);
  const pid_t child = hasPipe ? ::fork() : -1;
  if (child == 0) become(program.path.c_str(), pointers.data(), program.folder.c_str(), writing.get());
  int reason = errno;
  writing.close();
  if (child > 0) reason = failureOf(child, reading.get());
  if (reason == 0) return {};
  return "cannot start " + program.path + ": " + reasonOf({reason, std::generic_category()});
}

}  // namespace

void PosixProgramLauncher::launch(const std::string& path, const Failed& failed) {
  std::string error;
  auto program = launchedProgram(path, error);
  if (program) error = start(std::move(*program));
  if (!error.empty()) failed(error);
}

}  // namespace vorn::engine
