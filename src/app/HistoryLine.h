// A line that says for some seconds what has been done to the settings, or what could be, with at most one button. It
// lies over the border between the pages and the footer, where neither has controls, so that nothing moves and nothing
// is covered. It stays as long as the pointer or the keyboard is in it; Escape takes it away. Main thread.
#pragma once

#include <QFrame>
#include <QString>
#include <QTimer>
#include <chrono>
#include <functional>
#include <optional>

class QLayoutItem;
class QPushButton;

namespace skarn {

class ElidedLabel;

// The button of the line; without a text it is not shown.
struct LineButton {
  QString text{};
  std::function<void()> pressed{};
  std::optional<std::chrono::milliseconds> lifetime{};  // of this text, where it is not the usual one
};

class HistoryLine : public QFrame {
  Q_OBJECT

 public:
  static constexpr std::chrono::milliseconds usualLifetime = std::chrono::seconds(8);

  // window: which it is a child of, and lives as long as; border: between the pages and the footer; room: the part of
  // the footer that has no controls; refuge: where the keyboard goes when the line goes.
  HistoryLine(QWidget& window, QWidget& border, const QLayoutItem& room, QWidget& refuge);

  // Says the text as it stands, in the place of another.
  void say(const QString& text, LineButton button = {});
  void fallSilent();
  // How long it stays from the next text on; none for as long as nobody takes it away.
  void setLifetime(std::optional<std::chrono::milliseconds> lifetime) { mLifetime = lifetime; }
  // Empty while it says nothing.
  QString text() const;

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
  LineButton mOffer;
  std::optional<std::chrono::milliseconds> mLifetime = usualLifetime;
  QTimer mTimer{this};
};

}  // namespace skarn
