// Events of the kernel, as they are written in tests.
#pragma once

#include <cstdint>
#include <iterator>
#include <ostream>
#include <random>
#include <string>
#include <string_view>

#include "core-engine/device/linux/ReportTranslator.h"

namespace vorn::engine {

inline void PrintTo(const KernelEvent& event, std::ostream* stream) {
  *stream << event.type << "/" << event.code << " " << event.value;
}
inline void PrintTo(const ControlChanged& change, std::ostream* stream) {
  *stream << change.control << (change.isPressed ? " down" : " up");
}
inline void PrintTo(const EventSource& source, std::ostream* stream) {
  *stream << "\"" << source.node << "\" " << source.type << "/" << source.code << " " << int{source.direction};
}

}  // namespace vorn::engine

namespace vorn::engine::test {

inline constexpr std::string_view keyboardNode = "01 Acme Mouse Keyboard";
inline constexpr std::string_view pointerNode = "00 Acme Mouse";

inline constexpr KernelEvent endOfReport{EV_SYN, SYN_REPORT, 0};

inline KernelEvent key(std::uint16_t code, std::int32_t value) {
  return {EV_KEY, code, value};
}
inline KernelEvent motion(std::uint16_t code, std::int32_t value) {
  return {EV_REL, code, value};
}
inline KernelEvent hat(std::uint16_t code, std::int32_t value) {
  return {EV_ABS, code, value};
}
inline KernelEvent scanCode(std::int32_t value) {
  return {EV_MSC, MSC_SCAN, value};
}

inline EventSource keySource(std::uint16_t code, std::string_view node = {}) {
  return {std::string(node), EV_KEY, code, 0};
}
inline EventSource wheelSource(std::uint16_t code, std::int8_t direction, std::string_view node = {}) {
  return {std::string(node), EV_REL, code, direction};
}

class Random {
 public:
  explicit Random(unsigned seed) : mEngine(seed) {}

  int number(int first, int last) { return std::uniform_int_distribution(first, last)(mEngine); }
  bool oneIn(int count) { return number(1, count) == 1; }
  template <typename Values>
  const auto& of(const Values& values) {
    return *(std::begin(values) + number(0, static_cast<int>(std::size(values)) - 1));
  }

 private:
  std::mt19937 mEngine;
};

}  // namespace vorn::engine::test
