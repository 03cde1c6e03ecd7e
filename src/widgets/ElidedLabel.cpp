#include "widgets/ElidedLabel.h"

#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <algorithm>

#include "widgets/PlainToolTip.h"

namespace skarn {

ElidedLabel::ElidedLabel(QWidget* parent) : QLabel(parent) {
  setTextFormat(Qt::PlainText);
}

void ElidedLabel::setElideMode(Qt::TextElideMode mode) {
  mElideMode = mode;
  update();
}

QSize ElidedLabel::minimumSizeHint() const {
  const QSize whole = QLabel::minimumSizeHint();
  const int shortest = fontMetrics().horizontalAdvance(QStringLiteral("mm…mm"));
  return {std::min(whole.width(), shortest), whole.height()};
}

QString ElidedLabel::shownText() const {
  QString line = text();
  line.replace(QLatin1Char('\n'), QLatin1Char(' '));
  return fontMetrics().elidedText(line, mElideMode, contentsRect().width());
}

bool ElidedLabel::event(QEvent* event) {
  if (event->type() == QEvent::ToolTip && fontMetrics().horizontalAdvance(text()) > contentsRect().width()) {
    showPlainToolTip(*static_cast<QHelpEvent*>(event), text(), this);
    return true;
  }
  return QLabel::event(event);
}

void ElidedLabel::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const Qt::Alignment visual = QStyle::visualAlignment(layoutDirection(), alignment());
  style()->drawItemText(&painter, contentsRect(), static_cast<int>(visual), palette(), isEnabled(), shownText(),
                        foregroundRole());
}

}  // namespace skarn
