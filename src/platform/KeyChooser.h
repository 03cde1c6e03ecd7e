// Chooses a key by its name, also one that no keyboard at hand has: a sheet with a list of every key that has a name, a
// field to search it, and, where wanted, the modifiers that are held with the key. Main thread.
#pragma once

#include <QDialog>
#include <functional>
#include <memory>

namespace skarn {

namespace Ui {
class KeyChooser;
}

class KeyChooser : public QDialog {
  Q_OBJECT

 public:
  // usage: of the keyboard page (USB HID Usage Tables), 224 to 231 for a modifier; modifiers: as in a keyboard report,
  // bit 0 Left Control to bit 3 Left Command.
  using Chosen = std::function<void(int usage, int modifiers)>;
  enum class Offers { Keys, KeysAndModifiers };

  // Opens on the window; chosen is called once or, when it is cancelled, never.
  static KeyChooser* open(QWidget* window, Offers offers, Chosen chosen);
  ~KeyChooser() override;

  void accept() override;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  KeyChooser(QWidget* window, Offers offers, Chosen chosen);
  void fillList();
  void addModifiers();
  void search(const QString& text);
  int chosenModifiers() const;

  std::unique_ptr<Ui::KeyChooser> mUi;
  Chosen mChosen;
};

}  // namespace skarn
