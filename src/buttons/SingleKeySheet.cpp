#include "buttons/SingleKeySheet.h"

#include "platform/KeyChooser.h"
#include "platform/Localization.h"
#include "ui_SingleKeySheet.h"

namespace skarn {

SingleKeySheet::SingleKeySheet(QWidget* window) : AssignmentSheet(window), mUi(std::make_unique<Ui::SingleKeySheet>()) {
  mUi->setupUi(this);
  connectButtons(mUi->mSingleKeyOK, mUi->mSingleKeyCancel);
  connect(mUi->mSingleKeyChoose, &QPushButton::clicked, this, [this] {
    mUi->mInputSingleKey->stopListening();
    KeyChooser::open(this, KeyChooser::Offers::KeysAndModifiers, [this](int usage, int modifiers) {
      emit keyChosen(usage, modifiers);
      // It is disabled until there is a key.
      mUi->mSingleKeyOK->setFocus();
    });
  });
  mUi->mInputSingleKey->setUp(mUi->mSingleKeyOK, KeyCaptureField::Confirms::CaughtKey, mUi->mSingleKeyAgain,
                              {localized("lkeyPressAKey"), localized("lkeySingleKeyPlaceholder"),
                               localized("lkeySingleKeyNameless"), localized("lkeyNoKeyPressed")});
}

SingleKeySheet::~SingleKeySheet() = default;

void SingleKeySheet::begin(const QString& controlName) {
  mUi->mSingleKeyControl->setText(controlName);
  open();
  mUi->mInputSingleKey->begin();
}

void SingleKeySheet::showKey(const QString& key) {
  mUi->mInputSingleKey->showKey(key);
}

}  // namespace skarn
