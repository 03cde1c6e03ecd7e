// A label for one line of text that may be longer than its place: it is cut in the middle, and the whole text is then
// the tooltip. The text is shown as it stands (no markup, no mnemonics).
#pragma once

#include <QLabel>

namespace skarn {

class ElidedLabel : public QLabel {
  Q_OBJECT

 public:
  explicit ElidedLabel(QWidget* parent = nullptr);

  QSize minimumSizeHint() const override;

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  QString shownText() const;
};

}  // namespace skarn
