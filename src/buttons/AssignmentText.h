// What the assignment records of the current profile say, in the words of the Buttons tab. The same words are the
// titles of a control's menu and the label of its present assignment, and an assignment is found in its menu by
// comparing the two, so each text is made in exactly one place.
//
// "button" is a control's identifier, "forGroupType" 1 for "Keys" and 2 for "Buttons" (ControlTable.h); any other group
// type reads nothing. Records are read as they come: a missing one has the command 0, a wrong type reads as 0 or as an
// empty text. Main thread.
#pragma once

#include <QString>
#include <QStringList>
#include <array>
#include <string_view>
#include <unordered_map>

#include "model/PropertyList.h"
#include "model/SettingsKeys.h"

namespace skarn {

// The items that each control's menu offers, in their order.
enum class AssignmentCategory { DefaultKey, SingleKey, Macro, Keymap, MouseButton, Profile, LaunchProgram, Disable };
inline constexpr std::array<AssignmentCategory, 8> assignmentCategories = {
    AssignmentCategory::DefaultKey,    AssignmentCategory::SingleKey,   AssignmentCategory::Macro,
    AssignmentCategory::Keymap,        AssignmentCategory::MouseButton, AssignmentCategory::Profile,
    AssignmentCategory::LaunchProgram, AssignmentCategory::Disable};

// The mouse-button functions by the tag of their menu item, and the keymaps by their number: keys of their names.
inline constexpr std::array<const char*, 8> mouseButtonNameKeys = {
    "lkeyLeftClick",       "lkeyRightClick",  "lkeyMouseButtonThree", "lkeyMouseButtonFour",
    "lkeyMouseButtonFive", "lkeyDoubleClick", "lkeyScrollUp",         "lkeyScrollDown"};
inline constexpr std::array<const char*, vorn::keys::keymapCount> keymapNameKeys = {
    "lkeyKeymapOne",  "lkeyKeymapTwo", "lkeyKeymapThree", "lkeyKeymapFour",
    "lkeyKeymapFive", "lkeyKeymapSix", "lkeyKeymapSeven", "lkeyKeymapEight"};
inline constexpr const char* keymapCycleNameKey = "lkeyKeymapsCycle";

// The item of a direction-pad control that stands before the others, and every text without a default.
inline constexpr const char* plainDefaultTitle = "(Default)";

// Repeat modes of a macro that are a number of runs; for the open-ended ones see Assignments.h.
inline constexpr int playOnce = 1;
inline constexpr int mostRuns = 10;

class AssignmentText {
 public:
  virtual ~AssignmentText() = default;
  AssignmentText(const AssignmentText&) = delete;
  AssignmentText& operator=(const AssignmentText&) = delete;

  const vorn::PropertyList& mAllProfiles() const { return allProfiles; }
  void setMAllProfiles(const vorn::PropertyList& profiles) { allProfiles = profiles; }
  const vorn::PropertyList& mAllMacros() const { return allMacros; }
  void setMAllMacros(const vorn::PropertyList& macros) { allMacros = macros; }
  const vorn::PropertyList& mDefaultDict() const { return defaultDict; }
  void setMDefaultDict(const vorn::PropertyList& defaultSettings) { defaultDict = defaultSettings; }

  // --- What a record holds; empty when its command is another one. The first three also set the separator that the
  // labels put after their category: ":" when there is a text, otherwise nothing. The others bring ": " with them.
  QString getHIDCodeAtButton(std::string_view button, int forGroupType);
  // Also shows the control's repeat button. Empty without any macros.
  QString getMacroAssignedAtButton(std::string_view button, int forGroupType);
  // These three are empty without any profiles.
  QString getProfileAssignedAtButton(std::string_view button, int forGroupType);
  QString getKeyMapAssignedAtButton(std::string_view button, int forGroupType);
  QString getMouseButtonAssignedAtButton(std::string_view button, int forGroupType);
  QString getApplicationNameAssignedAtButton(std::string_view button, int forGroupType);

