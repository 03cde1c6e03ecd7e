// The record button: a red dot while it waits; while it is on, a ground of the accent that pulses once a second, unless
// the desktop asks for no motion. What is typed then belongs to the recording and works neither the button nor the
// window: Escape alone stops. To screen readers it is a button that can be checked. Main thread.
#pragma once

#include <QPushButton>
#include <QVariantAnimation>

namespace skarn {

class RecordButton : public QPushButton {
  Q_OBJECT

 public:
  explicit RecordButton(QWidget* parent = nullptr);

  bool isPulsing() const { return mPulse.state() == QAbstractAnimation::Running; }

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void updatePulse();
  QColor ground() const;

  QVariantAnimation mPulse;  // from 0 over 1 back to 0
};

}  // namespace skarn
