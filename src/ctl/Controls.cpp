#include "ctl/Controls.h"

#include <algorithm>

#include "ctl/Numbers.h"

namespace vorn::ctl {

namespace {

constexpr char plain(char character) {
  if (character == '-') return ' ';
  return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a') : character;
}

}  // namespace

bool isSameWord(std::string_view left, std::string_view right) {
  return std::ranges::equal(left, right, {}, plain, plain);
}

const Control* controlNamed(std::string_view word) {
  constexpr std::string_view prefix = "id:";
  const bool isIdentifier = word.starts_with(prefix);
  if (isIdentifier) word.remove_prefix(prefix.size());
  const auto number = numberOf(word);
  const bool isNumber = !isIdentifier && number && !word.starts_with('0');
  if (isNumber && *number >= 1 && *number <= static_cast<std::int64_t>(controls.size())) {
    return &controls[static_cast<std::size_t>(*number - 1)];
  }
  if (const Control* control = controlOf(word)) return control;
  if (isIdentifier) return nullptr;
  const auto* named =
      std::ranges::find_if(controls, [word](const Control& each) { return isSameWord(each.name, word); });
  return named == controls.end() ? nullptr : named;
}

}  // namespace vorn::ctl
