// How vornctl ends, and what its parts return instead of throwing.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>

namespace vorn::ctl {

// The program's exit status; docs/vornctl.1 documents the numbers, which never change.
enum class ExitStatus : int {
  Done = 0,
  Refused = 1,    // by the engine or the virtual mouse
  Usage = 2,      // wrong command line
  NoEngine = 3,   // no session bus, no engine, or no virtual mouse
  NoAnswer = 4,   // none in time
  FileError = 5,  // a file, or standard output, cannot be read or written, or holds something else
};

// The status as --json tells it; docs/vornctl.1 documents the words, which never change either.
constexpr std::string_view wordOf(ExitStatus status) {
  switch (status) {
    case ExitStatus::Done:
      break;
    case ExitStatus::Refused:
      return "refused";
    case ExitStatus::Usage:
      return "usage";
    case ExitStatus::NoEngine:
      return "no-engine";
    case ExitStatus::NoAnswer:
      return "no-answer";
    case ExitStatus::FileError:
      return "file";
  }
  return "done";
}

struct Failure {
  ExitStatus status = ExitStatus::Refused;
  std::string text;  // one English line, without the program's name
};

using Outcome = std::optional<Failure>;  // nothing: done

template <typename T>
class Result {
 public:
  Result(T value) : mValue(std::move(value)) {}
  Result(Failure failure) : mValue(std::move(failure)) {}

  explicit operator bool() const { return std::holds_alternative<T>(mValue); }
  // With a value only.
  const T& operator*() const { return std::get<T>(mValue); }
  const T* operator->() const { return &std::get<T>(mValue); }
  // Without one only.
  const Failure& failure() const { return std::get<Failure>(mValue); }

 private:
  std::variant<T, Failure> mValue;
};

}  // namespace vorn::ctl
