// Where a desktop's applications lie: the folders "applications" of $XDG_DATA_HOME and $XDG_DATA_DIRS, as the
// freedesktop.org Base Directory Specification has them, and where bundles are put. Main thread.
#pragma once

#include <QString>
#include <QStringList>
#include <vector>

namespace skarn {

struct DesktopFile {
  QString identifier;  // its desktop-file ID: the path within "applications" with dashes for slashes
  QString path;
};

// Every desktop file in the order in which they count: of two with one ID the first does. At most some thousand.
std::vector<DesktopFile> desktopFiles();

// The ID of the file under this absolute path; its bare name where it lies outside of those folders.
QString desktopFileID(const QString& path);

// The file that counts for an ID, without a search of whole folders; empty when there is none.
QString pathOfDesktopFileID(const QString& identifier);

// The bundles that lie where bundles are installed.
QStringList installedBundles();

// Is this a program that could be started: an absolute path, or a name to look for in PATH?
bool isProgram(const QString& name);

}  // namespace skarn
