// A label for one line of text that may be longer than its place: it is cut, in the middle unless told otherwise, and
// the whole text is then the tooltip. The text is shown as it stands (no markup, no mnemonics).
#pragma once

#include <QLabel>

namespace skarn {

class ElidedLabel : public QLabel {
  Q_OBJECT
  Q_PROPERTY(Qt::TextElideMode elideMode READ elideMode WRITE setElideMode)

 public:
  explicit ElidedLabel(QWidget* parent = nullptr);

  Qt::TextElideMode elideMode() const { return mElideMode; }
  void setElideMode(Qt::TextElideMode mode);
  // What is seen of the text.
  QString shownText() const;

  QSize minimumSizeHint() const override;

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  Qt::TextElideMode mElideMode = Qt::ElideMiddle;
};

}  // namespace skarn
