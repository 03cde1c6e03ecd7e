#include "model/KernelKeys.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace vorn {

namespace {

constexpr KernelKey firstMouseButton = 0x110;  // BTN_MOUSE

// In the order of the usages, from hid::firstKey on; 0 where the kernel has no number.
constexpr std::array<std::uint8_t, hid::lastModifier - hid::firstKey + 1> kernelKeys = {
    // 4 to 39: A to Z, 1 to 0
    30, 48, 46, 32, 18, 33, 34, 35, 23, 36, 37, 38, 50, 49, 24, 25, 16, 19, 31, 20, 22, 47, 17, 45, 21, 44,  //
    2, 3, 4, 5, 6, 7, 8, 9, 10, 11,
    // 40 to 57: Return to Caps Lock
    28, 1, 14, 15, 57, 12, 13, 26, 27, 43, 43, 39, 40, 41, 51, 52, 53, 58,
    // 58 to 69: F1 to F12
    59, 60, 61, 62, 63, 64, 65, 66, 67, 68, 87, 88,
    // 70 to 82: Print Screen to Up Arrow
    99, 70, 119, 110, 102, 104, 111, 107, 109, 106, 105, 108, 103,
    // 83 to 103: the number pad, the key beside the left shift, Menu, Power, Numpad =
    69, 98, 55, 74, 78, 96, 79, 80, 81, 75, 76, 77, 71, 72, 73, 82, 83, 86, 127, 116, 117,
    // 104 to 115: F13 to F24
    183, 184, 185, 186, 187, 188, 189, 190, 191, 192, 193, 194,
    // 116 to 129: Execute to Volume Down
    134, 138, 130, 132, 128, 129, 131, 137, 133, 135, 136, 113, 115, 114,
    // 130 to 152: locking keys, keys of international keyboards and of languages
    0, 0, 0, 121, 0, 89, 93, 124, 92, 94, 95, 0, 0, 0, 122, 123, 90, 91, 85, 0, 0, 0, 0,
    // 153 to 164: Alternate Erase to ExSel
    0, 0, 0, 111, 0, 0, 0, 0, 0, 0, 0, 0,
    // 165 to 181
    0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0,
    // 182 and 183: the parentheses of the number pad
    179, 180,
    // 184 to 215
    0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0,
    // 216 to 223: Numpad Clear and what follows it
    111, 0, 0, 0, 0, 0, 0, 0,
    // 224 to 231: the modifiers
    29, 42, 56, 125, 97, 54, 100, 126};

}  // namespace

std::optional<HidUsage> usageOfKernelKey(std::uint32_t number) noexcept {
  if (number >= firstMouseButton && number < firstMouseButton + hid::lastFurtherButton)
    return HidUsage{hid::buttonPage, static_cast<hid::Usage>(number - firstMouseButton + hid::primaryButton)};
  const auto* const found = number == 0 ? kernelKeys.end() : std::ranges::find(kernelKeys, number);
  if (found == kernelKeys.end()) return std::nullopt;
  return HidUsage{hid::keyboardPage, static_cast<hid::Usage>(hid::firstKey + std::distance(kernelKeys.begin(), found))};
}

std::optional<KernelKey> kernelKeyOfUsage(HidUsage usage) noexcept {
  if (!hid::isKeyOrButton(usage.page, usage.usage)) return std::nullopt;
  if (usage.page == hid::buttonPage) return static_cast<KernelKey>(firstMouseButton + usage.usage - hid::primaryButton);
  const KernelKey number = kernelKeys[static_cast<std::size_t>(usage.usage - hid::firstKey)];
  return number == 0 ? std::nullopt : std::optional(number);
}

}  // namespace vorn
