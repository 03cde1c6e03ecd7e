#include "platform/RecordFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLocale>
#include <QPointer>

#include "model/MacroEvents.h"
#include "model/ProfileFolder.h"
#include "model/RegularFile.h"
#include "platform/Localization.h"
#include "platform/ShownName.h"
#include "widgets/Alert.h"
#include "widgets/Notice.h"

namespace skarn {

namespace {

using vorn::RecordFault;
using vorn::RecordFileProblem;

QString fileName(const QString& path) {
  return shownName(QFileInfo(path).fileName());
}

QString textOf(const RecordFault& fault) {
  using Kind = RecordFault::Kind;
  const QString member = QString::fromUtf8(fault.member.data(), static_cast<qsizetype>(fault.member.size()));
  switch (fault.kind) {
    case Kind::NoDictionary:
      return localized("lkeyFileIsNoRecord");
    case Kind::TooLarge:
      return localized("lkeyRecordIsTooLarge");
    case Kind::NoName:
      return localized("lkeyFileLacksName");
    case Kind::Missing:
      return localized("lkeyFileLacksMember").arg(member);
    case Kind::Unusable:
      return localized("lkeyFileHasBadMember").arg(member);
    case Kind::TooManyEvents:
      return localized("lkeyMacroHasTooManyEvents").arg(QLocale().toString(qulonglong{vorn::maximumMacroEvents}));
    case Kind::NoEvent:
      return localized("lkeyMacroHasBadEvent").arg(QLocale().toString(qulonglong{fault.event}));
  }
  return {};
}

QString textOfReading(std::error_code error) {
  if (vorn::isMissingFile(error)) return localized("lkeyFileIsMissing");
  if (error == std::errc::invalid_argument) return localized("lkeyFileIsNotRegular");
  if (error == std::errc::file_too_large) return localized("lkeyFileIsTooLarge");
  return localized("lkeyFileIsNotReadable").arg(qt_error_string(error.value()));
}

QString textOfReading(const RecordFileProblem& problem) {
  using Kind = RecordFileProblem::Kind;
  if (problem.kind == Kind::File) return textOfReading(problem.error);
  if (problem.kind == Kind::Empty) return localized("lkeyFileIsEmpty");
  return problem.fault ? textOf(*problem.fault) : localized("lkeyFileIsNoRecord");
}

QString textOfWriting(const RecordFileProblem& problem) {
  if (problem.kind != RecordFileProblem::Kind::File) return localized("lkeyRecordIsNotWritable");
  if (problem.error == std::errc::invalid_argument) return localized("lkeyFileIsNotRegular");
  if (problem.error == std::errc::file_exists) return localized("lkeyFileExistsAlready");
  return localized("lkeyFileIsNotWritable").arg(qt_error_string(problem.error.value()));
}

// As people write it: with "~" for their own folder.
QString shownPath(const QString& path) {
  const QString home = QDir::homePath() + QLatin1Char('/');
  return path.startsWith(home) ? QStringLiteral("~/") + path.mid(home.size()) : path;
}

void showExportProblem(QWidget* window, const QString& path, const RecordFileProblem& problem) {
  Alert::show(window, localized("lkeyExportFailedTitle").arg(fileName(path)), textOfWriting(problem),
              {localized("lkeyOK")});
}

void write(QWidget* window, const QString& path, const vorn::PropertyList& record, vorn::RecordKind kind,
           Notice* notice) {
  const auto problem = vorn::writeRecordFile(QFile::encodeName(path).toStdString(), record, kind);
  if (!problem) {
    if (notice != nullptr) notice->say(localized("lkeyExportedTo").arg(shownPath(path)));
    return;
  }
  showExportProblem(window, path, *problem);
}

}  // namespace

ImportedRecord importRecord(const QString& path, vorn::RecordKind kind) {
  vorn::RecordFileContents contents = vorn::readRecordFile(QFile::encodeName(path).toStdString(), kind);
  return {std::move(contents.record), contents.problem ? textOfReading(*contents.problem) : QString()};
}

void exportRecord(QWidget* window, const QString& path, const vorn::PropertyList& record, vorn::RecordKind kind,
                  Notice* notice) {
  if (!QFileInfo(path).isFile()) return write(window, path, record, kind, notice);
  Alert::ask(window, localized("lkeyReplaceFileTitle").arg(fileName(path)), localized("lkeyReplaceFileDesc"),
             localized("lkeyReplace"), localized("lkeyCancel"),
             [window, path, record, kind, told = QPointer(notice)](int returnCode) {
               if (returnCode == Alert::firstButtonReturn) write(window, path, record, kind, told);
             });
}

ImportedFolder importProfileFolder(const QString& path) {
  const vorn::ProfileFolder folder = vorn::readProfileFolder(QFile::encodeName(path).toStdString());
  if (folder.problem) {
    const bool isEmpty = folder.problem->kind == RecordFileProblem::Kind::Empty;
    return {{}, isEmpty ? localized("lkeyFolderHoldsNoProfiles") : textOfReading(*folder.problem)};
  }
  ImportedFolder result;
  for (const vorn::ProfileFolderEntry& entry : folder.entries) {
    const auto& problem = entry.contents.problem;
    result.files.push_back({QFile::decodeName(QByteArray::fromStdString(entry.path)),
                            {entry.contents.record, problem ? textOfReading(*problem) : QString()}});
  }
  return result;
}

void exportProfileFolder(QWidget* window, const QString& path, const vorn::PropertyList& profiles, Notice& notice) {
  if (const auto problem = vorn::writeProfileFolder(QFile::encodeName(path).toStdString(), profiles)) {
    return showExportProblem(window, path, *problem);
  }
  notice.say(profiles.size() == 1
                 ? localized("lkeyExportedAllOne").arg(shownPath(path))
                 : localized("lkeyExportedAll").arg(QString::number(profiles.size()), shownPath(path)));
}

void showImportProblem(QWidget* window, const QString& path, const QString& problem) {
  Alert::show(window, localized("lkeyImportFailedTitle").arg(fileName(path)), problem, {localized("lkeyOK")});
}

}  // namespace skarn
