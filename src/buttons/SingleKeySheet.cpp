#include "buttons/SingleKeySheet.h"

#include "platform/Localization.h"
#include "ui_SingleKeySheet.h"

namespace skarn {

SingleKeySheet::SingleKeySheet(QWidget* window) : AssignmentSheet(window), mUi(std::make_unique<Ui::SingleKeySheet>()) {
  mUi->setupUi(this);
  connectButtons(mUi->mSingleKeyOK, mUi->mSingleKeyCancel);
}

SingleKeySheet::~SingleKeySheet() = default;

void SingleKeySheet::begin(const QString& controlName) {
  mUi->mSingleKeyControl->setText(controlName);
  mUi->mInputSingleKey->clear();
  setOKEnabled(false);
  // Away from the buttons, which a key meant for the control would press.
  mUi->mInputSingleKey->setFocus();
  open();
}

void SingleKeySheet::showKey(const QString& key) {
  mUi->mInputSingleKey->setText(key);
  setOKEnabled(true);
}

void SingleKeySheet::setOKEnabled(bool enabled) {
  mUi->mSingleKeyOK->setEnabled(enabled);
  mUi->mSingleKeyOK->setToolTip(enabled ? QString() : localized("lkeyNoKeyPressed"));
}

}  // namespace skarn
