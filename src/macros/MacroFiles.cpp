#include "macros/MacroFiles.h"

#include "model/RecordFile.h"
#include "platform/FilePanel.h"
#include "platform/Localization.h"
#include "platform/RecordFile.h"

namespace skarn {

using vorn::PropertyList;

namespace {

QString fileType() {
  const std::string_view extension = vorn::recordFileExtension(vorn::RecordKind::Macro);
  return QString::fromUtf8(extension.data(), static_cast<qsizetype>(extension.size()));
}

const QString startFolder = QStringLiteral("file://localhost/Documents/");

}  // namespace

void MacroFiles::open(QWidget* window, Imported imported) {
  const auto ended = [window, imported = std::move(imported)](int returnCode, const QString& path) {
    if (returnCode != FilePanel::okButton) return;
    const ImportedRecord file = importRecord(path, vorn::RecordKind::Macro);
    if (file.problem.isEmpty()) {
      imported(file.record, path);
    } else {
      showImportProblem(window, path, file.problem);
    }
  };
  FilePanel::open(window, QStringLiteral("mMacrosPanel"), localized("lkeyImportMacro"),
                  {{fileType()}, localized("lkeyMacroFiles")}, startFolder, ended);
}

void MacroFiles::saveAs(QWidget* window, const QString& suggestedName, Chosen chosen) {
  const auto ended = [chosen = std::move(chosen)](int returnCode, const QString& path) {
    if (returnCode == FilePanel::okButton) chosen(QStringLiteral("%1.%2").arg(path, fileType()));
  };
  FilePanel::save(window, QStringLiteral("mMacrosSaveAsPanel"), localized("lkeyExportMacro"), suggestedName,
                  startFolder, ended);
}

}  // namespace skarn
