#include "core-engine/news/ScreenTexts.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace vorn::engine::test {
namespace {

TEST(ScreenTextsTest, AreEnglishWhereThereAreNoOthers) {
  for (const char* locale : {"en", "en_GB.UTF-8", "xx_YY@here", "C", "C.UTF-8", "", "_", "@"})
    EXPECT_EQ(screenTextsFor(locale).language, "en") << locale;
}

TEST(ScreenTextsTest, HoldNothingThatADesktopTakesForMarkup) {
  const ScreenTexts& texts = screenTextsFor("en");
  for (const std::string_view text : {texts.stage, texts.batteryLeft})
    EXPECT_EQ(text.find_first_of("&<>"), std::string_view::npos) << text;
}

TEST(ScreenTextsTest, AreThoseOfTheLocaleOfMessages) {
  const auto localeWith = [](const char* all, const char* messages, const char* language) {
    ::setenv("LC_ALL", all, 1);
    ::setenv("LC_MESSAGES", messages, 1);
    ::setenv("LANG", language, 1);
    return localeOfMessages();
  };
  EXPECT_EQ(localeWith("", "", "de_DE.UTF-8"), "de_DE.UTF-8");
  EXPECT_EQ(localeWith("", "fr_FR", "de_DE.UTF-8"), "fr_FR");
  EXPECT_EQ(localeWith("C", "fr_FR", "de_DE.UTF-8"), "C");
  EXPECT_EQ(localeWith("", "", ""), "");
  for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"}) ::unsetenv(name);
}

TEST(ScreenTextsTest, AreFilledInOnceWhateverTheValuesAre) {
  EXPECT_EQ(filledIn("Stage %1 of %2", "2", "5"), "Stage 2 of 5");
  EXPECT_EQ(filledIn("%2: %1", "%2", "%1"), "%1: %2");
  EXPECT_EQ(filledIn("100% of %1 %", "it"), "100% of it %");
}

}  // namespace
}  // namespace vorn::engine::test
