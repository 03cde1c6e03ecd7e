// The 27 controls of the mouse, as they are named on the command line.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

#include "model/Assignments.h"
#include "model/PropertyList.h"
#include "model/SettingsKeys.h"

namespace vorn::ctl {

struct Control {
  int number;                   // 1 to 27, as printed on the mouse
  std::string_view identifier;  // key of its record
  std::string_view name;        // of what it sends from the factory; that of its key where it is one
  bool isButton;                // in "Buttons", else in "Keys"

  std::string_view group() const { return isButton ? keys::Buttons : keys::Keys; }
  // A direction of the wheel is never held down.
  bool isWheelTurn() const { return identifier == wheelUp || identifier == wheelDown; }
  bool isDirectionPad() const { return number >= 20; }
  std::int64_t code() const { return PropertyList(identifier).toInt64(); }
};

extern const std::array<Control, 27> controls;

// The control with this number (1 to 27), identifier ("id:20"; also plain where it is no number of a control, "233",
// "03") or name ("Tab", "Caps Lock", "wheel-up"; upper and lower case, blanks and hyphens are the same).
const Control* controlNamed(std::string_view word);

// Whether both are the same but for upper and lower case and blanks written as hyphens.
bool isSameWord(std::string_view left, std::string_view right);

}  // namespace vorn::ctl
