#include "widgets/PictureLabel.h"

#include <QPainter>
#include <QStyle>

namespace skarn {

namespace {

constexpr qreal disabledOpacity = 0.45;

}  // namespace

PictureLabel::PictureLabel(QWidget* parent) : QLabel(parent) {
  setAlignment(Qt::AlignCenter);
}

QRect PictureLabel::shownRect() const {
  const QPixmap picture = pixmap(Qt::ReturnByValue);
  if (picture.isNull()) return {};
  const QSize own = picture.deviceIndependentSize().toSize();
  QSize shown = own.scaled(contentsRect().size(), Qt::KeepAspectRatio);
  if (shown.width() > own.width()) shown = own;
  return QStyle::alignedRect(layoutDirection(), alignment(), shown, contentsRect());
}

void PictureLabel::paintEvent(QPaintEvent*) {
  const QPixmap picture = pixmap(Qt::ReturnByValue);
  if (picture.isNull()) return;
  QPainter painter(this);
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  if (!isEnabled()) painter.setOpacity(disabledOpacity);
  painter.drawPixmap(shownRect(), picture);
}

}  // namespace skarn
