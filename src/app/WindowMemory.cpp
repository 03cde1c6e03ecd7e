#include "app/WindowMemory.h"

#include <QSettings>
#include <QStandardPaths>

namespace skarn {

namespace {

const QString mouseOffered = QStringLiteral("mouse/isOffered");
const QString inTray = QStringLiteral("tray/isWanted");
const QString trayExplained = QStringLiteral("tray/isExplained");

}  // namespace

QString WindowMemory::usualFile() {
  return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
         QStringLiteral("/skarn-configurator/window.ini");
}

bool WindowMemory::isMouseOffered() const {
  return value(mouseOffered, true);
}

bool WindowMemory::setMouseOffered() {
  return setValue(mouseOffered, true);
}

bool WindowMemory::isInTray() const {
  return value(inTray, false);
}

bool WindowMemory::setInTray(bool isInTray) {
  return setValue(inTray, isInTray);
}

bool WindowMemory::isTrayExplained() const {
  return value(trayExplained, false);
}

bool WindowMemory::setTrayExplained() {
  return setValue(trayExplained, true);
}

bool WindowMemory::value(const QString& key, bool otherwise) const {
  return mFile.isEmpty() ? otherwise : QSettings(mFile, QSettings::IniFormat).value(key).toBool();
}

bool WindowMemory::setValue(const QString& key, bool value) {
  if (mFile.isEmpty()) return false;
  QSettings settings(mFile, QSettings::IniFormat);
  settings.setValue(key, value);
  settings.sync();
  return settings.status() == QSettings::NoError;
}

}  // namespace skarn
