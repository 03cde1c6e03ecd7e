#include "ctl/Controls.h"

#include <algorithm>

#include "ctl/Numbers.h"

namespace vorn::ctl {

// clang-format off
const std::array<Control, 27> controls = {{
    {1, "43", "Tab", false},          {2, "20", "Q", false},           {3, "26", "W", false},
    {4, "8", "E", false},             {5, "21", "R", false},           {6, "57", "Caps Lock", false},
    {7, "4", "A", false},             {8, "22", "S", false},           {9, "7", "D", false},
    {10, "9", "F", false},            {11, "225", "Left Shift", false}, {12, "29", "Z", false},
    {13, "27", "X", false},           {14, "6", "C", false},           {15, "44", "Space", false},
    {16, "226", "Left Alt", false},   {17, "03", "Wheel", true},       {18, "06", "Wheel Up", true},
    {19, "07", "Wheel Down", true},   {20, "82", "Up Arrow", false},   {21, "233", "Up Right", false},
    {22, "79", "Right Arrow", false}, {23, "235", "Down Right", false}, {24, "81", "Down Arrow", false},
    {25, "234", "Down Left", false},  {26, "80", "Left Arrow", false}, {27, "232", "Up Left", false},
}};
// clang-format on

namespace {

constexpr char plain(char character) {
  if (character == '-') return ' ';
  return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a') : character;
}

template <typename Predicate>
const Control* first(Predicate predicate) {
  const auto found = std::find_if(controls.begin(), controls.end(), predicate);
  return found == controls.end() ? nullptr : &*found;
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
  if (const Control* control = first([&](const Control& each) { return each.identifier == word; })) return control;
  return isIdentifier ? nullptr : first([&](const Control& each) { return isSameWord(each.name, word); });
}

}  // namespace vorn::ctl
