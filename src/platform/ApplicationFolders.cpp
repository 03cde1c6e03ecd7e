#include "platform/ApplicationFolders.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QStandardPaths>

#include "model/ApplicationBundle.h"

namespace skarn {

namespace {

constexpr std::size_t mostDesktopFiles = 8000;

// The first one counts most. Read anew each time: the variables are few and no folder is touched.
QStringList applicationFolders() {
  QStringList folders;
  for (const QString& folder : QStandardPaths::standardLocations(QStandardPaths::ApplicationsLocation)) {
    // A relative path counts for nothing.
    if (QDir::isAbsolutePath(folder)) folders << QDir::cleanPath(folder);
  }
  folders.removeDuplicates();
  return folders;
}

QString identifierIn(const QString& folder, const QString& path) {
  return path.mid(folder.size() + 1).replace(QLatin1Char('/'), QLatin1Char('-'));
}

// A dash of the ID may stand for a folder.
QString fileIn(const QString& folder, const QString& identifier) {
  QString direct = folder + QLatin1Char('/') + identifier;
  if (QFileInfo(direct).isFile()) return direct;
  for (auto dash = identifier.indexOf(QLatin1Char('-')); dash > 0;
       dash = identifier.indexOf(QLatin1Char('-'), dash + 1)) {
    // Comes from files of others and must not lead out of the folder.
    if (identifier.startsWith(QLatin1Char('.'))) break;
    const QString deeper = folder + QLatin1Char('/') + identifier.left(dash);
    if (!QFileInfo(deeper).isDir()) continue;
    if (QString found = fileIn(deeper, identifier.mid(dash + 1)); !found.isEmpty()) return found;
  }
  return {};
}

}  // namespace

std::vector<DesktopFile> desktopFiles() {
  std::vector<DesktopFile> files;
  for (const QString& folder : applicationFolders()) {
    QDirIterator entries(folder, {QStringLiteral("*.desktop")}, QDir::Files,
                         QDirIterator::Subdirectories | QDirIterator::FollowSymlinks);
    while (entries.hasNext() && files.size() < mostDesktopFiles) {
      const QString path = entries.next();
      files.push_back({identifierIn(folder, path), path});
    }
  }
  return files;
}

QString desktopFileID(const QString& path) {
  for (const QString& folder : applicationFolders()) {
    if (path.startsWith(folder + QLatin1Char('/'))) return identifierIn(folder, path);
  }
  return QFileInfo(path).fileName();
}

QString pathOfDesktopFileID(const QString& identifier) {
  constexpr qsizetype longest = 255;
  if (identifier.size() > longest || identifier.contains(QLatin1Char('/')) || identifier.contains(QChar::Null)) {
    return {};
  }
  for (const QString& folder : applicationFolders()) {
    if (QString found = fileIn(folder, identifier); !found.isEmpty()) return found;
  }
  return {};
}

QStringList installedBundles() {
  QStringList bundles;
  for (const QString& folder : {QDir::homePath() + QStringLiteral("/Applications"), QStringLiteral("/Applications")}) {
    const QDir applications(folder);
    for (const QString& name : applications.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
      if (vorn::hasBundleName(name.toStdString())) bundles << applications.filePath(name);
    }
  }
  return bundles;
}

bool isProgram(const QString& name) {
  if (QDir::isAbsolutePath(name)) {
    const QFileInfo file(name);
    return file.isFile() && file.isExecutable();
  }
  return !QStandardPaths::findExecutable(name).isEmpty();
}

}  // namespace skarn
