#include "widgets/KeyCaptureField.h"

#include <QLabel>
#include <QPushButton>
#include <utility>

namespace skarn {

namespace {

// At most one listens.
QPointer<KeyCaptureField>& listeningField() {
  static QPointer<KeyCaptureField> field;
  return field;
}

}  // namespace

KeyCaptureField::KeyCaptureField(QWidget* parent) : QLineEdit(parent) {
  setReadOnly(true);
}

KeyCaptureField::~KeyCaptureField() = default;

void KeyCaptureField::setUp(QPushButton* ok, Confirms confirms, QAbstractButton* again, const Texts& texts,
                            QLabel* note) {
  mOK = ok;
  mConfirms = confirms;
  mAgain = again;
  mTexts = texts;
  mNote = note;
  connect(again, &QAbstractButton::clicked, this, &KeyCaptureField::listen);
  setHasKey(false);
}

void KeyCaptureField::setConfirms(Confirms confirms, const QString& noKeyToConfirm) {
  mConfirms = confirms;
  mTexts.noKeyToConfirm = noKeyToConfirm;
  showState();
}

void KeyCaptureField::begin() {
  clear();
  setHasKey(false);
  listen();
}

void KeyCaptureField::listen() {
  mIsModifierAlone = false;
  KeyCaptureField* const before = std::exchange(listeningField(), this);
  if (before != nullptr && before != this) before->showState();
  setFocus();
  showState();
}

void KeyCaptureField::stopListening() {
  if (!isListening()) return;
  listeningField().clear();
  showState();
  // So that Return confirms what was caught.
  if (mOK && window()->focusWidget() == this) mOK->setFocus(Qt::OtherFocusReason);
}

bool KeyCaptureField::isListening() const {
  return listeningField() == this;
}

void KeyCaptureField::showKey(const QString& name) {
  setText(name);
  setHasKey(true);
}

KeyCaptureField* KeyCaptureField::listeningIn(const QWidget* window) {
  KeyCaptureField* const field = listeningField();
  return field != nullptr && field->isVisible() && field->window() == window ? field : nullptr;
}

void KeyCaptureField::noteTyped(bool isModifier, bool isPressed) {
  if (isModifier) {
    if (!isPressed && mIsModifierAlone) stopListening();
    mIsModifierAlone = isPressed;
  } else if (isPressed) {
    stopListening();
  }
}

void KeyCaptureField::mousePressEvent(QMouseEvent* event) {
  QLineEdit::mousePressEvent(event);
  listen();
}

void KeyCaptureField::hideEvent(QHideEvent* event) {
  QLineEdit::hideEvent(event);
  stopListening();
}

void KeyCaptureField::setHasKey(bool hasKey) {
  mHasKey = hasKey;
  showState();
}

void KeyCaptureField::showState() {
  setPlaceholderText(mHasKey ? mTexts.namelessKey : isListening() ? mTexts.listening : mTexts.noKey);
  if (mAgain) mAgain->setEnabled(!isListening());
  const QString whyNot = mHasKey ? QString() : mTexts.noKeyToConfirm;
  if (mNote) mNote->setText(whyNot);
  if (!mOK) return;
  mOK->setEnabled(mHasKey || mConfirms == Confirms::Always);
  mOK->setToolTip(whyNot);
}

}  // namespace skarn
