#include "buttons/AssignmentSheet.h"

#include <QPushButton>

#include "widgets/SheetFlags.h"

namespace skarn {

AssignmentSheet::AssignmentSheet(QWidget* window) : QDialog(window, sheetFlags) {}

void AssignmentSheet::connectButtons(QPushButton* ok, QPushButton* cancel) {
  mOK = ok;
  connect(ok, &QPushButton::clicked, this, &QDialog::accept);
  connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
}

void AssignmentSheet::explainOK(const QString& words) {
  mOK->setToolTip(words);
}

}  // namespace skarn
