#include "core-engine/Log.h"

#include <unistd.h>

#include <algorithm>
#include <utility>

#include "model/Utf8.h"

namespace vorn::engine {

namespace {

constexpr std::string_view prefix = "vorn-core-engine: ";

// One write per line keeps the lines of several processes apart. A standard error that nobody reads any more loses
// lines; the engine goes on.
void writeToStandardError(const std::string& line) {
  const std::string whole = line + '\n';
  std::string_view rest = whole;
  while (!rest.empty()) {
    const ssize_t written = ::write(STDERR_FILENO, rest.data(), rest.size());
    if (written <= 0) return;
    rest.remove_prefix(static_cast<std::size_t>(written));
  }
}

void appendEscaped(std::string& result, char character) {
  constexpr std::string_view digits = "0123456789ABCDEF";
  switch (character) {
    case '\n':
      result += "\\n";
      return;
    case '\t':
      result += "\\t";
      return;
    default:
      const auto value = static_cast<unsigned char>(character);
      result += {'\\', 'x', digits[value >> 4], digits[value & 15]};
  }
}

}  // namespace

std::string printable(std::string_view text, std::size_t maximum) {
  std::string result;
  result.reserve(std::min(text.size(), maximum) + 8);
  while (!text.empty()) {
    if (result.size() >= maximum) return result + "...";
    const Utf8Character next = firstCharacter(text);
    const std::string_view sequence = text.substr(0, next.length);
    if (!next.isValid || isControlCharacter(next.code)) {
      for (const char character : sequence) appendEscaped(result, character);
    } else {
      result += sequence == "\\" ? std::string_view("\\\\") : sequence;
    }
    text.remove_prefix(sequence.size());
  }
  return result;
}

Log::Log() : Log(writeToStandardError) {}

Log::Log(Sink sink) : mSink(std::move(sink)) {}

void Log::line(std::string_view text) {
  const std::string line = std::string(prefix) + printable(text);
  const std::lock_guard lock(mMutex);
  mSink(line);
}

void Log::fault(std::string_view client, std::string_view kind, std::string_view text) {
  const auto known = std::find_if(mFaults.begin(), mFaults.end(),
                                  [&](const Fault& fault) { return fault.client == client && fault.kind == kind; });
  Fault current{std::string(client), std::string(kind)};
  if (known != mFaults.end()) {
    current = std::move(*known);
    mFaults.erase(known);
  } else if (mFaults.size() == maximumFaults) {
    mFaults.pop_front();
  }
  ++current.count;
  const std::string where = "client " + std::string(client) + ": ";
  if (current.count == 1) {
    line(where + std::string(text));
  } else if (current.count == current.nextReport) {
    line(where + std::to_string(current.count) + " times: " + std::string(kind));
    current.nextReport *= 10;
  }
  mFaults.push_back(std::move(current));
}

}  // namespace vorn::engine
