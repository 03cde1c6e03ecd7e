// A line that says for some seconds what has been done to the settings, with at most one button. It lies over the
// border between the pages and the footer, where neither has controls, so that nothing moves and nothing is covered. It
// stays as long as the pointer or the keyboard is in it; Escape takes it away. Main thread.
#pragma once

#include <QFrame>
#include <QString>
#include <QTimer>
#include <chrono>
#include <optional>

class QLayoutItem;
class QPushButton;

namespace skarn {

class ElidedLabel;

class HistoryLine : public QFrame {
  Q_OBJECT

 public:
  static constexpr std::chrono::milliseconds usualLifetime = std::chrono::seconds(8);

  // window: which it is a child of, and lives as long as; border: between the pages and the footer; room: the part of
  // the footer that has no controls; refuge: where the keyboard goes when the line goes.
  HistoryLine(QWidget& window, QWidget& border, const QLayoutItem& room, QWidget& refuge);

  // Says the text as it stands, in the place of another; without a text of its own the button is not shown.
  void say(const QString& text, const QString& button = {});
  void fallSilent();
  // How long it stays from the next text on; none for as long as nobody takes it away.
  void setLifetime(std::optional<std::chrono::milliseconds> lifetime) { mLifetime = lifetime; }
  // Empty while it says nothing.
  QString text() const;

 signals:
  void buttonClicked();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void changeEvent(QEvent* event) override;
  void enterEvent(QEnterEvent* event) override;
  void leaveEvent(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  void takePlace();
  bool hasKeyboard() const;
  void startTime();
  void timeIsUp();

  QWidget& mWindow;
  QWidget& mBorder;
  const QLayoutItem& mRoom;
  QWidget& mRefuge;
  ElidedLabel* mText;
  QPushButton* mButton;
  std::optional<std::chrono::milliseconds> mLifetime = usualLifetime;
  QTimer mTimer{this};
};

}  // namespace skarn
