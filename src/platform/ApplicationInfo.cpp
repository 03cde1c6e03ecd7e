#include "platform/ApplicationInfo.h"

#include <QCollator>
#include <QDir>
#include <QFileInfo>
#include <QImageReader>
#include <QSet>
#include <algorithm>
#include <optional>

#include "model/ApplicationBundle.h"
#include "model/DesktopEntry.h"
#include "model/PropertyListCodec.h"
#include "model/RegularFile.h"
#include "platform/ApplicationFolders.h"

namespace skarn {

namespace {

constexpr std::size_t maximumDescriptionSize = std::size_t{1} << 20;

const QString entrySuffix = QStringLiteral(".desktop");

std::error_code readDescription(const QString& path, vorn::Bytes& contents) {
  return vorn::readRegularFile(QFile::encodeName(path).toStdString(), maximumDescriptionSize, contents);
}

std::optional<vorn::DesktopEntry> readEntry(const QString& path) {
  vorn::Bytes text;
  if (readDescription(path, text)) return std::nullopt;
  auto entry = vorn::DesktopEntry::read({reinterpret_cast<const char*>(text.data()), text.size()});
  if (!entry || entry->text("Type") != "Application") return std::nullopt;
  return entry;
}

// Where the information of a bundle lies: on some platforms it has a folder of its own.
constexpr const char* contentsFolders[] = {"/Contents", ""};

vorn::PropertyList readBundle(const QString& path) {
  for (const char* folder : contentsFolders) {
    vorn::Bytes contents;
    const QString file = path + QLatin1String(folder) + QStringLiteral("/Info.plist");
    if (vorn::isMissingFile(readDescription(file, contents))) continue;
    const auto list = vorn::decodePropertyList(contents);
    return list ? list->dictionaryOrEmpty() : vorn::PropertyList::dictionary();
  }
  return vorn::PropertyList::dictionary();
}

bool isBundle(const QString& path) {
  return vorn::hasBundleName(path.toStdString()) && QFileInfo(path).isDir();
}

std::string locale() {
  for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
    const QByteArray value = qgetenv(name);
    if (!value.isEmpty()) return value.toStdString();
  }
  return {};
}

QString localizedText(const vorn::DesktopEntry& entry, std::string_view key) {
  return QString::fromStdString(entry.localizedText(key, locale()));
}

vorn::PropertyList entryInformation(const QString& path) {
  const auto entry = readEntry(path);
  if (!entry) return vorn::PropertyList::dictionary();
  auto information =
      vorn::PropertyList::dictionary({{ApplicationInfo::identifierKey, desktopFileID(path).toStdString()},
                                      {ApplicationInfo::signatureKey, "????"},
                                      {ApplicationInfo::resolvedPathKey, path.toStdString()}});
  const QString name = localizedText(*entry, "Name");
  if (!name.isEmpty()) information = information.with(ApplicationInfo::nameKey, name.toStdString());
  if (const auto command = entry->command(path.toStdString())) {
    information = information.with(ApplicationInfo::executableKey, command->front());
  }
  return information;
}

QIcon iconFromFile(const QString& path) {
  return QFileInfo(path).isFile() && QImageReader(path).canRead() ? QIcon(path) : QIcon();
}

QIcon entryIcon(const QString& path) {
  const auto entry = readEntry(path);
  if (!entry) return {};
  QString name = localizedText(*entry, "Icon");
  if (QDir::isAbsolutePath(name)) return iconFromFile(name);
  // An old habit: the name with the ending of its file.
  for (const char* ending : {".png", ".svg", ".xpm"}) {
    if (name.endsWith(QLatin1String(ending))) name.chop(4);
  }
  return name.isEmpty() || name.contains(QLatin1Char('/')) ? QIcon() : QIcon::fromTheme(name);
}

QIcon bundleIcon(const QString& path) {
  const vorn::PropertyList information = readBundle(path);
  for (const char* key : {"CFBundleIconFile", "NSIcon"}) {
    const QString name = QString::fromStdString(information[key].toString());
    if (name.isEmpty() || name.contains(QLatin1Char('/'))) continue;
    for (const char* folder : contentsFolders) {
      const QString file = path + QLatin1String(folder) + QStringLiteral("/Resources/") + name;
      for (const char* ending : {"", ".icns", ".png", ".svg", ".tiff"}) {
        if (QIcon icon = iconFromFile(file + QLatin1String(ending)); !icon.isNull()) return icon;
      }
    }
  }
  return {};
}

QStringList currentDesktops() {
  return QString::fromLocal8Bit(qgetenv("XDG_CURRENT_DESKTOP")).split(QLatin1Char(':'), Qt::SkipEmptyParts);
}

bool namesOneOf(const vorn::DesktopEntry& entry, const char* key, const QStringList& desktops) {
  const auto names = entry.list(key);
  return std::any_of(names.begin(), names.end(),
                     [&](const std::string& name) { return desktops.contains(QString::fromStdString(name)); });
}

// Would a menu of these desktops show it?
bool isShown(const vorn::DesktopEntry& entry, const QStringList& desktops) {
  if (entry.isTrue("Hidden") || entry.isTrue("NoDisplay")) return false;
  if (entry.contains("OnlyShowIn") && !namesOneOf(entry, "OnlyShowIn", desktops)) return false;
  if (namesOneOf(entry, "NotShowIn", desktops)) return false;
  const std::string program = entry.text("TryExec");
  return program.empty() || isProgram(QString::fromStdString(program));
}

}  // namespace

