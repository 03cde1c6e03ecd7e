// Asks which keymap a control switches to, and whether it switches back when it is let go. Main thread.
#pragma once

#include <QStringList>
#include <memory>

#include "buttons/AssignmentSheet.h"

namespace skarn {

namespace Ui {
class KeymapSheet;
}

class KeymapSheet : public AssignmentSheet {
  Q_OBJECT

 public:
  explicit KeymapSheet(QWidget* window);
  ~KeymapSheet() override;

  void begin(const QString& controlName);

  // What the keymaps are called in the pop-up.
  void setKeymapNames(const QStringList& names);

  // The pop-up: the item with the tag 0 is the cycle, that with the tag t the keymap t - 1. Selecting sends no signal;
  // an index out of range selects the first item.
  void selectTarget(int index);
  int tagOfSelectedTarget() const;

  bool isSwitchBack() const;
  void setSwitchBack(bool on);
  void setSwitchBackEnabled(bool enabled, const QString& whyNot);

 signals:
  void targetChosen();  // by the user
  void switchBackToggled();

 private:
  std::unique_ptr<Ui::KeymapSheet> mUi;
};

}  // namespace skarn
