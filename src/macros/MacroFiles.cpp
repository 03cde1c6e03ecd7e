#include "macros/MacroFiles.h"

#include "model/RecordFile.h"
#include "model/SettingsKeys.h"
#include "platform/FilePanel.h"
#include "platform/Localization.h"
#include "platform/RecordFile.h"
#include "platform/SettingsText.h"

namespace skarn {

using vorn::PropertyList;
namespace keys = vorn::keys;

namespace {

QString fileType() {
  const std::string_view extension = vorn::recordFileExtension(vorn::RecordKind::Macro);
  return QString::fromUtf8(extension.data(), static_cast<qsizetype>(extension.size()));
}

const QString startFolder = QStringLiteral("file://localhost/Documents/");

}  // namespace

void MacroFiles::open(QWidget* window, std::function<void(const PropertyList& macro)> imported) {
  const auto ended = [window, imported = std::move(imported)](int returnCode, const QString& path) {
    if (returnCode != FilePanel::okButton) return;
    const ImportedRecord file = importRecord(path, vorn::RecordKind::Macro);
    if (file.problem.isEmpty()) {
      imported(file.record);
    } else {
      showImportProblem(window, path, file.problem);
    }
  };
  FilePanel::open(window, QStringLiteral("mMacrosPanel"), localized("lkeyImportMacro"),
                  {{fileType()}, localized("lkeyMacroFiles")}, startFolder, ended);
}

void MacroFiles::saveAs(QWidget* window, const PropertyList& macro) {
  const auto ended = [window, macro](int returnCode, const QString& path) {
    if (returnCode != FilePanel::okButton) return;
    exportRecord(window, QStringLiteral("%1.%2").arg(path, fileType()), macro, vorn::RecordKind::Macro);
  };
  FilePanel::save(window, QStringLiteral("mMacrosSaveAsPanel"), localized("lkeyExportMacro"),
                  textOf(macro, keys::MacroName), startFolder, ended);
}

}  // namespace skarn
