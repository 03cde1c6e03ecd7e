// The 27 programmable controls of the mouse. Whatever is done for each of them is done by walking this table; names
// with a given spelling, also a wrong one, are kept.
//
// Two numberings of the two groups of assignments meet here. They are opposite to each other and must not be mixed:
//   group type        1 = "Keys", 2 = "Buttons"    of whatever reads a record
//   group identifier  1 = "Buttons", 2 = "Keys"    of whatever writes a record
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "model/Assignments.h"
#include "model/SettingsKeys.h"

namespace skarn {

inline constexpr int keysGroupType = 1;
inline constexpr int buttonsGroupType = 2;
inline constexpr int buttonsGroupIdentifier = 1;
inline constexpr int keysGroupIdentifier = 2;

enum class ControlFamily : std::uint8_t { ThumbGrid, Wheel, DirectionPad };

struct ControlDescriptor {
  int ordinal;                    // 1 to 27, as printed on the mouse
  const char* fieldName;          // of the control itself; its label is named this and "Label"
  const char* actionName;         // choosing one of its top-level items
  const char* submenuStem;        // with MacroMenuSelector, KeymapMenuSelector, MouseButtonMenuSelector
  const char* profileActionStem;  // with ProfileMenuSelector
  const char* identifier;         // key of its record in "Keys" or "Buttons"
  int groupType;                  // of its readers
  int groupIdentifier;            // of its writers
  const char* repeatButton;       // its macro-repeat button
  int repeatCode;                 // what names the repeat button: the identifier's number, or 700 to 702
  const char* directionPicture;   // of the direction-pad entry; nullptr elsewhere
  const char* nameKey;            // text key of what it sends by default, in the user's words
  ControlFamily family;

