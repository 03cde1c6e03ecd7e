#include "model/TypedText.h"

#include <algorithm>
#include <array>

#include "model/Utf8.h"

namespace vorn {

namespace {

struct CharacterPair {
  hid::Usage usage = 0;
  char plain = 0;
  char shifted = 0;  // 0: the same
};

constexpr std::array<CharacterPair, 24> furtherKeys = {
    {{30, '1', '!'}, {31, '2', '@'},  {32, '3', '#'}, {33, '4', '$'}, {34, '5', '%'}, {35, '6', '^'},
     {36, '7', '&'}, {37, '8', '*'},  {38, '9', '('}, {39, '0', ')'}, {40, '\n', 0},  {43, '\t', 0},
     {44, ' ', 0},   {45, '-', '_'},  {46, '=', '+'}, {47, '[', '{'}, {48, ']', '}'}, {49, '\\', '|'},
     {51, ';', ':'}, {52, '\'', '"'}, {53, '`', '~'}, {54, ',', '<'}, {55, '.', '>'}, {56, '/', '?'}}};

// 84 to 99, which type the same with Shift.
constexpr std::string_view numberPad = "/*-+\n1234567890.";
constexpr hid::Usage firstOfNumberPad = 84;

constexpr std::array<bool, 2> shiftStates = {false, true};

char characterOf(const CharacterPair& pair, bool isShifted) {
  return isShifted && pair.shifted != 0 ? pair.shifted : pair.plain;
}

}  // namespace

std::optional<CharacterKey> keyOfCharacter(char32_t character) noexcept {
  for (const bool isShifted : shiftStates) {
    const char32_t first = isShifted ? U'A' : U'a';
    if (character >= first && character < first + 26)
      return CharacterKey{static_cast<hid::Usage>(hid::firstKey + (character - first)), isShifted};
    const auto* const found = std::ranges::find_if(furtherKeys, [&](const CharacterPair& pair) {
      return static_cast<char32_t>(characterOf(pair, isShifted)) == character;
    });
    if (found != furtherKeys.end()) return CharacterKey{found->usage, isShifted};
  }
  return std::nullopt;
}

std::optional<char> characterOfKey(hid::Usage usage, bool isShifted) noexcept {
  if (usage >= hid::firstKey && usage < hid::firstKey + 26)
    return static_cast<char>((isShifted ? 'A' : 'a') + (usage - hid::firstKey));
  if (usage >= firstOfNumberPad && usage < firstOfNumberPad + numberPad.size())
    return numberPad[static_cast<std::size_t>(usage - firstOfNumberPad)];
  const auto* const found = std::ranges::find(furtherKeys, usage, &CharacterPair::usage);
  if (found == furtherKeys.end()) return std::nullopt;
  return characterOf(*found, isShifted);
}

TypedText typedText(std::string_view text, std::int64_t delay) {
  constexpr HidUsage shift{hid::keyboardPage, hid::leftShift};
  TypedText typed;
  bool isShiftHeld = false;
  const auto holdShift = [&](bool isWanted) {
    if (isWanted == isShiftHeld) return;
    typed.events.push_back(macroEvent(isWanted, delay, shift));
    isShiftHeld = isWanted;
  };
  for (std::size_t at = 0; at < text.size();) {
    const Utf8Character character = firstCharacter(text.substr(at));
    const std::string_view bytes = text.substr(at, character.length);
    at += character.length;
    if (bytes == "\r" && at < text.size() && text[at] == '\n') continue;
    const auto key = keyOfCharacter(character.code);
    if (!key) {
      if (typed.cannotBeTyped.find(bytes) == std::string::npos) typed.cannotBeTyped += bytes;
      continue;
    }
    holdShift(key->isShifted);
    const MacroEventList pressed = stroke({hid::keyboardPage, key->usage}, delay);
    typed.events.insert(typed.events.end(), pressed.begin(), pressed.end());
  }
  holdShift(false);
  return typed;
}

}  // namespace vorn
