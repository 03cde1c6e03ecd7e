// The two sheets of the Macros tab. Layout and input only: they stay open until the controller closes them (hide),
// which does what an OK or a Cancel means. Escape and the desktop's close button cancel. Main thread.
#pragma once

#include <QDialog>
#include <memory>
#include <optional>

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
  // Shows the sheet with an empty input. line: the delay as it stands in the list; the input says it in milliseconds
  // as long as it is empty.
  void begin(const QString& line);
  // The same for as many delays, which all become the one that is entered.
  void beginForMany(int delays);
  // For what is added to a delay. line: the delay as it stands in the list.
  void beginAdding(const QString& line);
  void reject() override { emit cancelled(); }

 signals:
  void confirmed();
  void cancelled();

 private:
  // A delay with which OK changes nothing, and why.
  struct Idle {
    std::optional<int> milliseconds;
    const char* reason = nullptr;
    bool isRefused = false;  // OK is disabled then
  };
  void show(const QString& title, const QString& now, const QString& placeholder, const Idle& idle);
  void explainOK();

  std::unique_ptr<Ui::MacroDelaySheet> mUi;
  QString mNow;
  Idle mIdle;
};

// Asks for a key: of an event, or of a stroke that is to be inserted. Shows the one that was caught last.
class MacroEventSheet : public QDialog {
  Q_OBJECT

 public:
  explicit MacroEventSheet(QWidget* parent);
  ~MacroEventSheet() override;

  KeyCaptureField& mInputMacroEvent() const;
  // The other event of the stroke that an event belongs to, which may change with it.
  enum class Partner { None, Press, Release };
  // Shows the sheet with an empty input.
  void begin(Partner partner);
  // For a key that is to be inserted: OK waits for one.
  void beginInserting();
  bool changesPartner() const;
  void reject() override { emit cancelled(); }

 signals:
  void confirmed();
  void cancelled();
  // From the list of all keys: its usage.
  void keyChosen(int usage);

 private:
  void show(const char* title, const char* note, const char* action);

  std::unique_ptr<Ui::MacroEventSheet> mUi;
};

}  // namespace skarn
