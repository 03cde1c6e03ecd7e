// Asks for a text whose keys are to be added to a macro. What cannot be typed is told, and nothing is added as long as
// it stands in the text. Main thread.
#pragma once

#include <QDialog>
#include <memory>

#include "model/TypedText.h"

namespace skarn {

namespace Ui {
class MacroTextSheet;
}

class MacroTextSheet : public QDialog {
  Q_OBJECT

 public:
  // A sheet of the window that deletes itself. delay: proposed before each event, in milliseconds; text: proposed.
  MacroTextSheet(QWidget* window, int delay, const QString& text);
  ~MacroTextSheet() override;

  void accept() override;

 signals:
  void confirmed(const vorn::MacroEventList& events);
  void editRefused();  // of the delay

 private:
  void read();
  QString whyNot() const;

  std::unique_ptr<Ui::MacroTextSheet> mUi;
  vorn::TypedText mTyped;
};

}  // namespace skarn
