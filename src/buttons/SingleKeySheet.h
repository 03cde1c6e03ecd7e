// Asks for the key that a control is to send. The keys themselves are reported by the engine, not by this window's
// events. Main thread.
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

 private:
  void setOKEnabled(bool enabled);

  std::unique_ptr<Ui::SingleKeySheet> mUi;
};

}  // namespace skarn
