// The two sheets of the Macros tab. Layout and input only: they stay open until the controller closes them (hide),
// which does what an OK or a Cancel means. Escape and the desktop's close button cancel. Main thread.
#pragma once

#include <QDialog>
#include <memory>

namespace skarn {

class KeyCaptureField;
class NumberOnlyTextField;

namespace Ui {
class MacroDelaySheet;
class MacroEventSheet;
}  // namespace Ui

// Asks for one delay.
class MacroDelaySheet : public QDialog {
  Q_OBJECT

 public:
  explicit MacroDelaySheet(QWidget* parent);
  ~MacroDelaySheet() override;

  NumberOnlyTextField& mInputMacroDelay() const;
  // Shows the sheet with an empty input.
  void begin();
  void reject() override { emit cancelled(); }

 signals:
  void confirmed();
  void cancelled();

 private:
  std::unique_ptr<Ui::MacroDelaySheet> mUi;
};

// Shows the key that was caught last.
class MacroEventSheet : public QDialog {
  Q_OBJECT

 public:
  explicit MacroEventSheet(QWidget* parent);
  ~MacroEventSheet() override;

  KeyCaptureField& mInputMacroEvent() const;
  // Shows the sheet with an empty input; OK waits for the first key.
  void begin();
  void reject() override { emit cancelled(); }

 signals:
  void confirmed();
  void cancelled();

 private:
  std::unique_ptr<Ui::MacroEventSheet> mUi;
};

}  // namespace skarn