  constexpr std::string_view groupKey() const {
    return groupType == keysGroupType ? vorn::keys::Keys : vorn::keys::Buttons;
  }
};

// A writer takes every group identifier but that of the buttons for the keys; where that will not do it asks first.
constexpr bool isGroupIdentifier(int identifier) {
  return identifier == buttonsGroupIdentifier || identifier == keysGroupIdentifier;
}
constexpr std::string_view groupKeyOf(int groupIdentifier) {
  return groupIdentifier == buttonsGroupIdentifier ? vorn::keys::Buttons : vorn::keys::Keys;
}

namespace detail {

constexpr int numberOf(std::string_view digits) {
  int number = 0;
  for (const char digit : digits) number = number * 10 + (digit - '0');
  return number;
}

}  // namespace detail

// A row of the table. NAME is the ordinal as a word; the profile action has a stem of its own.
#define SKARN_KEY(ordinal, NAME, nameKey, stem, profileStem, identifier, picture, family)                            \
  {                                                                                                                  \
    ordinal, "mButton" NAME, "selectButton" NAME "Value", stem, profileStem, identifier, keysGroupType,              \
        keysGroupIdentifier, "mMacroRepeatConfigButton" NAME, detail::numberOf(identifier), picture, nameKey, family \
  }
#define SKARN_BUTTON(ordinal, NAME, nameKey, stem, identifier, repeatCode)                                          \
  {                                                                                                                 \
    ordinal, "mButton" NAME, "selectButton" NAME "Value", stem, stem, identifier.data(), buttonsGroupType,          \
        buttonsGroupIdentifier, "mMacroRepeatConfigButton" NAME, repeatCode, nullptr, nameKey, ControlFamily::Wheel \
  }

// clang-format off
inline constexpr std::array<ControlDescriptor, 27> controlTable = {{
    SKARN_KEY(1, "One", "lkeyControlOne", "buttonOne", "buttonOne", "43", nullptr, ControlFamily::ThumbGrid),
    SKARN_KEY(2, "Two", "lkeyControlTwo", "buttonTwo", "buttonTwo", "20", nullptr, ControlFamily::ThumbGrid),
    SKARN_KEY(3, "Three", "lkeyControlThree", "buttonThree", "buttonThree", "26", nullptr, ControlFamily::ThumbGrid),
    SKARN_KEY(4, "Four", "lkeyControlFour", "buttonFour", "buttonFour", "8", nullptr, ControlFamily::ThumbGrid),
    SKARN_KEY(5, "Five", "lkeyControlFive", "buttonFive", "buttonFive", "21", nullptr, ControlFamily::ThumbGrid),
    SKARN_KEY(6, "Six", "lkeyControlSix", "buttonSix", "buttonSix", "57", nullptr, ControlFamily::ThumbGrid),
    SKARN_KEY(7, "Seven", "lkeyControlSeven", "buttonSeven", "buttonSeven", "4", nullptr, ControlFamily::ThumbGrid),
    SKARN_KEY(8, "Eight", "lkeyControlEight", "buttonEight", "buttonEight", "22", nullptr, ControlFamily::ThumbGrid),
    SKARN_KEY(9, "Nine", "lkeyControlNine", "buttonNine", "buttonNine", "7", nullptr, ControlFamily::ThumbGrid),
    SKARN_KEY(10, "Ten", "lkeyControlTen", "buttonTen", "buttonTen", "9", nullptr, ControlFamily::ThumbGrid),
    SKARN_KEY(11, "Eleven", "lkeyControlEleven",
              "buttonEleven", "buttonEleven", "225", nullptr, ControlFamily::ThumbGrid),
    SKARN_KEY(12, "Twelve", "lkeyControlTwelve",
              "buttonTwelve", "buttonTwelve", "29", nullptr, ControlFamily::ThumbGrid),
    SKARN_KEY(13, "Thirteen", "lkeyControlThirteen",
              "buttonThirteen", "buttonThirten", "27", nullptr, ControlFamily::ThumbGrid),
    SKARN_KEY(14, "Fourteen", "lkeyControlFourteen",
              "buttonFourteen", "buttonFourten", "6", nullptr, ControlFamily::ThumbGrid),
    SKARN_KEY(15, "Fifteen", "lkeyControlFifteen",
              "ThumbGridOne", "ThumbGridOne", "44", nullptr, ControlFamily::ThumbGrid),
    SKARN_KEY(16, "Sixteen", "lkeyControlSixteen",
              "ThumbGridTwo", "ThumbGridTwo", "226", nullptr, ControlFamily::ThumbGrid),
    SKARN_BUTTON(17, "Seventeen", "lkeyControlSeventeen", "ThumbGridThree", vorn::wheelButton, 700),
    SKARN_BUTTON(18, "Eighteen", "lkeyControlEighteen", "ThumbGridFour", vorn::wheelUp, 701),
    SKARN_BUTTON(19, "Nineteen", "lkeyControlNineteen", "ThumbGridFive", vorn::wheelDown, 702),
    SKARN_KEY(20, "Twenty", "lkeyControlTwenty",
              "ThumbGridSix", "ThumbGridSix", "82", "arrow2.png", ControlFamily::DirectionPad),
    SKARN_KEY(21, "TwentyOne", "lkeyControlTwentyOne",
              "ThumbGridSeven", "ThumbGridSeven", "233", "arrow3.png", ControlFamily::DirectionPad),
    SKARN_KEY(22, "TwentyTwo", "lkeyControlTwentyTwo",
              "ThumbGridEight", "ThumbGridEight", "79", "arrow5.png", ControlFamily::DirectionPad),
    SKARN_KEY(23, "TwentyThree", "lkeyControlTwentyThree",
              "ThumbGridNine", "ThumbGridNine", "235", "arrow8.png", ControlFamily::DirectionPad),
    SKARN_KEY(24, "TwentyFour", "lkeyControlTwentyFour",
              "ThumbGridTen", "ThumbGridTen", "81", "arrow7.png", ControlFamily::DirectionPad),
    SKARN_KEY(25, "TwentyFive", "lkeyControlTwentyFive",
              "ThumbGridEleven", "ThumbGridEleven", "234", "arrow6.png", ControlFamily::DirectionPad),
    SKARN_KEY(26, "TwentySix", "lkeyControlTwentySix",
              "ThumbGridTwelve", "ThumbGridTwelve", "80", "arrow4.png", ControlFamily::DirectionPad),
    SKARN_KEY(27, "TwentySeven", "lkeyControlTwentySeven",
              "ThumbGridThirteen", "ThumbGridThirteen", "232", "arrow1.png", ControlFamily::DirectionPad),
}};
// clang-format on

#undef SKARN_KEY
#undef SKARN_BUTTON

}  // namespace skarn