vorn::PropertyList ApplicationInfo::infoDictionary(const QString& path) {
  if (path.isEmpty()) return vorn::PropertyList::dictionary();
  const QString whole = QDir::cleanPath(QFileInfo(path).absoluteFilePath());
  if (isBundle(whole)) return readBundle(whole).with(resolvedPathKey, whole.toStdString());
  return whole.endsWith(entrySuffix) ? entryInformation(whole) : vorn::PropertyList::dictionary();
}

QIcon ApplicationInfo::icon(const QString& path) {
  const QString whole = QDir::cleanPath(path);
  if (isBundle(whole)) return bundleIcon(whole);
  return whole.endsWith(entrySuffix) ? entryIcon(whole) : QIcon();
}

QIcon ApplicationInfo::iconForIdentifier(const QString& identifier) {
  if (identifier.isEmpty()) return {};
  // Many a bundle has an entry that is named like it.
  const QString fileID = identifier.endsWith(entrySuffix) ? identifier : identifier + entrySuffix;
  if (const QString path = pathOfDesktopFileID(fileID); !path.isEmpty()) return icon(path);
  for (const QString& path : installedBundles()) {
    if (readBundle(path)[identifierKey].string() == identifier.toStdString()) return bundleIcon(path);
  }
  return {};
}

std::vector<ApplicationInfo::Installed> ApplicationInfo::installed() {
  const QStringList desktops = currentDesktops();
  std::vector<Installed> applications;
  QSet<QString> known;
  for (const DesktopFile& file : desktopFiles()) {
    // One that is hidden hides those found after it, too.
    if (known.contains(file.identifier)) continue;
    known.insert(file.identifier);
    const auto entry = readEntry(file.path);
    if (!entry || !isShown(*entry, desktops) || !entry->command(file.path.toStdString())) continue;
    const QString name = localizedText(*entry, "Name").simplified();
    if (!name.isEmpty()) applications.push_back({file.path, name});
  }
  // The C locale has an order of bytes only.
  QCollator collator(QLocale().language() == QLocale::C ? QLocale(QLocale::English) : QLocale());
  collator.setCaseSensitivity(Qt::CaseInsensitive);
  collator.setNumericMode(true);
  std::stable_sort(applications.begin(), applications.end(), [&](const Installed& left, const Installed& right) {
    return collator.compare(left.name, right.name) < 0;
  });
  return applications;
}

}  // namespace skarn
