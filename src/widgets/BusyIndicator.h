// A small turning arc that says that something is under way. Takes no time while it stands still or is hidden.
#pragma once

#include <QBasicTimer>
#include <QElapsedTimer>
#include <QWidget>

namespace skarn {

class BusyIndicator : public QWidget {
  Q_OBJECT

 public:
  explicit BusyIndicator(QWidget* parent = nullptr);

  void start();
  // What lasted only a moment is shown a little longer, so that it is seen.
  void stop();
  // One step, painted at once, for who blocks the event loop; nothing while it stands still or is hidden.
  void turn();
  bool isRunning() const { return mIsRunning; }

  QSize sizeHint() const override { return {20, 20}; }

 protected:
  void paintEvent(QPaintEvent* event) override;
  void timerEvent(QTimerEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;

 private:
  void endIfSeenEnough();

  QBasicTimer mTimer;
  QElapsedTimer mRunningSince;
  int mStep = 0;
  bool mIsRunning = false;
  bool mIsSeen = false;  // running, or so shortly ago that it still turns
};

}  // namespace skarn
