#include "core-engine/play/ProgramProcess.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <string>
#include <system_error>
#include <vector>

#include "core-engine/play/ProgramEnvironment.h"
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

struct Start {
  const char* program = nullptr;
  char* const* arguments = nullptr;
  char* const* environment = nullptr;
  const char* folder = nullptr;
};

// In the new process. Nothing here may need memory or a lock: the process is a copy of one that may hold them.
[[noreturn]] void become(const Start& start, int pipe) {
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
  if (::chdir(start.folder) < 0 && ::chdir("/") < 0) giveUp(pipe);
  for (int signal = 1; signal < NSIG; ++signal) ::signal(signal, SIG_DFL);
  sigset_t none;
  ::sigemptyset(&none);
  ::sigprocmask(SIG_SETMASK, &none, nullptr);
  ::execve(start.program, start.arguments, start.environment);
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

// What execve() takes; the texts outlive it.
std::vector<char*> pointersTo(std::vector<std::string>& texts) {
  std::vector<char*> pointers;
  pointers.reserve(texts.size() + 1);
  for (std::string& text : texts) pointers.push_back(text.data());
  pointers.push_back(nullptr);
  return pointers;
}

}  // namespace

std::string startProcess(const LaunchedProgram& program) {
  std::vector<std::string> arguments = program.arguments;
  std::vector<std::string> environment = programEnvironment(program.startupID);
  const std::vector<char*> argumentPointers = pointersTo(arguments);
  const std::vector<char*> environmentPointers = pointersTo(environment);
  const Start start{program.path.c_str(), argumentPointers.data(), environmentPointers.data(), program.folder.c_str()};

  int ends[2] = {-1, -1};
  const bool hasPipe = ::pipe2(ends, O_CLOEXEC) == 0;
  const FileDescriptor reading(ends[0]);
  FileDescriptor writing(ends[1]);
  const pid_t child = hasPipe ? ::fork() : -1;
  if (child == 0) become(start, writing.get());
  int reason = errno;
  writing.close();
  if (child > 0) reason = failureOf(child, reading.get());
  if (reason == 0) return {};
  return "cannot start " + program.path + ": " + reasonOf({reason, std::generic_category()});
}

}  // namespace vorn::engine
