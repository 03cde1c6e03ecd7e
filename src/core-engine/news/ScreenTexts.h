// The words of the messages on the screen, one set for each language. Immutable; any thread.
#pragma once

#include <string>
#include <string_view>

namespace vorn::engine {

// "%1" and "%2" stand for what is filled in.
struct ScreenTexts {
  std::string_view language;     // "en", or "en_GB" for a set that is a country's own
  std::string_view profile;      // the name of the profile
  std::string_view sensitivity;  // DPI
  std::string_view axes;         // the sensitivity from side to side, and from front to back
  std::string_view stage;        // its number, and how many there are
  std::string_view batteryLow;
  std::string_view batteryLeft;  // percent
};

// The words for a locale of the form lang_COUNTRY.ENCODING@MODIFIER, whose parts after lang may be missing; the English
// ones where there are no others.
const ScreenTexts& screenTextsFor(std::string_view locale);

// The locale of the messages of programs in this process (LC_ALL, else LC_MESSAGES, else LANG); empty for none.
std::string localeOfMessages();

// The text with the values in the places of "%1" and "%2". What looks like a place in a value stays as it is.
std::string filledIn(std::string_view text, std::string_view first, std::string_view second = {});

}  // namespace vorn::engine
