// A line that shows the key to be assigned. The keys themselves are reported by the engine, not by this window's
// events, but a pressed key comes as an event too. So the field swallows every key but Escape: Return, Tab and Space
// can be assigned as any other. Once a key is shown and let go, the keyboard goes on to the OK button of the sheet;
// from there on the keys that work buttons do that, and any other takes the place of the one shown.
//
// Order of calls: setUp once, begin each time the sheet is opened, then for each reported key showKey where takesKey
// agrees. Main thread.
#pragma once

#include <QLineEdit>
#include <QPointer>

class QPushButton;

namespace skarn {

class KeyCaptureField : public QLineEdit {
  Q_OBJECT

 public:
  struct Texts {
    // In the place of the key: before the first one, and for one without a name.
    QString noKey;
    QString namelessKey;
    // The tooltip of OK before the first key.
    QString noKeyToConfirm;
  };

  explicit KeyCaptureField(QWidget* parent = nullptr);

  // The button, of the field's own window, is enabled as long as there is a key to confirm. Not owned.
  void setUp(QPushButton* ok, const Texts& texts);
  // Forgets the key and takes the keyboard.
  void begin();
  // The name may be empty.
  void showKey(const QString& name);
  // Whether a reported key (keyboard usage; 0 for modifiers alone) is meant to be assigned, and not for the buttons.
  bool takesKey(int usage) const;

 protected:
  bool event(QEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;

 private:
  bool hasKeyboard() const;
  void setHasKey(bool hasKey);
  void forgetPresses();
  void swallowPress(bool isRepeat);
  void swallowRelease(bool isRepeat);
  // To OK, when the field has seen a key go down and up and a key is shown: the two come in either order.
  void moveOn();

  QPointer<QPushButton> mOK;
  Texts mTexts;
  bool mHasKey = false;
  // Since the field was reached.
  bool mIsKeyDown = false;
  bool mIsKeyLetGo = false;
};

}  // namespace skarn
