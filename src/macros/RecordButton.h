// The record button: a red dot while it waits; while it is on, a ground of the accent that pulses once a second, unless
// the desktop asks for no motion. To screen readers it is a button that can be checked. Main thread.
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
