#include "core-engine/play/PosixProgramLauncher.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <string_view>

#include "model/ApplicationEntry.h"
#include "model/FileDescriptor.h"
#include "model/RegularFile.h"

namespace vorn::engine {

namespace {

std::string environmentValue(const char* name, const char* otherwise) {
  const char* value = std::getenv(name);
  return value != nullptr && *value != '\0' ? value : otherwise;
}

// The program's path; empty where PATH has no such program.
std::string foundProgram(const std::string& name) {
  if (name.find('/') != std::string::npos) return name.front() == '/' && isProgram(name) ? name : std::string();
  const std::string folders = environmentValue("PATH", "/usr/local/bin:/usr/bin:/bin");
  for (std::size_t start = 0; start <= folders.size();) {
    const std::size_t end = std::min(folders.find(':', start), folders.size());
    std::string path = folders.substr(start, end - start) + "/" + name;
    if (path.front() == '/' && path != "/" + name && isProgram(path)) return path;
    start = end + 1;
  }
  return {};
}

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

bool start(const LaunchCommand& command, std::string& error) {
  std::vector<std::string> arguments = command.arguments;
  if (command.needsTerminal) arguments.insert(arguments.begin(), {"x-terminal-emulator", "-e"});
  for (const std::string& program : {arguments.front(), command.arguments.front()}) {
    if (!foundProgram(program).empty()) continue;
    error = "there is no program " + program;
    return false;
  }
  const std::string program = foundProgram(arguments.front());
  const std::string folder = command.folder.empty() ? environmentValue("HOME", "/") : command.folder;
  std::vector<char*> pointers;
  pointers.reserve(arguments.size() + 1);
  for (std::string& argument : arguments) pointers.push_back(argument.data());
  pointers.push_back(nullptr);

  int ends[2] = {-1, -1};
  const bool hasPipe = ::pipe2(ends, O_CLOEXEC) == 0;
  const FileDescriptor reading(ends[0]);
  FileDescriptor writing(ends[1]);
  const pid_t child = hasPipe ? ::fork() : -1;
  if (child == 0) become(program.c_str(), pointers.data(), folder.c_str(), writing.get());
  int reason = errno;
  writing.close();
  if (child > 0) reason = failureOf(child, reading.get());
  if (reason != 0) error = "cannot start " + program + ": " + reasonOf({reason, std::generic_category()});
  return reason == 0;
}

}  // namespace

bool PosixProgramLauncher::launch(const std::string& path, std::string& error) {
  const auto command = launchCommandOf(path, error);
  return command && start(*command, error);
}

}  // namespace vorn::engine
