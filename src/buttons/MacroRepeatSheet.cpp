#include "buttons/MacroRepeatSheet.h"

#include "ui_MacroRepeatSheet.h"

namespace skarn {

MacroRepeatSheet::MacroRepeatSheet(QWidget* window)
    : AssignmentSheet(window), mUi(std::make_unique<Ui::MacroRepeatSheet>()) {
  mUi->setupUi(this);
  connectButtons(mUi->mMacroRepeatOK, mUi->mMacroRepeatCancel, mUi->mMacroRepeatNote);
  connect(mUi->mMacroPlaybackPopUp, &QComboBox::activated, this, &MacroRepeatSheet::modeChosen);
}

MacroRepeatSheet::~MacroRepeatSheet() = default;

void MacroRepeatSheet::begin(const QString& controlName, const QString& macroName) {
  mUi->mMacroRepeatControl->setText(controlName);
  mUi->mMacroRepeatMacroName->setText(macroName);
  mUi->mMacroPlaybackPopUp->setFocus();
  open();
}

void MacroRepeatSheet::setModes(const QStringList& titles) {
  mUi->mMacroPlaybackPopUp->clear();
  mUi->mMacroPlaybackPopUp->addItems(titles);
}

void MacroRepeatSheet::selectMode(const QString& title) {
  mUi->mMacroPlaybackPopUp->setCurrentIndex(
      mUi->mMacroPlaybackPopUp->findText(title, Qt::MatchExactly | Qt::MatchCaseSensitive));
}

int MacroRepeatSheet::selectedMode() const {
  return mUi->mMacroPlaybackPopUp->currentIndex();
}

void MacroRepeatSheet::showCurrentMode(const QString& text) {
  mUi->mCurrentMacroRepeatLabel->setText(text);
}

}  // namespace skarn
