// The words of a command, and what is said to whoever gave it.
#pragma once

#include <sys/epoll.h>
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <sstream>
#include <string>

namespace vorn::test {

inline void say(const std::string& line) {
  std::printf("%s\n", line.c_str());
  std::fflush(stdout);
}

class Words {
 public:
  explicit Words(const std::string& line) : mStream(line) {}

  std::string next() {
    std::string word;
    mStream >> word;
    return word;
  }
  std::uint32_t number() {
    std::uint32_t number = 0;
    mStream >> number;
    return number;
  }

 private:
  std::istringstream mStream;
};

}  // namespace vorn::test
