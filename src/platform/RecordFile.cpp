#include "platform/RecordFile.h"

#include <QFileInfo>
#include <QSaveFile>

#include "model/PropertyListCodec.h"
#include "model/VrCoreUtility.h"
#include "platform/Localization.h"
#include "platform/RegularFile.h"
#include "platform/ShownName.h"
#include "widgets/Alert.h"

namespace skarn {

namespace {

QString fileName(const QString& path) {
  return shownName(QFileInfo(path).fileName());
}

QString problemOf(const RegularFile& file) {
  using Problem = RegularFile::Problem;
  switch (file.problem) {
    case Problem::None:
      return file.bytes.isEmpty() ? localized("lkeyFileIsEmpty") : QString();
    case Problem::Missing:
      return localized("lkeyFileIsMissing");
    case Problem::NotRegular:
      return localized("lkeyFileIsNotRegular");
    case Problem::NotReadable:
      return localized("lkeyFileIsNotReadable").arg(file.reason);
    case Problem::TooLarge:
      return localized("lkeyFileIsTooLarge");
  }
  return {};
}

bool isGood(const vorn::PropertyList& value, RecordMember::Type type) {
  switch (type) {
    case RecordMember::Type::Name:
      return !value.string().empty();
    case RecordMember::Type::Dictionary:
      return value.isDictionary();
    case RecordMember::Type::Array:
      return value.isArray();
  }
  return false;
}

QString problemOf(const vorn::PropertyList& record, const std::vector<RecordMember>& members) {
  if (!record.isDictionary()) return localized("lkeyFileIsNoRecord");
  for (const RecordMember& member : members) {
    if (isGood(record[member.key], member.type)) continue;
    if (member.type == RecordMember::Type::Name) return localized("lkeyFileLacksName");
    const QString key = QString::fromUtf8(member.key.data(), static_cast<qsizetype>(member.key.size()));
    return localized(record.contains(member.key) ? "lkeyFileHasBadMember" : "lkeyFileLacksMember").arg(key);
  }
  return {};
}

vorn::BytesView viewOf(const QByteArray& bytes) {
  return {reinterpret_cast<const std::uint8_t*>(bytes.constData()), static_cast<std::size_t>(bytes.size())};
}

void write(QWidget* window, const QString& path, const vorn::PropertyList& record) {
  const QString problem = writeRecordFile(path, record);
  if (problem.isEmpty()) return;
  Alert::show(window, localized("lkeyExportFailedTitle").arg(fileName(path)), problem, {localized("lkeyOK")});
}

}  // namespace

RecordFileContents readRecordFile(const QString& path, const std::vector<RecordMember>& members) {
  const RegularFile file = readRegularFile(path, static_cast<qint64>(vorn::maximumSize));
  if (QString problem = problemOf(file); !problem.isEmpty()) return {{}, std::move(problem)};
  const auto record = vorn::decodePropertyList(viewOf(file.bytes));
  if (!record) return {{}, localized("lkeyFileIsNoRecord")};
  if (QString problem = problemOf(*record, members); !problem.isEmpty()) return {{}, std::move(problem)};
  return {*record, {}};
}

QString writeRecordFile(const QString& path, const vorn::PropertyList& record) {
  const auto bytes = vorn::VrCoreUtility::convertDictionaryToData(record);
  if (!bytes) return localized("lkeyRecordIsNotWritable");
  // A pipe or a device would otherwise be replaced by a file.
  const QFileInfo target(path);
  if (target.exists() && !target.isFile()) return localized("lkeyFileIsNotRegular");
  QSaveFile file(path);
  const auto size = static_cast<qint64>(bytes->size());
  const bool isWritten = file.open(QIODevice::WriteOnly) &&
                         file.write(reinterpret_cast<const char*>(bytes->data()), size) == size && file.commit();
  return isWritten ? QString() : localized("lkeyFileIsNotWritable").arg(file.errorString());
}

void exportRecord(QWidget* window, const QString& path, const vorn::PropertyList& record) {
  if (!QFileInfo(path).isFile()) return write(window, path, record);
  Alert::show(window, localized("lkeyReplaceFileTitle").arg(fileName(path)), localized("lkeyReplaceFileDesc"),
              {localized("lkeyReplace"), localized("lkeyCancel")}, [window, path, record](int returnCode) {
                if (returnCode == Alert::firstButtonReturn) write(window, path, record);
              });
}

void showImportProblem(QWidget* window, const QString& path, const QString& problem) {
  Alert::show(window, localized("lkeyImportFailedTitle").arg(fileName(path)), problem, {localized("lkeyOK")});
}

}  // namespace skarn
