#include "widgets/FigureLabel.h"

#include <QPainter>
#include <QStyle>
#include <algorithm>

namespace skarn {

namespace {

int digitWidth(const QFontMetrics& metrics) {
  int width = 0;
  for (char digit = '0'; digit <= '9'; ++digit) width = std::max(width, metrics.horizontalAdvance(QLatin1Char(digit)));
  return width;
}

// Calls part(text, x, width) for every digit and every run between digits; returns the whole width.
template <typename Part>
int layOut(const QString& text, const QFontMetrics& metrics, Part part) {
  const int figure = digitWidth(metrics);
  int x = 0;
  qsizetype at = 0;
  while (at < text.size()) {
    qsizetype end = at + 1;
    int width = figure;
    if (!text[at].isDigit()) {
      while (end < text.size() && !text[end].isDigit()) ++end;
      width = metrics.horizontalAdvance(text.mid(at, end - at));
    }
    part(text.mid(at, end - at), x, width);
    x += width;
    at = end;
  }
  return x;
}

}  // namespace

FigureLabel::FigureLabel(QWidget* parent) : QLabel(parent) {
  setTextFormat(Qt::PlainText);
}

QSize FigureLabel::sizeHint() const {
  const QMargins margins = contentsMargins();
  const int width = layOut(text(), fontMetrics(), [](const QString&, int, int) {});
  return {width + margins.left() + margins.right(), fontMetrics().height() + margins.top() + margins.bottom()};
}

void FigureLabel::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const QRect area = contentsRect();
  const int width = layOut(text(), fontMetrics(), [](const QString&, int, int) {});
  const QRect line = QStyle::alignedRect(layoutDirection(), alignment() | Qt::AlignVCenter,
                                         QSize(width, fontMetrics().height()), area);
  layOut(text(), fontMetrics(), [&](const QString& part, int x, int partWidth) {
    const QRect place(line.left() + x, line.top(), partWidth, line.height());
    const bool isFigure = part.size() == 1 && part[0].isDigit();
    style()->drawItemText(&painter, place, static_cast<int>(isFigure ? Qt::AlignHCenter : Qt::AlignLeft), palette(),
                          isEnabled(), part, foregroundRole());
  });
}

}  // namespace skarn
