// The engine's log: lines on standard error, each beginning with "vorn-core-engine: ". One thread, the engine's, but
// for line(), which the disk thread calls too.
#pragma once

#include <cstddef>
#include <deque>
#include <functional>
#include <mutex>
#include <string>
#include <string_view>

namespace vorn::engine {

// The text with control characters (and the rest of what is no UTF-8 text) written as \n, \t, \\ or \xHH, and cut with
// "..." at about maximum bytes, so that foreign text can neither forge a line nor flood one.
std::string printable(std::string_view text, std::size_t maximum = 4000);

class Log {
 public:
  using Sink = std::function<void(const std::string& line)>;  // receives one line without its line break

  Log();                    // to standard error
  explicit Log(Sink sink);  // tests

  void setVerbose(bool verbose) { mIsVerbose = verbose; }
  bool isVerbose() const { return mIsVerbose; }

  // Writes one line. The text is made printable here. Any thread.
  void line(std::string_view text);

  // A client's fault. The first fault of a kind by a client is told whole; of its repetitions only the count is told,
  // at 10, 100, 1000 and so on. The last maximumFaults kinds of fault are remembered; a forgotten one counts as new.
  void fault(std::string_view client, std::string_view kind, std::string_view text);

  static constexpr std::size_t maximumFaults = 64;

 private:
  struct Fault {
    std::string client;
    std::string kind;
    std::size_t count = 0;
    std::size_t nextReport = 10;
  };

  std::mutex mMutex;
  Sink mSink;  // called by one thread at a time
  bool mIsVerbose = false;
  std::deque<Fault> mFaults;  // the most recent one last
};

}  // namespace vorn::engine
