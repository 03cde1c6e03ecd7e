#include "macros/TrialField.h"

#include <QKeyEvent>
#include <algorithm>
#include <array>

#include "model/MacroEdits.h"
#include "model/SettingsKeys.h"
#include "model/TypedText.h"

namespace skarn {

namespace hid = vorn::hid;

namespace {

struct EditingKey {
  hid::Usage usage = 0;
  int key = 0;
};
// Those that move the cursor or remove text.
constexpr std::array<EditingKey, 10> editingKeys = {{{42, Qt::Key_Backspace},
                                                     {74, Qt::Key_Home},
                                                     {75, Qt::Key_PageUp},
                                                     {76, Qt::Key_Delete},
                                                     {77, Qt::Key_End},
                                                     {78, Qt::Key_PageDown},
                                                     {hid::rightArrow, Qt::Key_Right},
                                                     {hid::leftArrow, Qt::Key_Left},
                                                     {hid::downArrow, Qt::Key_Down},
                                                     {hid::upArrow, Qt::Key_Up}}};

}  // namespace

TrialField::TrialField(QWidget* parent) : QPlainTextEdit(parent) {
  setContextMenuPolicy(Qt::NoContextMenu);
  setUndoRedoEnabled(false);
}

void TrialField::begin() {
  mHeldModifiers.clear();
  clear();
}

bool TrialField::isHeld(std::initializer_list<hid::Usage> usages) const {
  return std::ranges::any_of(usages, [this](hid::Usage usage) { return mHeldModifiers.contains(usage); });
}

void TrialField::play(const vorn::PropertyList& event) {
  const auto [page, usage] = vorn::usageOfEvent(event);
  if (page != hid::keyboardPage) return;
  const bool isPress = event[vorn::keys::Command].toInt() == 1;
  if (usage >= hid::firstModifier) {
    if (isPress) {
      mHeldModifiers.insert(usage);
    } else {
      mHeldModifiers.erase(usage);
    }
  } else if (isPress && !isHeld({hid::leftControl, hid::rightControl, hid::leftAlt, hid::rightAlt, hid::leftCommand,
                                 hid::rightCommand})) {
    type(usage);
  }
}

void TrialField::type(hid::Usage usage) {
  const bool isShifted = isHeld({hid::leftShift, hid::rightShift});
  if (const auto character = vorn::characterOfKey(usage, isShifted)) {
    insertPlainText(QString(QLatin1Char(*character)));
    return;
  }
  const auto* const editing = std::ranges::find(editingKeys, usage, &EditingKey::usage);
  if (editing == editingKeys.end()) return;
  // To the field alone, past whatever watches the events of the program.
  QKeyEvent press(QEvent::KeyPress, editing->key, isShifted ? Qt::ShiftModifier : Qt::NoModifier);
  keyPressEvent(&press);
}

}  // namespace skarn
