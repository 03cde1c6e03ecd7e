// Other environment variables for as long as a test lasts.
#pragma once

#include <cstdlib>
#include <map>
#include <optional>
#include <string>

namespace vorn::test {

class ChangedEnvironment {
 public:
  ChangedEnvironment() = default;
  ~ChangedEnvironment() {
    for (const auto& former : mFormer) put(former.first, former.second);
  }
  ChangedEnvironment(const ChangedEnvironment&) = delete;
  ChangedEnvironment& operator=(const ChangedEnvironment&) = delete;

  // Nothing: the variable is unset.
  void set(const std::string& name, const std::optional<std::string>& value) {
    const char* former = std::getenv(name.c_str());
    mFormer.emplace(name, former != nullptr ? std::optional<std::string>(former) : std::nullopt);
    put(name, value);
  }

 private:
  static void put(const std::string& name, const std::optional<std::string>& value) {
    value ? ::setenv(name.c_str(), value->c_str(), 1) : ::unsetenv(name.c_str());
  }

  std::map<std::string, std::optional<std::string>> mFormer;
};

}  // namespace vorn::test
