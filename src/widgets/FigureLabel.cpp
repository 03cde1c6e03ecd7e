#include "widgets/FigureLabel.h"

#include <QPainter>
#include <QStyle>

#include "widgets/FigureText.h"

namespace skarn {

FigureLabel::FigureLabel(QWidget* parent) : QLabel(parent) {
  setTextFormat(Qt::PlainText);
}

QSize FigureLabel::sizeHint() const {
  const QMargins margins = contentsMargins();
  return {figureText::width(text(), fontMetrics()) + margins.left() + margins.right(),
          fontMetrics().height() + margins.top() + margins.bottom()};
}

void FigureLabel::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const QSize size(figureText::width(text(), fontMetrics()), fontMetrics().height());
  const QRect line = QStyle::alignedRect(layoutDirection(), alignment() | Qt::AlignVCenter, size, contentsRect());
  figureText::draw(painter, *style(), line, palette(), isEnabled(), text(), foregroundRole());
}

}  // namespace skarn
