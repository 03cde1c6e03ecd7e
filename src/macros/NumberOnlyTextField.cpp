#include "macros/NumberOnlyTextField.h"

#include <QRegularExpression>
#include <QRegularExpressionValidator>

namespace skarn {

NumberOnlyTextField::NumberOnlyTextField(QWidget* parent) : QLineEdit(parent) {
  const QRegularExpression digits(QStringLiteral("[0-9]{0,%1}").arg(mostDigits));
  setValidator(new QRegularExpressionValidator(digits, this));
  setInputMethodHints(Qt::ImhDigitsOnly);
  connect(this, &QLineEdit::inputRejected, this, &NumberOnlyTextField::editRefused);
}

}  // namespace skarn
