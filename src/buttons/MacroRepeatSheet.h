// Asks how often a control plays its macro. Main thread.
#pragma once

#include <QStringList>
#include <memory>

#include "buttons/AssignmentSheet.h"

namespace skarn {

namespace Ui {
class MacroRepeatSheet;
}

class MacroRepeatSheet : public AssignmentSheet {
  Q_OBJECT

 public:
  explicit MacroRepeatSheet(QWidget* window);
  ~MacroRepeatSheet() override;

  void begin(const QString& controlName, const QString& macroName);

  void setModes(const QStringList& titles);
  // The first item with this title; none where there is no such item.
  void selectMode(const QString& title);
  int selectedMode() const;  // index; -1 for none
  void showCurrentMode(const QString& text);

 signals:
  void modeChosen();  // by the user

 private:
  std::unique_ptr<Ui::MacroRepeatSheet> mUi;
};

}  // namespace skarn
