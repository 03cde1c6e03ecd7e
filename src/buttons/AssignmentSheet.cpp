#include "buttons/AssignmentSheet.h"

#include <QLabel>
#include <QPushButton>

#include "widgets/SheetFlags.h"

namespace skarn {

AssignmentSheet::AssignmentSheet(QWidget* window) : QDialog(window, sheetFlags) {}

void AssignmentSheet::connectButtons(QPushButton* ok, QPushButton* cancel, QLabel* note) {
  mOK = ok;
  mNote = note;
  connect(ok, &QPushButton::clicked, this, &QDialog::accept);
  connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
}

void AssignmentSheet::explainOK(const QString& words) {
  mOK->setToolTip(words);
  if (mNote != nullptr) mNote->setText(words);
}

}  // namespace skarn
