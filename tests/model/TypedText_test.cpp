#include "model/TypedText.h"

#include <gtest/gtest.h>

#include <string>

#include "model/MacroEvents.h"
#include "model/eventParser.h"

namespace vorn::test {
namespace {

// The lines of the events without the delays.
std::vector<std::string> eventLines(const MacroEventList& events) {
  std::vector<std::string> lines;
  const PropertyList all = eventParser::getMessagesArray(PropertyList::array(events));
  for (std::size_t row = 0; row < all.size(); row += 2)
    lines.push_back(all.at(static_cast<std::int64_t>(row)).toString());
  return lines;
}

TEST(TypedTextTest, EveryPrintableCharacterHasOneKeyThatTypesIt) {
  std::string all = "\n\t";
  for (char character = ' '; character <= '~'; ++character) all += character;
  for (const char character : all) {
    const auto key = keyOfCharacter(static_cast<char32_t>(character));
    ASSERT_TRUE(key) << character;
    EXPECT_EQ(characterOfKey(key->usage, key->isShifted), character);
  }
  EXPECT_EQ(keyOfCharacter(U'A'), (CharacterKey{4, true}));
  EXPECT_EQ(keyOfCharacter(U'0'), (CharacterKey{39, false}));
  EXPECT_EQ(keyOfCharacter(U'?'), (CharacterKey{56, true}));
}

TEST(TypedTextTest, WhatAKeyboardOfTheUnitedStatesDoesNotHaveHasNoKey) {
  for (const char32_t character : {U'\0', U'\r', U'\x7f', U'ä', U'€', U'\U0001F600'}) {
    EXPECT_EQ(keyOfCharacter(character), std::nullopt);
  }
  for (const hid::Usage usage : {hid::Usage{3}, hid::Usage{41}, hid::Usage{50}, hid::Usage{100}, hid::leftShift}) {
    EXPECT_EQ(characterOfKey(usage, false), std::nullopt) << usage;
  }
}

TEST(TypedTextTest, TheNumberPadTypesItsDigitsWithAndWithoutShift) {
  for (const bool isShifted : {false, true}) {
    EXPECT_EQ(characterOfKey(89, isShifted), '1');
    EXPECT_EQ(characterOfKey(98, isShifted), '0');
    EXPECT_EQ(characterOfKey(84, isShifted), '/');
  }
}

TEST(TypedTextTest, ATextIsTypedUnderOnePressOfShiftForCharactersInARow) {
  const TypedText typed = typedText("aBC!d", 15);
  EXPECT_EQ(eventLines(typed.events),
            (std::vector<std::string>{"Key Press A", "Key Release A", "Key Press Left Shift", "Key Press B",
                                      "Key Release B", "Key Press C", "Key Release C", "Key Press 1", "Key Release 1",
                                      "Key Release Left Shift", "Key Press D", "Key Release D"}));
  EXPECT_EQ(typed.cannotBeTyped, "");
  for (const PropertyList& event : typed.events) {
    EXPECT_TRUE(isMacroEvent(event));
    EXPECT_EQ(event["delay"], PropertyList(15));
  }
  EXPECT_TRUE(pressedAtEnd(typedText("ABC", 15).events).empty());
}

TEST(TypedTextTest, LineBreaksOfEitherKindAreReturn) {
  EXPECT_EQ(typedText("a\r\nb", 5).events, typedText("a\nb", 5).events);
  EXPECT_EQ(eventLines(typedText("\n", 5).events),
            (std::vector<std::string>{"Key Press Return", "Key Release Return"}));
}

TEST(TypedTextTest, WhatCannotBeTypedIsToldOnceEach) {
  const TypedText typed = typedText(
      "Gr\xC3\xBC\xC3\x9F"
      "e, \xC3\xBC"
      "ber \xE2\x82\xAC",
      5);
  EXPECT_EQ(typed.cannotBeTyped, "\xC3\xBC\xC3\x9F\xE2\x82\xAC");
  EXPECT_EQ(typed.events, typedText("Gre, ber ", 5).events);
  EXPECT_TRUE(typedText("", 5).events.empty());
}

}  // namespace
}  // namespace vorn::test
