// The field in which a macro is tried: it types what the events type, and what they do reaches nothing else. Keys with
// Control, Alt or Command held type nothing. Main thread.
#pragma once

#include <QPlainTextEdit>
#include <set>

#include "model/KernelKeys.h"
#include "model/PropertyList.h"

namespace skarn {

class TrialField : public QPlainTextEdit {
 public:
  explicit TrialField(QWidget* parent = nullptr);

  // One event of a macro. Its delay is the caller's.
  void play(const vorn::PropertyList& event);
  // Empties the field and lets go of everything.
  void begin();

 private:
  bool isHeld(std::initializer_list<vorn::hid::Usage> usages) const;
  void type(vorn::hid::Usage usage);

  std::set<vorn::hid::Usage> mHeldModifiers;
};

}  // namespace skarn
