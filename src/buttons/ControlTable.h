// What the Buttons tab adds to the controls of the mouse: names of fields and actions, pictures and texts. Whatever is
// done for each control is done by walking this table; names with a given spelling, also a wrong one, are kept.
//
// Two numberings of the two groups of assignments meet here. They are opposite to each other and must not be mixed:
//   group type        1 = "Keys", 2 = "Buttons"    of whatever reads a record
//   group identifier  1 = "Buttons", 2 = "Keys"    of whatever writes a record
#pragma once

#include <array>
#include <string_view>

#include "model/Controls.h"
#include "platform/AssignmentWords.h"

namespace skarn {

inline constexpr int keysGroupType = 1;
inline constexpr int buttonsGroupType = 2;
inline constexpr int buttonsGroupIdentifier = 1;
inline constexpr int keysGroupIdentifier = 2;

using vorn::ControlFamily;

struct ControlDescriptor : vorn::Control {
  const char* fieldName;          // of the control itself; its label is named this and "Label"
  const char* actionName;         // choosing one of its top-level items
  const char* submenuStem;        // with MacroMenuSelector, KeymapMenuSelector, MouseButtonMenuSelector
  const char* profileActionStem;  // with ProfileMenuSelector
  const char* repeatButton;       // its macro-repeat button
  int repeatCode;                 // what names the repeat button: the identifier's number, or 700 to 702
  const char* directionPicture;   // of the direction-pad entry; nullptr elsewhere
  const char* nameKey;            // text key of what it sends by default, in the user's words

  constexpr bool isButton() const { return group == vorn::keys::Buttons; }
  constexpr int groupType() const { return isButton() ? buttonsGroupType : keysGroupType; }
  constexpr int groupIdentifier() const { return isButton() ? buttonsGroupIdentifier : keysGroupIdentifier; }
};

// A writer takes every group identifier but that of the buttons for the keys; where that will not do it asks first.
constexpr bool isGroupIdentifier(int identifier) {
  return identifier == buttonsGroupIdentifier || identifier == keysGroupIdentifier;
}
constexpr std::string_view groupKeyOf(int groupIdentifier) {
  return groupIdentifier == buttonsGroupIdentifier ? vorn::keys::Buttons : vorn::keys::Keys;
}

// A row of the table. NAME is the number as a word; the profile action has a stem of its own.
#define SKARN_CONTROL(number, NAME, stem, profileStem, repeatCode, picture)                      \
  {                                                                                              \
    vorn::controls[number - 1], "mButton" NAME, "selectButton" NAME "Value", stem, profileStem,  \
        "mMacroRepeatConfigButton" NAME, repeatCode, picture, skarn::controlNameKeys[number - 1] \
  }
#define SKARN_KEY(number, NAME, stem, profileStem, picture) \
  SKARN_CONTROL(number, NAME, stem, profileStem, vorn::controls[number - 1].code(), picture)
#define SKARN_BUTTON(number, NAME, stem, repeatCode) SKARN_CONTROL(number, NAME, stem, stem, repeatCode, nullptr)

// clang-format off
inline constexpr std::array<ControlDescriptor, vorn::controls.size()> controlTable = {{
    SKARN_KEY(1, "One", "buttonOne", "buttonOne", nullptr),
    SKARN_KEY(2, "Two", "buttonTwo", "buttonTwo", nullptr),
    SKARN_KEY(3, "Three", "buttonThree", "buttonThree", nullptr),
    SKARN_KEY(4, "Four", "buttonFour", "buttonFour", nullptr),
    SKARN_KEY(5, "Five", "buttonFive", "buttonFive", nullptr),
    SKARN_KEY(6, "Six", "buttonSix", "buttonSix", nullptr),
    SKARN_KEY(7, "Seven", "buttonSeven", "buttonSeven", nullptr),
    SKARN_KEY(8, "Eight", "buttonEight", "buttonEight", nullptr),
    SKARN_KEY(9, "Nine", "buttonNine", "buttonNine", nullptr),
    SKARN_KEY(10, "Ten", "buttonTen", "buttonTen", nullptr),
    SKARN_KEY(11, "Eleven", "buttonEleven", "buttonEleven", nullptr),
    SKARN_KEY(12, "Twelve", "buttonTwelve", "buttonTwelve", nullptr),
    SKARN_KEY(13, "Thirteen", "buttonThirteen", "buttonThirten", nullptr),
    SKARN_KEY(14, "Fourteen", "buttonFourteen", "buttonFourten", nullptr),
    SKARN_KEY(15, "Fifteen", "ThumbGridOne", "ThumbGridOne", nullptr),
    SKARN_KEY(16, "Sixteen", "ThumbGridTwo", "ThumbGridTwo", nullptr),
    SKARN_BUTTON(17, "Seventeen", "ThumbGridThree", 700),
    SKARN_BUTTON(18, "Eighteen", "ThumbGridFour", 701),
    SKARN_BUTTON(19, "Nineteen", "ThumbGridFive", 702),
    SKARN_KEY(20, "Twenty", "ThumbGridSix", "ThumbGridSix", "arrow2.png"),
    SKARN_KEY(21, "TwentyOne", "ThumbGridSeven", "ThumbGridSeven", "arrow3.png"),
    SKARN_KEY(22, "TwentyTwo", "ThumbGridEight", "ThumbGridEight", "arrow5.png"),
    SKARN_KEY(23, "TwentyThree", "ThumbGridNine", "ThumbGridNine", "arrow8.png"),
    SKARN_KEY(24, "TwentyFour", "ThumbGridTen", "ThumbGridTen", "arrow7.png"),
    SKARN_KEY(25, "TwentyFive", "ThumbGridEleven", "ThumbGridEleven", "arrow6.png"),
    SKARN_KEY(26, "TwentySix", "ThumbGridTwelve", "ThumbGridTwelve", "arrow4.png"),
    SKARN_KEY(27, "TwentySeven", "ThumbGridThirteen", "ThumbGridThirteen", "arrow1.png"),
}};
// clang-format on

#undef SKARN_CONTROL
#undef SKARN_KEY
#undef SKARN_BUTTON

}  // namespace skarn
