// Asks for the key that a control is to send. The keys themselves are reported by the engine, not by this window's
// events, but a pressed key comes as an event too. So the key field swallows every key but Escape: Return, Tab and
// Space can be assigned as any other. Once a key is shown and let go, the keyboard goes on to OK; from there on the
// keys that work buttons do that, and any other takes the place of the one shown. Main thread.
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

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void setOKEnabled(bool enabled);
  // To OK, when the field has seen a key go down and up and a key is shown: the two come in either order.
  void moveOn();

  std::unique_ptr<Ui::SingleKeySheet> mUi;
  // Since the field was reached.
  bool mIsKeyDown = false;
  bool mIsKeyLetGo = false;
};

}  // namespace skarn
