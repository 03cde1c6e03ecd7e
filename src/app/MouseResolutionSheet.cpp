#include "app/MouseResolutionSheet.h"

#include <QPushButton>

#include "platform/Localization.h"
#include "protocol/Mice.h"
#include "ui_MouseResolutionSheet.h"
#include "widgets/SheetFlags.h"

namespace skarn {

MouseResolutionSheet::MouseResolutionSheet(QWidget* window, int resolution)
    : QDialog(window, sheetFlags), mUi(std::make_unique<Ui::MouseResolutionSheet>()) {
  mUi->setupUi(this);
  mUi->mResolutionField->setMaximum(vorn::mice::maximumResolution);
  mUi->mResolutionField->setValue(resolution);
  mUi->mResolutionField->selectAll();
  mUi->mResolutionField->setFocus();
  connect(mUi->mResolutionField, &QSpinBox::valueChanged, this, &MouseResolutionSheet::updateOK);
  connect(mUi->mResolutionOK, &QPushButton::clicked, this, &QDialog::accept);
  connect(mUi->mResolutionCancel, &QPushButton::clicked, this, &QDialog::reject);
  updateOK();
}

MouseResolutionSheet::~MouseResolutionSheet() = default;

int MouseResolutionSheet::resolution() const {
  return mUi->mResolutionField->value();
}

void MouseResolutionSheet::updateOK() {
  // The present one may still be what the system guessed: told by the person, it stays.
  const bool isPossible = resolution() == 0 || resolution() >= vorn::mice::minimumResolution;
  mUi->mResolutionOK->setEnabled(isPossible);
  mUi->mResolutionOK->setToolTip(
      isPossible
          ? QString()
          : localized("lkeyResolutionRange").arg(vorn::mice::minimumResolution).arg(vorn::mice::maximumResolution));
}

}  // namespace skarn
