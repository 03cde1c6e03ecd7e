#include "model/ApplicationBundle.h"

#include <algorithm>

namespace vorn {

namespace {

constexpr std::string_view ending = ".app";

char lowerCase(char character) {
  return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a') : character;
}

}  // namespace

bool hasBundleName(std::string_view path) {
  while (path.ends_with('/')) path.remove_suffix(1);
  return path.size() >= ending.size() &&
         std::ranges::equal(path.substr(path.size() - ending.size()), ending, {}, lowerCase);
}

}  // namespace vorn
