#include "support/ChildProcess.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>

namespace vorn::test {

namespace {

using Clock = std::chrono::steady_clock;

std::chrono::milliseconds remaining(Clock::time_point end) {
  return std::max(std::chrono::ceil<std::chrono::milliseconds>(end - Clock::now()), std::chrono::milliseconds(0));
}

std::array<int, 2> makePipe() {
  std::array<int, 2> ends{};
  if (pipe2(ends.data(), O_CLOEXEC) == 0) return ends;
  std::perror("pipe2");
  std::abort();
}

[[noreturn]] void becomeProgram(char* const* arguments, int input, int output, pid_t parent) {
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  if (getppid() != parent) _exit(127);
  sigset_t none;
  sigemptyset(&none);
  sigprocmask(SIG_SETMASK, &none, nullptr);
  dup2(input, STDIN_FILENO);
  dup2(output, STDOUT_FILENO);
  execvp(arguments[0], arguments);
  _exit(127);
}

}  // namespace

ChildProcess::ChildProcess(const std::vector<std::string>& commandLine) {
  // Everything that allocates comes before the fork: the program may have threads.
  std::vector<std::string> texts = commandLine;
  std::vector<char*> arguments;
  for (std::string& text : texts) arguments.push_back(text.data());
  arguments.push_back(nullptr);
  const auto input = makePipe();
  const auto output = makePipe();
  const pid_t parent = getpid();
  mId = fork();
  if (mId < 0) {
    std::perror("fork");
    std::abort();
  }
  if (mId == 0) becomeProgram(arguments.data(), input[0], output[1], parent);
  close(input[0]);
  close(output[1]);
  mInput = input[1];
  mOutput = output[0];
}

ChildProcess::~ChildProcess() {
  if (isRunning()) {
    kill(mId, SIGKILL);
    waitForEnd();
  }
  closeInput();
  close(mOutput);
}

bool ChildProcess::isRunning() {
  return !waitForEnd(std::chrono::milliseconds(0));
}

void ChildProcess::writeLine(const std::string& line) {
  const std::string text = line + "\n";
  std::size_t written = 0;
  // A process that is gone must not end the test program by SIGPIPE.
  const auto previous = std::signal(SIGPIPE, SIG_IGN);
  while (mInput >= 0 && written < text.size()) {
    const ssize_t count = write(mInput, text.data() + written, text.size() - written);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) break;
    written += static_cast<std::size_t>(count);
  }
  std::signal(SIGPIPE, previous);
}

void ChildProcess::closeInput() {
  if (mInput >= 0) close(mInput);
  mInput = -1;
}

std::optional<std::string> ChildProcess::waitForLine(const Predicate& predicate, std::chrono::milliseconds deadline) {
  const auto end = Clock::now() + deadline;
  std::size_t looked = 0;
  while (true) {
    for (; looked < mLines.size(); ++looked) {
      if (!predicate(mLines[looked])) continue;
      std::string line = std::move(mLines[looked]);
      mLines.erase(mLines.begin() + static_cast<std::ptrdiff_t>(looked));
      return line;
    }
    if (!readOutput(remaining(end))) return std::nullopt;
  }
}

bool ChildProcess::readOutput(std::chrono::milliseconds timeout) {
  pollfd watched{mOutput, POLLIN, 0};
  if (poll(&watched, 1, static_cast<int>(timeout.count())) <= 0) return false;
  std::array<char, 65536> buffer;
  const ssize_t count = read(mOutput, buffer.data(), buffer.size());
  if (count <= 0) return false;
  mPartialLine.append(buffer.data(), static_cast<std::size_t>(count));
  std::size_t begin = 0;
  for (std::size_t end = 0; (end = mPartialLine.find('\n', begin)) != std::string::npos; begin = end + 1)
    mLines.push_back(mPartialLine.substr(begin, end - begin));
  mPartialLine.erase(0, begin);
  return true;
}

void ChildProcess::signal(int number) {
  if (isRunning()) kill(mId, number);
}

std::optional<int> ChildProcess::waitForEnd(std::chrono::milliseconds deadline) {
  if (mStatus) return mStatus;
  int status = 0;
  pid_t ended = waitpid(mId, &status, WNOHANG);
  if (ended == 0 && deadline.count() > 0) {
    // The descriptor of a process becomes readable when it ends.
    pollfd watched{static_cast<int>(syscall(SYS_pidfd_open, mId, 0)), POLLIN, 0};
    const auto end = Clock::now() + deadline;
    while (poll(&watched, 1, static_cast<int>(remaining(end).count())) < 0 && errno == EINTR) continue;
    if (watched.fd >= 0) close(watched.fd);
    ended = waitpid(mId, &status, WNOHANG);
  }
  if (ended != mId) return std::nullopt;
  mStatus = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
  return mStatus;
}

}  // namespace vorn::test
