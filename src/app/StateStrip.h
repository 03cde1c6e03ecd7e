// One sentence on the state of the mouse and its engine, and at most one button that mends it. It lies over the row of
// the tabs, right of them, so that nothing moves when it comes and goes. Main thread.
#pragma once

#include <QFrame>
#include <QString>

class QPushButton;
class QTabWidget;

namespace skarn {

class ElidedLabel;

class StateStrip : public QFrame {
  Q_OBJECT

 public:
  // Of the tabs' window; lives as long as that.
  explicit StateStrip(QTabWidget* tabs);

  // An empty text hides the strip, an empty button's text the button.
  void say(const QString& text, const QString& buttonText = {});
  QString text() const;
  // Shown now, before whatever blocks the thread next.
  void paintNow();

 signals:
  void buttonClicked();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void changeEvent(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  void takePlace();

  QTabWidget* mTabs;
  ElidedLabel* mText;
  QPushButton* mButton;
};

}  // namespace skarn
