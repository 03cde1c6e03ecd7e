// One sensitivity stage as a button: its value on a rounded ground. The current stage has the accent's outline and
// semibold text. A value that is too long for its place is cut in the middle.
#pragma once

#include <QAbstractButton>

namespace skarn {

class StageChip : public QAbstractButton {
  Q_OBJECT
  Q_PROPERTY(bool current READ isCurrent WRITE setCurrent)

 public:
  explicit StageChip(QWidget* parent = nullptr);

  bool isCurrent() const { return mIsCurrent; }
  void setCurrent(bool current);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QFont shownFont(bool current) const;
  QPalette::ColorRole groundRole() const;

  bool mIsCurrent = false;
};

}  // namespace skarn
