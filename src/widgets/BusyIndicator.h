// A small turning arc that says that something is under way. Takes no time while it stands still or is hidden.
#pragma once

#include <QBasicTimer>
#include <QWidget>

namespace skarn {

class BusyIndicator : public QWidget {
  Q_OBJECT

 public:
  explicit BusyIndicator(QWidget* parent = nullptr);

  void start();
  void stop();
  bool isRunning() const { return mIsRunning; }

  QSize sizeHint() const override { return {20, 20}; }

 protected:
  void paintEvent(QPaintEvent* event) override;
  void timerEvent(QTimerEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;

 private:
  QBasicTimer mTimer;
  int mStep = 0;
  bool mIsRunning = false;
};

}  // namespace skarn
