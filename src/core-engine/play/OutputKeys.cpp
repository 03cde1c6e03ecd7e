#include "core-engine/play/OutputKeys.h"

#include <algorithm>

#include "model/HidUsages.h"

namespace vorn::engine {

std::optional<OutputKey> outputKey(std::int64_t usagePage, std::int64_t usage) {
  if (!hid::isKeyOrButton(usagePage, usage)) return std::nullopt;
  return OutputKey{static_cast<std::uint16_t>(usagePage), static_cast<std::uint16_t>(usage)};
}

void OutputKeys::press(OutputKey key) {
  if (++mHolders[key] == 1) mSink({key.usagePage, key.usage, 1});
}

void OutputKeys::release(OutputKey key) {
  const auto found = mHolders.find(key);
  if (found == mHolders.end() || --found->second > 0) return;
  mHolders.erase(found);
  mSink({key.usagePage, key.usage, 0});
}

void OutputKeys::turnWheel(std::int32_t steps) {
  mSink({hid::genericDesktopPage, hid::wheel, steps});
}

void KeyHold::press(OutputKey key) {
  if (std::find(mKeys.begin(), mKeys.end(), key) != mKeys.end()) return;
  mKeys.push_back(key);
  mOutput.press(key);
}

void KeyHold::release(OutputKey key) {
  if (std::erase(mKeys, key) > 0) mOutput.release(key);
}

void KeyHold::releaseAll() {
  while (!mKeys.empty()) {
    const OutputKey last = mKeys.back();
    mKeys.pop_back();
    mOutput.release(last);
  }
}

}  // namespace vorn::engine
