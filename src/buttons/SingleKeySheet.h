// Asks for the key that a control is to send. Main thread.
#pragma once

#include <memory>

#include "buttons/AssignmentSheet.h"

namespace skarn {

namespace Ui {
class SingleKeySheet;
}

class SingleKeySheet : public AssignmentSheet {
  Q_OBJECT

 public:
  explicit SingleKeySheet(QWidget* window);
  ~SingleKeySheet() override;

  // Opens with an empty key field; OK waits for the first key.
  void begin(const QString& controlName);
  void showKey(const QString& key);
  // Whether a reported key (usage; 0 for modifiers alone) is meant for the control, and not for this sheet's buttons.
  bool takesKey(int key) const;

 private:
  std::unique_ptr<Ui::SingleKeySheet> mUi;
};

}  // namespace skarn
