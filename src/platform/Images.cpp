#include "platform/Images.h"

#include <QGuiApplication>
#include <QHash>
#include <QPainter>

#include "platform/Bundle.h"

namespace skarn {

namespace {

// A picture named so is taken at twice the resolution; its size in device-independent pixels stays.
QString doubledName(const QString& name) {
  QString doubled = name;
  return doubled.insert(doubled.lastIndexOf(QLatin1Char('.')), QLatin1String("@2x"));
}

QPixmap decode(const QString& name) {
  const Bundle& bundle = Bundle::mainBundle();
  if (qGuiApp->devicePixelRatio() > 1) {
    const QPixmap doubled(bundle.imagePath(doubledName(name)));
    if (!doubled.isNull()) return doubled;
  }
  return QPixmap(bundle.imagePath(name));
}

}  // namespace

QPixmap image(const QString& name) {
  static QHash<QString, QPixmap> decoded;
  const auto found = decoded.constFind(name);
  if (found != decoded.constEnd()) return *found;
  const QPixmap picture = decode(name);
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

QIcon applicationIcon() {
  QIcon icon;
  for (const char* name : {"AppIcon.png", "AppIcon@2x.png"}) {
    QPixmap picture(Bundle::mainBundle().imagePath(QLatin1String(name)));
    // A desktop chooses by pixels.
    picture.setDevicePixelRatio(1);
    icon.addPixmap(picture);
  }
  return icon;
}

}  // namespace skarn
