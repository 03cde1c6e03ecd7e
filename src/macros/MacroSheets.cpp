#include "macros/MacroSheets.h"

#include "macros/NumberOnlyTextField.h"
#include "model/eventParser.h"
#include "platform/KeyChooser.h"
#include "platform/Localization.h"
#include "ui_MacroDelaySheet.h"
#include "ui_MacroEventSheet.h"
#include "widgets/KeyCaptureField.h"
#include "widgets/SheetFlags.h"

namespace skarn {

MacroDelaySheet::MacroDelaySheet(QWidget* parent)
    : QDialog(parent, sheetFlags), mUi(std::make_unique<Ui::MacroDelaySheet>()) {
  mUi->setupUi(this);
  connect(mUi->mMacroDelayOK, &QPushButton::clicked, this, &MacroDelaySheet::confirmed);
  connect(mUi->mInputMacroDelay, &QLineEdit::textChanged, this, &MacroDelaySheet::explainOK);
  explainOK();
  connect(mUi->mMacroDelayCancel, &QPushButton::clicked, this, &MacroDelaySheet::cancelled);
}

MacroDelaySheet::~MacroDelaySheet() = default;

NumberOnlyTextField& MacroDelaySheet::mInputMacroDelay() const {
  return *mUi->mInputMacroDelay;
}

void MacroDelaySheet::begin(const QString& line) {
  const auto milliseconds = vorn::eventParser::delayOfLine(line.toStdString());
  show(localized("lkeyEditDelayTitle"), localized("lkeyDelayNow").arg(line.trimmed()),
       milliseconds ? QString::number(*milliseconds) : QString(), {milliseconds, "lkeyDelayIsSo"});
}

void MacroDelaySheet::beginForMany(int delays) {
  show(localized("lkeyEditDelaysTitle").arg(delays), localized("lkeyDelaysNow"), {}, {});
}

void MacroDelaySheet::beginAdding(const QString& line) {
  show(localized("lkeyAddDelayTitle"), localized("lkeyDelayAddedTo").arg(line.trimmed()), {},
       {0, "lkeyNothingToAdd", true});
}

void MacroDelaySheet::explainOK() {
  const bool hasDelay = !mUi->mInputMacroDelay->text().isEmpty();
  const bool isIdle = hasDelay && mUi->mInputMacroDelay->integerValue() == mIdle.milliseconds;
  const QString whyNot = isIdle ? localized(mIdle.reason) : hasDelay ? QString() : localized("lkeyEnterDelayFirst");
  mUi->mMacroDelayOK->setEnabled(hasDelay && !(isIdle && mIdle.isRefused));
  mUi->mMacroDelayOK->setToolTip(whyNot);
  mUi->mMacroDelayNow->setText(isIdle ? whyNot : mNow);
}

void MacroDelaySheet::show(const QString& title, const QString& now, const QString& placeholder, const Idle& idle) {
  mNow = now;
  mIdle = idle;
  setWindowTitle(title);
  mUi->mMacroDelayTitle->setText(title);
  mUi->mInputMacroDelay->setPlaceholderText(placeholder);
  mUi->mInputMacroDelay->clear();
  explainOK();
  mUi->mInputMacroDelay->setFocus();
  open();
}

MacroEventSheet::MacroEventSheet(QWidget* parent)
    : QDialog(parent, sheetFlags), mUi(std::make_unique<Ui::MacroEventSheet>()) {
  mUi->setupUi(this);
  connect(mUi->mMacroEventEditOK, &QPushButton::clicked, this, &MacroEventSheet::confirmed);
  connect(mUi->mMacroEventEditCancel, &QPushButton::clicked, this, &MacroEventSheet::cancelled);
  connect(mUi->mMacroEventChoose, &QPushButton::clicked, this, [this] {
    mUi->mInputMacroEvent->stopListening();
    KeyChooser::open(this, KeyChooser::Offers::Keys, [this](int usage, int) {
      emit keyChosen(usage);
      // It may have been disabled until now.
      mUi->mMacroEventEditOK->setFocus();
    });
  });
  mUi->mInputMacroEvent->setUp(mUi->mMacroEventEditOK, KeyCaptureField::Confirms::Always, mUi->mMacroEventAgain,
                               {localized("lkeyPressAKey"), localized("lkeySingleKeyPlaceholder"),
                                localized("lkeySingleKeyNameless"), localized("lkeyNoKeyNoChange")},
                               mUi->mMacroEventNote);
}

MacroEventSheet::~MacroEventSheet() = default;

KeyCaptureField& MacroEventSheet::mInputMacroEvent() const {
  return *mUi->mInputMacroEvent;
}

bool MacroEventSheet::changesPartner() const {
  return mUi->mChangesPartner->isChecked();
}

void MacroEventSheet::begin(Partner partner) {
  const bool hasPartner = partner != Partner::None;
  mUi->mChangesPartner->setText(localized(partner == Partner::Press ? "lkeyChangePress" : "lkeyChangeRelease"));
  mUi->mChangesPartner->setVisible(hasPartner);
  mUi->mChangesPartner->setChecked(hasPartner);
  mUi->mInputMacroEvent->setConfirms(KeyCaptureField::Confirms::Always, localized("lkeyNoKeyNoChange"));
  show("lkeyEditEventTitle", "lkeyEnterEvent", "lkeyOK");
}

void MacroEventSheet::beginInserting() {
  mUi->mChangesPartner->hide();
  mUi->mInputMacroEvent->setConfirms(KeyCaptureField::Confirms::CaughtKey, localized("lkeyNoKeyPressed"));
  show("lkeyInsertKeyTitle", "lkeyEnterInsertedKey", "lkeyInsertAction");
}

void MacroEventSheet::show(const char* title, const char* note, const char* action) {
  setWindowTitle(localized(title));
  mUi->mMacroEventTitle->setText(localized(title));
  mUi->mEnterMacroEventLabel->setText(localized(note));
  mUi->mMacroEventEditOK->setText(localized(action));
  adjustSize();
  open();
  mUi->mInputMacroEvent->begin();
}

}  // namespace skarn
