// The keys and buttons that the mouse holds down on the desktop. Several controls and macros may hold the same one: it
// goes down with the first and comes up with the last. One thread, the engine's.
#pragma once

#include <compare>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <utility>
#include <vector>

#include "core-engine/device/Device.h"

namespace vorn::engine {

struct OutputKey {
  std::uint16_t usagePage = 0;  // 7 for keys, 9 for buttons
  std::uint16_t usage = 0;
  friend auto operator<=>(const OutputKey&, const OutputKey&) = default;
};

// The key (page 7, usages 4 to 231) or button (page 9, usages 1 to 9); nothing for other numbers.
std::optional<OutputKey> outputKey(std::int64_t usagePage, std::int64_t usage);

class OutputKeys {
 public:
  using Sink = std::function<void(const OutputEvent&)>;

  explicit OutputKeys(Sink sink) : mSink(std::move(sink)) {}

  void press(OutputKey key);
  void release(OutputKey key);         // a key that is up stays up
  void turnWheel(std::int32_t steps);  // positive: away from the user

 private:
  Sink mSink;
  std::map<OutputKey, std::size_t> mHolders;
};

// The keys that one holder has down; they come up with its end.
class KeyHold {
 public:
  explicit KeyHold(OutputKeys& output) : mOutput(output) {}
  ~KeyHold() { releaseAll(); }
  KeyHold(const KeyHold&) = delete;
  KeyHold& operator=(const KeyHold&) = delete;

  void press(OutputKey key);    // one that this holder has down already stays down
  void release(OutputKey key);  // one that this holder does not have down is left as it is
  void releaseAll();            // in the reverse order of their presses

 private:
  OutputKeys& mOutput;
  std::vector<OutputKey> mKeys;
};

}  // namespace vorn::engine
