#include "performance/ExactField.h"

#include <QKeyEvent>
#include <QToolTip>

#include "platform/Localization.h"

namespace skarn {

ExactField::ExactField(QWidget* parent) : QLineEdit(parent) {
  setAlignment(Qt::AlignRight | Qt::AlignVCenter);
}

void ExactField::showValue(std::optional<int> value) {
  mValue = value;
  if (!isBeingTyped()) discard();
}

void ExactField::discard() {
  setText(mValue ? QString::number(*mValue) : QString());
}

std::optional<int> ExactField::typedValue() const {
  bool isWhole = false;
  const int value = text().trimmed().toInt(&isWhole);
  return isWhole && value >= mMinimum && value <= mMaximum ? std::optional(value) : std::nullopt;
}

bool ExactField::takeOver() {
  if (!isModified()) return true;
  const std::optional<int> typed = typedValue();
  if (!typed) return false;
  const bool isNew = typed != mValue;
  mValue = typed;
  discard();
  if (isNew) emit entered(*typed);
  return true;
}

bool ExactField::event(QEvent* event) {
  // Escape closes a sheet only when nothing is being typed.
  if (event->type() == QEvent::ShortcutOverride && isBeingTyped() &&
      static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) {
    event->accept();
    return true;
  }
  return QLineEdit::event(event);
}

void ExactField::keyPressEvent(QKeyEvent* event) {
  const int key = event->key();
  // With nothing typed, both belong to the sheet.
  if (isModified() && key == Qt::Key_Escape) {
    discard();
  } else if (isModified() && (key == Qt::Key_Return || key == Qt::Key_Enter)) {
    if (!takeOver()) {
      QToolTip::showText(mapToGlobal(rect().bottomLeft()),
                         localized("lkeyWholeNumberWithin").arg(mMinimum).arg(mMaximum), this);
    }
    selectAll();
  } else {
    QLineEdit::keyPressEvent(event);
    return;
  }
  event->accept();
}

void ExactField::focusOutEvent(QFocusEvent* event) {
  QLineEdit::focusOutEvent(event);
  // Its own menu, or another window, takes the keyboard for a while.
  if (event->reason() == Qt::PopupFocusReason || event->reason() == Qt::ActiveWindowFocusReason) return;
  if (!takeOver()) discard();
}

}  // namespace skarn
