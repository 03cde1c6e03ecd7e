#include "ctl/Names.h"

#include <algorithm>
#include <functional>
#include <utility>

#include "ctl/Text.h"

namespace vorn::ctl {

namespace {

std::vector<std::size_t> positionsWhere(const Names& names, const std::function<bool(const std::string&)>& isMeant) {
  std::vector<std::size_t> positions;
  for (std::size_t position = 0; position < names.size(); ++position) {
    if (isMeant(names[position])) positions.push_back(position);
  }
  return positions;
}

char lowerCase(char character) {
  return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a') : character;
}

}  // namespace

std::vector<std::size_t> positionsNamed(const Names& names, std::string_view word) {
  auto same = positionsWhere(names, [&](const std::string& name) { return name == word; });
  if (!same.empty()) return same;
  const std::u32string folded = foldedCase(word);
  return positionsWhere(names, [&](const std::string& name) { return foldedCase(name) == folded; });
}

std::size_t distance(std::string_view left, std::string_view right) {
  // Of the first letters of left to those of right; of the last three rows.
  std::vector<std::size_t> before;
  std::vector<std::size_t> above(right.size() + 1);
  for (std::size_t column = 0; column <= right.size(); ++column) above[column] = column;
  for (std::size_t row = 1; row <= left.size(); ++row) {
    std::vector<std::size_t> current(right.size() + 1, row);
    for (std::size_t column = 1; column <= right.size(); ++column) {
      const auto isSame = [&](std::size_t leftBack, std::size_t rightBack) {
        return lowerCase(left[row - leftBack]) == lowerCase(right[column - rightBack]);
      };
      current[column] =
          std::min({above[column] + 1, current[column - 1] + 1, above[column - 1] + (isSame(1, 1) ? 0 : 1)});
      if (row > 1 && column > 1 && isSame(1, 2) && isSame(2, 1)) {
        current[column] = std::min(current[column], before[column - 2] + 1);
      }
    }
    before = std::exchange(above, std::move(current));
  }
  return above.back();
}

bool isNear(std::string_view word, std::string_view name) {
  constexpr std::size_t longest = 64;  // what is longer is no slip of the pen
  if (word.size() > longest) return false;
  const std::size_t slips = distance(word, name);
  return slips < name.size() && slips <= std::max<std::size_t>(1, name.size() / 3);
}

std::string suggestion(const Names& names, std::string_view word, const std::string& otherwise) {
  Names nearest;
  std::size_t least = word.size() + 1;
  for (const std::string& name : names) {
    if (!isNear(word, name)) continue;
    const std::size_t each = distance(word, name);
    if (each < least) nearest.clear();
    least = std::min(least, each);
    if (each == least) nearest.push_back(name);
  }
  return didYouMean(nearest, otherwise);
}

std::string didYouMean(const Names& names, const std::string& otherwise) {
  Names quoted;
  for (const std::string& name : names) quoted.push_back("\"" + name + "\"");
  return names.empty() ? otherwise : "; did you mean " + alternatives(quoted) + "?";
}

std::string alternatives(const Names& names) {
  std::string text;
  for (std::size_t position = 0; position < names.size(); ++position) {
    if (position > 0) text += position + 1 == names.size() ? " or " : ", ";
    text += names[position];
  }
  return text;
}

}  // namespace vorn::ctl
