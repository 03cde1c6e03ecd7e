// One sentence on the state of the mouse and its engine, and at most one button that mends it. It lies over the row of
// the tabs, right of them, so that nothing moves when it comes and goes. Main thread.
#pragma once

#include <QFrame>
#include <QString>

class QPushButton;
class QTabWidget;

namespace skarn {

class ElidedLabel;

// The strip's button; one without a text is not shown.
struct StripButton {
  QString text{};
  QString toolTip{};
  bool isEnabled = true;
};

class StateStrip : public QFrame {
  Q_OBJECT

 public:
  // Of the tabs' window; lives as long as that.
  explicit StateStrip(QTabWidget* tabs);

  // An empty text hides the strip. The keyboard leaves a button that is hidden or disabled for the tabs, and comes back
  // to one that is enabled again.
  void say(const QString& text, const StripButton& button = {});
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
  void showButton(const StripButton& button);
  void takePlace();

  QTabWidget* mTabs;
  ElidedLabel* mText;
  QPushButton* mButton;
  bool mTakesKeyboardBack = false;
};

}  // namespace skarn
