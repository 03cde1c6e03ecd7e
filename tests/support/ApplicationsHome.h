// A desktop of the test's own: data folders with applications, and an icon theme. The environment names them while it
// lives.
#pragma once

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QIcon>
#include <QImage>
#include <QString>
#include <QTemporaryDir>
#include <utility>
#include <vector>

#include "support/PanelTest.h"

namespace skarn::test {

class ApplicationsHome {
 public:
  ApplicationsHome() {
    set("HOME", inFolder(QStringLiteral("home")));
    set("XDG_DATA_HOME", inFolder(QStringLiteral("data")));
    set("XDG_DATA_DIRS", inFolder(QStringLiteral("shared")) + QLatin1Char(':') + inFolder(QStringLiteral("system")));
    set("XDG_CURRENT_DESKTOP", QString());
    set("LC_ALL", QStringLiteral("de_AT.UTF-8"));
  }
  ~ApplicationsHome() {
    for (const auto& [name, value] : mBefore) qputenv(name, value);
  }
  ApplicationsHome(const ApplicationsHome&) = delete;
  ApplicationsHome& operator=(const ApplicationsHome&) = delete;

  QString inFolder(const QString& name) const { return mFolder.filePath(name); }

  void set(const char* name, const QString& value) {
    mBefore.insert(mBefore.begin(), {name, qgetenv(name)});
    qputenv(name, QFile::encodeName(value));
  }

  // Writes an entry with these lines into data/, shared/ or system/applications; returns its path.
  QString addEntry(const QString& name, const QByteArray& lines, const QString& folder = QStringLiteral("data")) {
    const QString path = inFolder(folder + QStringLiteral("/applications/") + name);
    return writeTestFile(path, "[Desktop Entry]\nType=Application\n" + lines) ? path : QString();
  }

  // A picture of one colour.
  bool addPicture(const QString& path, const QColor& color) const {
    QDir().mkpath(QFileInfo(path).absolutePath());
    QImage picture(24, 24, QImage::Format_ARGB32);
    picture.fill(color);
    return picture.save(path, "PNG");
  }

  // A theme that has one icon.
  bool addThemeIcon(const QString& name, const QColor& color) const {
    const QString theme = inFolder(QStringLiteral("icons/test"));
    const bool isWritten = writeTestFile(theme + QStringLiteral("/index.theme"),
                                         "[Icon Theme]\nName=test\nDirectories=24x24/apps\n\n[24x24/apps]\nSize=24\n"
                                         "Type=Fixed\nContext=Applications\n") &&
                           addPicture(theme + QStringLiteral("/24x24/apps/") + name + QStringLiteral(".png"), color);
    QIcon::setThemeSearchPaths({inFolder(QStringLiteral("icons"))});
    QIcon::setThemeName(QStringLiteral("test"));
    return isWritten;
  }

 private:
  QTemporaryDir mFolder;
  std::vector<std::pair<const char*, QByteArray>> mBefore;
};

// The colour in the middle of an icon; invalid for a null icon.
inline QColor colorOf(const QIcon& icon) {
  return icon.isNull() ? QColor() : icon.pixmap(24, 24).toImage().pixelColor(12, 12);
}

}  // namespace skarn::test
