#include "app/WindowMemory.h"

#include <QSettings>
#include <QStandardPaths>

namespace skarn {

namespace {

const QString mouseOffered = QStringLiteral("mouse/isOffered");

}  // namespace

QString WindowMemory::usualFile() {
  return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
         QStringLiteral("/skarn-configurator/window.ini");
}

bool WindowMemory::isMouseOffered() const {
  return mFile.isEmpty() || QSettings(mFile, QSettings::IniFormat).value(mouseOffered).toBool();
}

bool WindowMemory::setMouseOffered() {
  if (mFile.isEmpty()) return false;
  QSettings settings(mFile, QSettings::IniFormat);
  settings.setValue(mouseOffered, true);
  settings.sync();
  return settings.status() == QSettings::NoError;
}

}  // namespace skarn
