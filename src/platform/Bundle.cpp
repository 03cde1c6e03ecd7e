#include "platform/Bundle.h"

#include <QCoreApplication>
#include <QDir>

namespace skarn {

namespace {

QString mainBundleFolder() {
  QString given = qEnvironmentVariable("SKARN_SHARE_DIR");
  if (!given.isEmpty()) return given;
  return QDir::cleanPath(QCoreApplication::applicationDirPath() + QStringLiteral("/../share/skarn-configurator"));
}

}  // namespace

const Bundle& Bundle::mainBundle() {
  static const Bundle bundle(mainBundleFolder());
  return bundle;
}

Bundle::Bundle(QString folder) : mPath(std::move(folder)) {}

QString Bundle::version() const {
  return QStringLiteral(SKARN_VERSION);
}

QString Bundle::resourcePath(const QString& name) const {
  return mPath + QLatin1Char('/') + name;
}

QString Bundle::imagePath(const QString& name) const {
  return resourcePath(QStringLiteral("images/") + name);
}

}  // namespace skarn
