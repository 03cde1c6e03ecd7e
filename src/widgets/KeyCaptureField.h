// A line that shows a caught key. While it listens, whoever hands typed keys on finds it by listeningIn() and tells it
// of each: the first key, with what is held, or a modifier that is let go alone, ends the listening, and the keyboard
// works the sheet again. A click on the field, or the button beside it, listens anew. What is caught comes back by
// showKey, listening or not, from wherever it was pressed.
//
// Order of calls: setUp once, begin each time the sheet is opened, then showKey for each reported key. Main thread.
#pragma once

#include <QLineEdit>
#include <QPointer>

class QAbstractButton;
class QLabel;
class QPushButton;

namespace skarn {

class KeyCaptureField : public QLineEdit {
  Q_OBJECT

 public:
  struct Texts {
    // In the place of the key: while it listens, before the first key without listening, and for one without a name.
    QString listening;
    QString noKey;
    QString namelessKey;
    // The tooltip of OK, and what the note says, before the first key.
    QString noKeyToConfirm;
  };
  enum class Confirms {
    Always,    // OK without a key leaves everything as it is
    CaughtKey  // OK is enabled as long as there is a key to confirm
  };

  explicit KeyCaptureField(QWidget* parent = nullptr);
  ~KeyCaptureField() override;

  // Of the field's own window: the sheet's OK, the button that listens anew, and a note that says why OK would do
  // nothing, if there is one. Not owned.
  void setUp(QPushButton* ok, Confirms confirms, QAbstractButton* again, const Texts& texts, QLabel* note = nullptr);
  // For another use of the same sheet.
  void setConfirms(Confirms confirms, const QString& noKeyToConfirm);
  // Forgets the key and listens.
  void begin();
  void listen();
  void stopListening();
  bool isListening() const;
  // The name may be empty.
  void showKey(const QString& name);

  // The field that listens for the keys which this window is given; null where none does.
  static KeyCaptureField* listeningIn(const QWidget* window);
  // A key typed while it listens: ends the listening as said above.
  void noteTyped(bool isModifier, bool isPressed);

 protected:
  void mousePressEvent(QMouseEvent* event) override;
  void hideEvent(QHideEvent* event) override;

 private:
  void setHasKey(bool hasKey);
  void showState();

  QPointer<QPushButton> mOK;
  QPointer<QAbstractButton> mAgain;
  QPointer<QLabel> mNote;
  Confirms mConfirms = Confirms::CaughtKey;
  Texts mTexts;
  bool mHasKey = false;
  bool mIsModifierAlone = false;  // a modifier went down, and nothing else since
};

}  // namespace skarn
