#include "buttons/SingleKeySheet.h"

#include "platform/Localization.h"
#include "ui_SingleKeySheet.h"

namespace skarn {

SingleKeySheet::SingleKeySheet(QWidget* window) : AssignmentSheet(window), mUi(std::make_unique<Ui::SingleKeySheet>()) {
  mUi->setupUi(this);
  connectButtons(mUi->mSingleKeyOK, mUi->mSingleKeyCancel);
  mUi->mInputSingleKey->setUp(mUi->mSingleKeyOK, {localized("lkeySingleKeyPlaceholder"),
                                                  localized("lkeySingleKeyNameless"), localized("lkeyNoKeyPressed")});
}

SingleKeySheet::~SingleKeySheet() = default;

void SingleKeySheet::begin(const QString& controlName) {
  mUi->mSingleKeyControl->setText(controlName);
  mUi->mInputSingleKey->begin();
  open();
}

void SingleKeySheet::showKey(const QString& key) {
  mUi->mInputSingleKey->showKey(key);
}

bool SingleKeySheet::takesKey(int key) const {
  return mUi->mInputSingleKey->takesKey(key);
}

}  // namespace skarn
