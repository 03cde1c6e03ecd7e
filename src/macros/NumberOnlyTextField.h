// A field for a whole number of at most six digits, such as a delay in milliseconds. Whatever else is typed or pasted
// is refused as a whole and leaves the text as it was. Main thread.
#pragma once

#include <QLineEdit>

namespace skarn {

class NumberOnlyTextField : public QLineEdit {
  Q_OBJECT

 public:
  static constexpr int mostDigits = 6;

  explicit NumberOnlyTextField(QWidget* parent = nullptr);

  int integerValue() const { return text().toInt(); }  // 0 for an empty field

 signals:
  void editRefused();
};

}  // namespace skarn
