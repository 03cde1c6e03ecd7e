#include "core-engine/focus/X11Authority.h"

#include <cstddef>
#include <cstdint>

namespace vorn::engine {

namespace {

constexpr std::string_view knownName = "MIT-MAGIC-COOKIE-1";
constexpr unsigned localFamily = 256;
constexpr unsigned wildFamily = 65535;

// Takes from the bytes; nothing, from then on, where they have come to their end.
class Reader {
 public:
  explicit Reader(BytesView bytes) : mBytes(bytes) {}

  bool hasEnded() const { return mBytes.empty(); }
  bool isGood() const { return mIsGood; }

  unsigned number() {
    if (mBytes.size() < 2) {
      mIsGood = false;
      return 0;
    }
    const unsigned value = static_cast<unsigned>(mBytes[0]) << 8U | static_cast<unsigned>(mBytes[1]);
    mBytes = mBytes.subspan(2);
    return value;
  }
  std::string text() {
    const std::size_t length = number();
    if (!mIsGood || mBytes.size() < length) {
      mIsGood = false;
      return {};
    }
    const BytesView taken = mBytes.first(length);
    mBytes = mBytes.subspan(length);
    return {taken.begin(), taken.end()};
  }

 private:
  BytesView mBytes;
  bool mIsGood = true;
};

}  // namespace

std::optional<X11Key> x11KeyIn(BytesView file, std::string_view hostName, int display) {
  Reader reader(file);
  while (!reader.hasEnded()) {
    const unsigned family = reader.number();
    const std::string address = reader.text();
    const std::string number = reader.text();
    X11Key key{reader.text(), reader.text()};
    if (!reader.isGood()) break;
    const bool isOfMachine = family == wildFamily || (family == localFamily && address == hostName);
    const bool isOfDisplay = number.empty() || number == std::to_string(display);
    if (isOfMachine && isOfDisplay && key.name == knownName) return key;
  }
  return std::nullopt;
}

}  // namespace vorn::engine
