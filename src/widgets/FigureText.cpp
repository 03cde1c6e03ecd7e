#include "widgets/FigureText.h"

#include <QPainter>
#include <QStyle>
#include <algorithm>

namespace skarn::figureText {

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

int width(const QString& text, const QFontMetrics& metrics) {
  return layOut(text, metrics, [](const QString&, int, int) {});
}

void draw(QPainter& painter, const QStyle& style, const QRect& line, const QPalette& palette, bool isEnabled,
          const QString& text, QPalette::ColorRole role) {
  layOut(text, painter.fontMetrics(), [&](const QString& part, int x, int partWidth) {
    const QRect place(line.left() + x, line.top(), partWidth, line.height());
    const bool isFigure = part.size() == 1 && part[0].isDigit();
    const Qt::Alignment alignment = (isFigure ? Qt::AlignHCenter : Qt::AlignLeft) | Qt::AlignVCenter;
    style.drawItemText(&painter, place, static_cast<int>(alignment), palette, isEnabled, part, role);
  });
}

}  // namespace skarn::figureText
