#include "core-engine/news/ScreenTexts.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>

namespace vorn::engine {

namespace {

// English first: it stands in for every language that is missing.
constexpr ScreenTexts allTexts[] = {
    {"en", "Profile: %1", "Sensitivity: %1 DPI", "%1 × %2", "Stage %1 of %2", "The battery of the mouse is low",
     "%1% left"},
};

}  // namespace

const ScreenTexts& screenTextsFor(std::string_view locale) {
  const std::string_view place = locale.substr(0, locale.find_first_of(".@"));
  for (const std::string_view language : {place, place.substr(0, place.find('_'))}) {
    const auto* const texts = std::ranges::find(allTexts, language, &ScreenTexts::language);
    if (texts != std::end(allTexts)) return *texts;
  }
  return allTexts[0];
}

std::string localeOfMessages() {
  for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
    const char* value = std::getenv(name);
    if (value != nullptr && *value != '\0') return value;
  }
  return {};
}

std::string filledIn(std::string_view text, std::string_view first, std::string_view second) {
  std::string result;
  while (!text.empty()) {
    const bool isFirst = text.starts_with("%1");
    if (isFirst || text.starts_with("%2")) {
      result += isFirst ? first : second;
      text.remove_prefix(2);
    } else {
      result += text.front();
      text.remove_prefix(1);
    }
  }
  return result;
}

}  // namespace vorn::engine
