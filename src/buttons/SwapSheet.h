// Asks with which other control a control changes places. Main thread.
#pragma once

#include <QStringList>
#include <memory>
#include <vector>

#include "buttons/AssignmentSheet.h"

namespace skarn {

namespace Ui {
class SwapSheet;
}

class SwapSheet : public AssignmentSheet {
  Q_OBJECT

 public:
  explicit SwapSheet(QWidget* window);
  ~SwapSheet() override;

  struct Choice {
    int number;  // of the control
    QString title;
  };
  // Opens with the control of this number selected, of the first one where there is none.
  void begin(const QString& subject, const std::vector<Choice>& choices, int selected);
  // New words for what is open; the selected control stays. choices: as many, in the same order.
  void describe(const QString& subject, const std::vector<Choice>& choices);
  int selectedNumber() const;
  // Why the two cannot be swapped; empty when they can.
  void setProblem(const QString& problem);

 signals:
  void controlChosen();

 private:
  std::unique_ptr<Ui::SwapSheet> mUi;
};

}  // namespace skarn
