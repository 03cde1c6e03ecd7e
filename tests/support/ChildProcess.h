// A child process whose standard output is read line by line. It is killed when the test program ends in any way.
#pragma once

#include <sys/types.h>

#include <chrono>
#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace vorn::test {

class ChildProcess {
 public:
  using Predicate = std::function<bool(const std::string&)>;
  static constexpr std::chrono::seconds defaultDeadline{20};

  // Starts the program (a path, or a name looked up in PATH) with its arguments. One that cannot be started ends at
  // once with status 127. Start it from a thread that lives as long as the process shall.
  explicit ChildProcess(const std::vector<std::string>& commandLine);
  ~ChildProcess();  // kills it if it still runs
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;

  pid_t id() const { return mId; }
  bool isRunning();

  // Writes the line and a line break to standard input; a process that is gone does no harm.
  void writeLine(const std::string& line);
  // Ends its standard input.
  void closeInput();

  // The first line not yet taken that the predicate accepts; it is taken, the others stay. Nothing when the output
  // ends or the deadline passes before such a line.
  std::optional<std::string> waitForLine(const Predicate& predicate,
                                         std::chrono::milliseconds deadline = defaultDeadline);

  void signal(int number);
  // Waits for the end. The exit status, 128 + the signal that ended it, or nothing when it still runs then.
  std::optional<int> waitForEnd(std::chrono::milliseconds deadline = defaultDeadline);

 private:
  bool readOutput(std::chrono::milliseconds timeout);

  pid_t mId = -1;
  int mInput = -1;
  int mOutput = -1;
  std::optional<int> mStatus;
  std::string mPartialLine;
  std::deque<std::string> mLines;
};

}  // namespace vorn::test
