#include "buttons/KeymapNameSheet.h"

#include "platform/Localization.h"
#include "ui_KeymapNameSheet.h"

namespace skarn {

KeymapNameSheet::KeymapNameSheet(QWidget* window)
    : AssignmentSheet(window), mUi(std::make_unique<Ui::KeymapNameSheet>()) {
  mUi->setupUi(this);
  connectButtons(mUi->mKeymapNameOK, mUi->mKeymapNameCancel);
  connect(mUi->mKeymapNameField, &QLineEdit::textChanged, this, &KeymapNameSheet::updateOK);
}

KeymapNameSheet::~KeymapNameSheet() = default;

void KeymapNameSheet::begin(const QString& subject, const QString& name) {
  mPresentName = name;
  mUi->mKeymapNameSubject->setText(subject);
  mUi->mKeymapNameField->setText(name);
  mUi->mKeymapNameField->selectAll();
  mUi->mKeymapNameField->setFocus();
  updateOK();
  open();
}

QString KeymapNameSheet::name() const {
  return mUi->mKeymapNameField->text().simplified();
}

void KeymapNameSheet::updateOK() {
  const bool isOther = name() != mPresentName;
  mUi->mKeymapNameOK->setEnabled(isOther);
  mUi->mKeymapNameOK->setToolTip(isOther ? QString()
                                         : localized(mPresentName.isEmpty() ? "lkeyTypeAName" : "lkeyTypeAnotherName"));
}

}  // namespace skarn
