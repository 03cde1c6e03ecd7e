#include "buttons/AssignmentSheet.h"

#include <QPushButton>

#include "widgets/SheetFlags.h"

namespace skarn {

AssignmentSheet::AssignmentSheet(QWidget* window) : QDialog(window, sheetFlags) {}

void AssignmentSheet::connectButtons(QPushButton* ok, QPushButton* cancel) {
  connect(ok, &QPushButton::clicked, this, &QDialog::accept);
  connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
}

}  // namespace skarn
