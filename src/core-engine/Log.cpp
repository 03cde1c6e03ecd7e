#include "core-engine/Log.h"

#include <unistd.h>

#include <algorithm>
#include <utility>

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

// Length of the well-formed UTF-8 sequence at the start of text (The Unicode Standard, table 3-7); 0 for none.
std::size_t sequenceLength(std::string_view text) {
  const auto byte = [&](std::size_t index) {
    return index < text.size() ? static_cast<unsigned char>(text[index]) : static_cast<unsigned char>(0);
  };
  const unsigned char first = byte(0);
  if (first < 0x80) return 1;
  const std::size_t length = first >= 0xC2 && first <= 0xDF   ? 2
                             : first >= 0xE0 && first <= 0xEF ? 3
                             : first >= 0xF0 && first <= 0xF4 ? 4
                                                              : 0;
  for (std::size_t index = 1; index < length; ++index) {
    if ((byte(index) & 0xC0U) != 0x80U) return 0;
  }
  const bool isOverlong = (first == 0xE0 && byte(1) < 0xA0) || (first == 0xF0 && byte(1) < 0x90);
  const bool isOutside = (first == 0xED && byte(1) > 0x9F) || (first == 0xF4 && byte(1) > 0x8F);
  return isOverlong || isOutside ? 0 : length;
}

// C0 and C1 control characters, and the separators that some viewers take as line breaks.
bool isControl(std::string_view sequence) {
  const auto first = static_cast<unsigned char>(sequence[0]);
  if (sequence.size() == 1) return first < 0x20 || first == 0x7F;
  if (sequence.size() == 2) return first == 0xC2 && static_cast<unsigned char>(sequence[1]) < 0xA0;
  return sequence == "\u2028" || sequence == "\u2029";
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
    const std::size_t length = sequenceLength(text);
    const std::string_view sequence = text.substr(0, std::max<std::size_t>(length, 1));
    if (length == 0 || isControl(sequence)) {
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
  mSink(std::string(prefix) + printable(text));
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
