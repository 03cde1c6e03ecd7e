#include "ctl/Keys.h"

#include <algorithm>

#include "ctl/Controls.h"
#include "ctl/Numbers.h"

namespace vorn::ctl {

namespace {

// Of the right modifier behind the left one.
constexpr int sideOffset = hid::rightControl - hid::leftControl;

struct ModifierName {
  std::string_view name;
  hid::Usage usage;  // of the left one
};
constexpr ModifierName modifiersWithoutSide[] = {
    {"Control", hid::leftControl}, {"Shift", hid::leftShift}, {"Alt", hid::leftAlt},     {"Command", hid::leftCommand},
    {"ctrl", hid::leftControl},    {"option", hid::leftAlt},  {"cmd", hid::leftCommand}, {"super", hid::leftCommand},
};

// "Control" for the left one, "Right Control" for the right one.
std::string modifierWord(hid::Usage modifier) {
  const bool isRight = modifier >= hid::rightControl;
  const std::string_view name = modifiersWithoutSide[(modifier - hid::firstModifier) % sideOffset].name;
  return (isRight ? "Right " : "") + std::string(name);
}

}  // namespace

std::optional<hid::Usage> keyUsage(const std::string& name) {
  constexpr std::string_view prefix = "usage:";
  if (name.starts_with(prefix)) {
    const auto number = numberOf(std::string_view(name).substr(prefix.size()), hid::firstKey, hid::lastModifier);
    return number ? std::optional(static_cast<hid::Usage>(*number)) : std::nullopt;
  }
  // "-" is a key itself.
  if (const auto usage = hid::keyNamed(name)) return usage;
  std::string spaced = name;
  std::replace(spaced.begin(), spaced.end(), '-', ' ');
  return hid::keyNamed(spaced);
}

std::optional<hid::Usage> modifierUsage(const std::string& name) {
  constexpr std::string_view right = "right";
  const bool isRight = name.size() > right.size() &&
                       isSameWord(std::string_view(name).substr(0, right.size()), right) &&
                       isSameWord(std::string_view(name).substr(right.size(), 1), "-");
  const std::string_view plain = isRight ? std::string_view(name).substr(right.size() + 1) : std::string_view(name);
  for (const auto& [each, usage] : modifiersWithoutSide) {
    if (isSameWord(plain, each)) return static_cast<hid::Usage>(isRight ? usage + sideOffset : usage);
  }
  const auto usage = keyUsage(name);
  return usage && *usage >= hid::firstModifier ? usage : std::nullopt;
}

Names modifierNames() {
  Names names;
  for (hid::Usage usage = hid::firstModifier; usage <= hid::lastModifier; ++usage) names.push_back(modifierWord(usage));
  return names;
}

std::int32_t modifierBit(hid::Usage modifier) {
  return 1 << (modifier - hid::firstModifier);
}

constexpr const char* keysHint = "; vornctl keys lists them";

Result<Chord> chordNamed(const std::string& word) {
  Chord chord;
  std::string rest = word;
  while (true) {
    if (const auto usage = keyUsage(rest); usage && *usage < hid::firstModifier) {
      chord.usage = *usage;
      return chord;
    }
    const std::size_t plus = rest.find('+');
    const std::string first = rest.substr(0, plus);
    const auto modifier = modifierUsage(first);
    if (!modifier) {
      const bool isKey = plus == std::string::npos;
      return Failure{ExitStatus::Usage,
                     std::string("there is no ") + (isKey ? "key" : "modifier") + " \"" + first + "\"" +
                         (isKey ? suggestion(keyWords(), first, keysHint) : suggestion(modifierNames(), first))};
    }
    chord.modifiers |= modifierBit(*modifier);
    if (plus == std::string::npos) return chord;
    rest.erase(0, plus + 1);
  }
}

std::string keyWord(hid::Usage usage) {
  const std::string_view name = hid::keyName(usage);
  if (hid::keyNamed(name) == usage) return std::string(name);
  // Two keys read "Delete"; the second of them has another name besides.
  constexpr std::string_view otherName = "Delete Forward";
  return hid::keyNamed(otherName) == usage ? std::string(otherName) : "usage:" + std::to_string(usage);
}

std::string chordWord(std::int64_t usage, std::int64_t modifiers) {
  std::string word;
  for (hid::Usage modifier = hid::firstModifier; modifier <= hid::lastModifier; ++modifier) {
    if ((modifiers & modifierBit(modifier)) != 0) word += (word.empty() ? "" : "+") + modifierWord(modifier);
  }
  if (usage < hid::firstKey) return word;
  return word + (word.empty() ? "" : "+") + keyWord(static_cast<hid::Usage>(usage));
}

Names keyWords() {
  Names names;
  for (hid::Usage usage = hid::firstKey; usage <= hid::lastModifier; ++usage) {
    if (!hid::keyName(usage).empty()) names.push_back(keyWord(usage));
  }
  return names;
}

}  // namespace vorn::ctl
