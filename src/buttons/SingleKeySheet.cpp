#include "buttons/SingleKeySheet.h"

#include <QKeyEvent>
#include <algorithm>
#include <array>

#include "platform/Localization.h"
#include "ui_SingleKeySheet.h"

namespace skarn {

namespace {

// Keyboard usages that work buttons: Return, Escape, Tab, Space, the arrows, Enter, and modifiers alone.
constexpr std::array<int, 10> buttonKeys = {40, 41, 43, 44, 79, 80, 81, 82, 88, 0};

}  // namespace

SingleKeySheet::SingleKeySheet(QWidget* window) : AssignmentSheet(window), mUi(std::make_unique<Ui::SingleKeySheet>()) {
  mUi->setupUi(this);
  connectButtons(mUi->mSingleKeyOK, mUi->mSingleKeyCancel);
  mUi->mInputSingleKey->installEventFilter(this);
}

SingleKeySheet::~SingleKeySheet() = default;

void SingleKeySheet::begin(const QString& controlName) {
  mUi->mSingleKeyControl->setText(controlName);
  mUi->mInputSingleKey->clear();
  mUi->mInputSingleKey->setPlaceholderText(localized("lkeySingleKeyPlaceholder"));
  setOKEnabled(false);
  mIsKeyDown = mIsKeyLetGo = false;
  mUi->mInputSingleKey->setFocus();
  open();
}

void SingleKeySheet::showKey(const QString& key) {
  mUi->mInputSingleKey->setText(key);
  mUi->mInputSingleKey->setPlaceholderText(localized("lkeySingleKeyNameless"));
  setOKEnabled(true);
  moveOn();
}

bool SingleKeySheet::takesKey(int key) const {
  return focusWidget() == mUi->mInputSingleKey || std::ranges::find(buttonKeys, key) == buttonKeys.end();
}

bool SingleKeySheet::eventFilter(QObject* watched, QEvent* event) {
  switch (event->type()) {
    case QEvent::FocusIn:
      if (static_cast<QFocusEvent*>(event)->reason() != Qt::ActiveWindowFocusReason) mIsKeyDown = mIsKeyLetGo = false;
      break;
    case QEvent::ShortcutOverride:
    case QEvent::KeyPress: {
      const auto* key = static_cast<QKeyEvent*>(event);
      if (key->key() == Qt::Key_Escape) break;
      mIsKeyDown = mIsKeyDown || !key->isAutoRepeat();
      event->accept();
      return true;
    }
    case QEvent::KeyRelease:
      // A key that went down elsewhere, as the Return that opened the sheet, does not count.
      if (static_cast<QKeyEvent*>(event)->isAutoRepeat() || !mIsKeyDown) return true;
      mIsKeyLetGo = true;
      moveOn();
      return true;
    default:
      break;
  }
  return AssignmentSheet::eventFilter(watched, event);
}

void SingleKeySheet::moveOn() {
  if (mUi->mSingleKeyOK->isEnabled() && mIsKeyLetGo && focusWidget() == mUi->mInputSingleKey)
    mUi->mSingleKeyOK->setFocus(Qt::OtherFocusReason);
}

void SingleKeySheet::setOKEnabled(bool enabled) {
  mUi->mSingleKeyOK->setEnabled(enabled);
  mUi->mSingleKeyOK->setToolTip(enabled ? QString() : localized("lkeyNoKeyPressed"));
}

}  // namespace skarn
