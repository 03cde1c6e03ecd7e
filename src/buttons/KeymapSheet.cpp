#include "buttons/KeymapSheet.h"

#include "buttons/AssignmentText.h"
#include "platform/Localization.h"
#include "ui_KeymapSheet.h"

namespace skarn {

KeymapSheet::KeymapSheet(QWidget* window) : AssignmentSheet(window), mUi(std::make_unique<Ui::KeymapSheet>()) {
  mUi->setupUi(this);
  connectButtons(mUi->mKeymapOK, mUi->mKeymapCancel, mUi->mKeymapNote);
  mUi->mKeymapValuePopUp->addItem(localized(keymapCycleNameKey), 0);
  int tag = 0;
  for (const char* key : keymapNameKeys) mUi->mKeymapValuePopUp->addItem(localized(key), ++tag);
  connect(mUi->mKeymapValuePopUp, &QComboBox::activated, this, &KeymapSheet::targetChosen);
  connect(mUi->mKeymapSwitchBack, &QCheckBox::toggled, this, &KeymapSheet::switchBackToggled);
}

KeymapSheet::~KeymapSheet() = default;

void KeymapSheet::begin(const QString& controlName) {
  mUi->mKeymapControl->setText(controlName);
  mUi->mKeymapValuePopUp->setFocus();
  open();
}

void KeymapSheet::setKeymapNames(const QStringList& names) {
  for (int keymap = 0; keymap < static_cast<int>(names.size()); ++keymap)
    mUi->mKeymapValuePopUp->setItemText(keymap + 1, names[keymap]);
}

void KeymapSheet::selectTarget(int index) {
  const bool isItem = index >= 0 && index < mUi->mKeymapValuePopUp->count();
  mUi->mKeymapValuePopUp->setCurrentIndex(isItem ? index : 0);
}

int KeymapSheet::tagOfSelectedTarget() const {
  return mUi->mKeymapValuePopUp->currentData().toInt();
}

bool KeymapSheet::isSwitchBack() const {
  return mUi->mKeymapSwitchBack->isChecked();
}

void KeymapSheet::setSwitchBack(bool on) {
  mUi->mKeymapSwitchBack->setChecked(on);
}

void KeymapSheet::setSwitchBackEnabled(bool enabled, const QString& whyNot) {
  mUi->mKeymapSwitchBack->setEnabled(enabled);
  mUi->mKeymapSwitchBack->setToolTip(enabled ? QString() : whyNot);
}

}  // namespace skarn