  // --- Single words
  // Mouse button 5 reads as the double click. Empty for a command that is no function of a mouse button.
  QString stringForMouseButtonValue(int command);
  // Null for a value that is neither 0 to 7 nor 255.
  QString keymapStringValueForMapValue(int keymap);
  // The same of 0 to 7, empty for any other, with the name that the keymap has been given: "Keymap 3 – Build".
  static QString namedKeymap(int keymap, const vorn::PropertyList& profile);
  // In the profile that is shown.
  QString namedKeymap(int keymap) const { return namedKeymap(keymap, mShownProfile); }
  // What the control does by default, with a blank behind it; "(Default)" when that has no text.
  QString getDefaultKeyForButton(std::string_view button, int forGroupType);
  QString getStringForMouseButtonDefault(std::string_view button);
  // In English in every language: "Play Macro Once", "Repeat 2 Times", ... A mode that is none plays once.
  static QString getMacroRepeatOptionUsingValue(int mode);

  // --- Labels
  QString titleOfCategory(AssignmentCategory category, std::string_view button, int forGroupType);
  // Of the control's record, whose command is given. Empty for a command without a label.
  QString stringForButtonValue(int command, std::string_view atButton, int forGroupType);
  // Fewer words for the label of a key with modifiers, the longer first: "Single Key : Ctrl+K", "Ctrl+K". None for any
  // other assignment.
  QStringList shorterLabels(std::string_view button, int forGroupType);
  // Whether the control does what it does out of the box; so does one without a record.
  bool isDefaultAt(std::string_view button, int forGroupType) const;
  // The same of any record of the control.
  bool isDefault(const vorn::PropertyList& record, std::string_view button, int forGroupType) const;
  // The whole label that a mouse button's function has.
  QString mouseButtonLabel(int command);
  // The command that a menu title stands for; 0 for none. A mouse-button title means the left click.
  int intValueOfSelectedString(const QString& title, std::string_view atButton, int forGroupType);

  // The command of a mouse-button item; 0 for a tag above 7 or below 0.
  static int mouseButtonMappingValueForTagValue(int tag);
  // The tag of the submenu's item that stands for the control's record: the place of its function among those of a
  // mouse button, 0 for the next keymap, or its target counted from 1. -1 when the record is of another category.
  int tagOfAssignment(AssignmentCategory submenu, std::string_view button, int forGroupType) const;
  // The record's second parameter: the repeat mode of a macro, or whether a keymap switches back.
  int optionOfAssignment(std::string_view button, int forGroupType) const;
  // Whether the control is one of the eight directions of the direction pad.
  static bool checkForDiagonals(std::string_view button);

  // The profile and macro lists' names.
  QString profileName(int index) const;
  QString macroName(int index) const;

  const QString& mSingleKeyNameColon() const { return singleKeyNameColon; }
  const QString& mMacroNameColon() const { return macroNameColon; }
  const QString& mProfileNameColon() const { return profileNameColon; }
  const QString& mDefaultName() const { return defaultName; }

 protected:
  AssignmentText() = default;

  // Shows the repeat button of the control with this identifier, or with "700" to "702" for the wheel's controls.
  virtual void updateMacroRepeatButton(std::string_view button) = 0;

  const vorn::PropertyList& recordAt(std::string_view button, int forGroupType) const;
  int commandAt(std::string_view button, int forGroupType) const;
  // Of the default profile; groupKey is "Keys" or "Buttons".
  const vorn::PropertyList& defaultRecord(std::string_view groupKey, std::string_view button) const;

  // The word of a key; looked up once until the words are forgotten.
  const QString& word(const char* key);
  void forgetWords() { mWords.clear(); }

  vorn::PropertyList allProfiles = vorn::PropertyList::array();
  vorn::PropertyList allMacros = vorn::PropertyList::array();
  vorn::PropertyList defaultDict = vorn::PropertyList::dictionary();
  vorn::PropertyList mShownProfile;
  vorn::PropertyList mKeysDict;
  vorn::PropertyList mButtonsDict;

 private:
  QString separatedLabel(const char* categoryKey, const QString& separator, const QString& target);

  std::unordered_map<const char*, QString> mWords;  // by the address of the key
  QString singleKeyNameColon;
  QString macroNameColon;
  QString profileNameColon;
  QString defaultName;
};

// The number that an identifier spells; 0 for none.
int numberOfIdentifier(std::string_view button);

}  // namespace skarn
