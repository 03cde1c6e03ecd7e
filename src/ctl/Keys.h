// Keys of a keyboard, as they are named on the command line.
#pragma once

#include <optional>
#include <string>

#include "ctl/Failure.h"
#include "ctl/Names.h"
#include "model/HidUsages.h"

namespace vorn::ctl {

// By the names that the configurator shows ("Left Shift", "F5", "Page Up"); hyphens may stand for blanks, upper and
// lower case are the same. Also "usage:N" for keyboard usage N, 4 to 231.
std::optional<hid::Usage> keyUsage(const std::string& name);

// As keyUsage, but modifiers only, and also by the names that keyboards of other systems give them ("ctrl", "cmd",
// "super", "option"). Without a side ("Control", "Shift") it is the left one.
std::optional<hid::Usage> modifierUsage(const std::string& name);
// "Control", "Right Control" and so on.
Names modifierNames();
// The bit of a modifier in the modifier byte of a keyboard report.
std::int32_t modifierBit(hid::Usage modifier);

// A key and the modifiers that are held with it.
struct Chord {
  hid::Usage usage = 0;  // 0 for modifiers alone, which are always told as such
  std::int32_t modifiers = 0;
  friend bool operator==(const Chord&, const Chord&) = default;
};
// A key by its name alone, or behind modifiers that are joined by plus signs: "F5", "ctrl+shift+k", "Control+Numpad +".
Result<Chord> chordNamed(const std::string& word);

// The name by which keyUsage finds the key; "usage:N" where it has none.
std::string keyWord(hid::Usage usage);
// Those of all keys that have a name.
Names keyWords();
// The chord as chordNamed reads it.
std::string chordWord(std::int64_t usage, std::int64_t modifiers);

}  // namespace vorn::ctl
