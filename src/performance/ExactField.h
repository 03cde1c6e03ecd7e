// A field for a whole number within a range. Return, Tab and a loss of the keyboard take over what was typed, if it is
// such a number; Escape gives it up. What is none changes nothing: at Return the field says what it takes and keeps the
// text to be mended, when the keyboard goes it shows the value in force again. What is typed at the moment outlives a
// new value from the program. Main thread.
#pragma once

#include <QLineEdit>
#include <optional>

namespace skarn {

class ExactField : public QLineEdit {
  Q_OBJECT
  Q_PROPERTY(int minimum MEMBER mMinimum)
  Q_PROPERTY(int maximum MEMBER mMaximum)

 public:
  explicit ExactField(QWidget* parent = nullptr);

  // The value in force; none shows nothing.
  void showValue(std::optional<int> value);
  // Gives up what is being typed.
  void discard();

 signals:
  // The user typed another value than the one in force.
  void entered(int value);

 protected:
  bool event(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  bool isBeingTyped() const { return hasFocus() && isModified(); }
  std::optional<int> typedValue() const;
  // True when there is nothing left to take over.
  bool takeOver();

  int mMinimum = 0;
  int mMaximum = 0;
  std::optional<int> mValue;
};

}  // namespace skarn
