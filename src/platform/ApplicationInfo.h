// Applications: bundles (a folder NAME.app with an Info.plist) and the desktop entries of the freedesktop.org Desktop
// Entry Specification. Main thread; whatever cannot be read gives empty values.
#pragma once

#include <QIcon>
#include <QString>
#include <string_view>
#include <vector>

#include "model/PropertyList.h"

namespace skarn {

class ApplicationInfo {
 public:
  static constexpr std::string_view nameKey = "CFBundleName";
  static constexpr std::string_view executableKey = "CFBundleExecutable";
  static constexpr std::string_view identifierKey = "CFBundleIdentifier";
  static constexpr std::string_view signatureKey = "CFBundleSignature";
  static constexpr std::string_view resolvedPathKey = "NSBundleResolvedPath";

  ApplicationInfo() = delete;

  // The information dictionary of a bundle, with its resolved path; for a desktop entry one of the five keys above: its
  // localised Name, the program of Exec, its desktop-file ID, "????" and its path. A bundle without an Info.plist has
  // only its resolved path; a path that is neither gives an empty dictionary.
  static vorn::PropertyList infoDictionary(const QString& path);

  // A null icon when it has none.
  static QIcon icon(const QString& path);
  // The icon of the installed application with this desktop-file ID or bundle identifier; a null icon when unknown.
  static QIcon iconForIdentifier(const QString& identifier);

  struct Installed {
    QString path;
    QString name;
  };
  // What a desktop would show in its menu, by name; of several entries with one desktop-file ID the first found counts.
  static std::vector<Installed> installed();
};

}  // namespace skarn
