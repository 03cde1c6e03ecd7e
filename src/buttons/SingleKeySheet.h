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

 signals:
  // From the list of all keys: its usage, and the modifiers held with it as in a keyboard report.
  void keyChosen(int usage, int modifiers);

 private:
  std::unique_ptr<Ui::SingleKeySheet> mUi;
};

}  // namespace skarn
