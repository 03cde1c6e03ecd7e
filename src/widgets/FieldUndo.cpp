#include "widgets/FieldUndo.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPointer>
#include <QSpinBox>
#include <QTextEdit>

namespace skarn {

namespace {

// The line that is typed into; null where there is none.
const QLineEdit* lineOf(const QWidget* field) {
  if (const auto* box = qobject_cast<const QComboBox*>(field)) return box->lineEdit();
  if (qobject_cast<const QAbstractSpinBox*>(field)) return field->findChild<QLineEdit*>();
  return qobject_cast<const QLineEdit*>(field);
}

const QTextDocument* documentOf(const QWidget* field) {
  if (const auto* text = qobject_cast<const QTextEdit*>(field); text && !text->isReadOnly()) return text->document();
  if (const auto* text = qobject_cast<const QPlainTextEdit*>(field); text && !text->isReadOnly())
    return text->document();
  return nullptr;
}

bool hasTakenWhatIsTyped(const QWidget* field) {
  const auto* box = qobject_cast<const QSpinBox*>(field);
  if (box == nullptr) return false;
  bool isNumber = false;
  const int typed = box->locale().toInt(box->cleanText(), &isNumber);
  return isNumber && typed == box->value();
}

}  // namespace

bool canUndoTyping(const QWidget* field) {
  if (const QTextDocument* document = documentOf(field)) return document->isUndoAvailable();
  const QLineEdit* line = lineOf(field);
  return line != nullptr && line->isUndoAvailable() && !hasTakenWhatIsTyped(field);
}

bool canRedoTyping(const QWidget* field) {
  if (const QTextDocument* document = documentOf(field)) return document->isRedoAvailable();
  const QLineEdit* line = lineOf(field);
  return line != nullptr && line->isRedoAvailable() && !hasTakenWhatIsTyped(field);
}

bool isTextField(const QWidget* field) {
  return lineOf(field) != nullptr || documentOf(field) != nullptr;
}

void endTyping(QWidget& window) {
  const QPointer<QWidget> field = window.focusWidget();
  if (!isTextField(field)) return;
  for (QWidget* holder = field->parentWidget(); holder != nullptr; holder = holder->parentWidget()) {
    if (!qobject_cast<QAbstractItemView*>(holder)) continue;
    holder->setFocus();
    return;
  }
  field->clearFocus();
  if (field) field->setFocus();
}

}  // namespace skarn
