#include "widgets/KeyCaptureField.h"

#include <QKeyEvent>
#include <QPushButton>
#include <algorithm>
#include <array>

namespace skarn {

namespace {

// Keyboard usages that work buttons: Return, Escape, Tab, Space, the arrows, Enter, and modifiers alone.
constexpr std::array<int, 10> buttonKeys = {40, 41, 43, 44, 79, 80, 81, 82, 88, 0};

}  // namespace

KeyCaptureField::KeyCaptureField(QWidget* parent) : QLineEdit(parent) {
  setReadOnly(true);
}

void KeyCaptureField::setUp(QPushButton* ok, const Texts& texts) {
  mOK = ok;
  mTexts = texts;
  setHasKey(false);
}

void KeyCaptureField::begin() {
  clear();
  setHasKey(false);
  forgetPresses();
  setFocus();
}

void KeyCaptureField::showKey(const QString& name) {
  setText(name);
  setHasKey(true);
  moveOn();
}

bool KeyCaptureField::takesKey(int usage) const {
  return hasKeyboard() || std::ranges::find(buttonKeys, usage) == buttonKeys.end();
}

// Tab never reaches keyPressEvent.
bool KeyCaptureField::event(QEvent* event) {
  switch (event->type()) {
    case QEvent::ShortcutOverride:
    case QEvent::KeyPress: {
      const auto* key = static_cast<QKeyEvent*>(event);
      if (key->key() == Qt::Key_Escape) break;
      swallowPress(key->isAutoRepeat());
      event->accept();
      return true;
    }
    case QEvent::KeyRelease:
      swallowRelease(static_cast<QKeyEvent*>(event)->isAutoRepeat());
      event->accept();
      return true;
    default:
      break;
  }
  return QLineEdit::event(event);
}

void KeyCaptureField::focusInEvent(QFocusEvent* event) {
  if (event->reason() != Qt::ActiveWindowFocusReason) forgetPresses();
  QLineEdit::focusInEvent(event);
}

bool KeyCaptureField::hasKeyboard() const {
  return window()->focusWidget() == this;
}

void KeyCaptureField::setHasKey(bool hasKey) {
  mHasKey = hasKey;
  setPlaceholderText(hasKey ? mTexts.namelessKey : mTexts.noKey);
  if (!mOK) return;
  mOK->setEnabled(hasKey);
  mOK->setToolTip(hasKey ? QString() : mTexts.noKeyToConfirm);
}

void KeyCaptureField::forgetPresses() {
  mIsKeyDown = mIsKeyLetGo = false;
}

void KeyCaptureField::swallowPress(bool isRepeat) {
  mIsKeyDown = mIsKeyDown || !isRepeat;
}

void KeyCaptureField::swallowRelease(bool isRepeat) {
  // A key that went down elsewhere, as the Return that opened the sheet, does not count.
  if (isRepeat || !mIsKeyDown) return;
  mIsKeyLetGo = true;
  moveOn();
}

void KeyCaptureField::moveOn() {
  if (mOK && mHasKey && mIsKeyLetGo && hasKeyboard()) mOK->setFocus(Qt::OtherFocusReason);
}

}  // namespace skarn
