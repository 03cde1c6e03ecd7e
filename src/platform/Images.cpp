#include "platform/Images.h"

#include <QHash>
#include <QPainter>

#include "platform/Bundle.h"

namespace skarn {

QPixmap image(const QString& name) {
  static QHash<QString, QPixmap> decoded;
  const auto found = decoded.constFind(name);
  if (found != decoded.constEnd()) return *found;
  QPixmap picture(Bundle::mainBundle().imagePath(name));
  // A picture that is missing now may be there later.
  if (!picture.isNull()) decoded.insert(name, picture);
  return picture;
}

QPixmap tintedImage(const QString& name, const QColor& color) {
  QPixmap picture = image(name);
  if (picture.isNull()) return picture;
  QPainter painter(&picture);
  painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
  painter.fillRect(picture.rect(), color);
  return picture;
}

QIcon tintedIcon(const QString& name, const QColor& color, qreal disabledOpacity) {
  QIcon icon;
  const QPixmap normal = tintedImage(name, color);
  if (normal.isNull()) return icon;
  QColor faint = color;
  faint.setAlphaF(static_cast<float>(color.alphaF() * disabledOpacity));
  icon.addPixmap(normal, QIcon::Normal);
  icon.addPixmap(tintedImage(name, faint), QIcon::Disabled);
  return icon;
}

}  // namespace skarn
