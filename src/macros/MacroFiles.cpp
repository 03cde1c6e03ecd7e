#include "macros/MacroFiles.h"

#include <algorithm>

#include "model/SettingsKeys.h"
#include "platform/FilePanel.h"
#include "platform/Localization.h"
#include "platform/RecordFile.h"
#include "platform/SettingsText.h"

namespace skarn {

using vorn::PropertyList;
namespace keys = vorn::keys;

namespace {

const QString fileType = QStringLiteral("%1Macro").arg(QLatin1String("Skarn"));
const QString startFolder = QStringLiteral("file://localhost/Documents/");

// A sequence may be empty, but what it holds must be events.
bool hasGoodEvents(const PropertyList& sequence) {
  if (!sequence.contains(keys::Events)) return true;
  return sequence[keys::Events].isArray() &&
         std::ranges::all_of(sequence[keys::Events].elements(), &PropertyList::isDictionary);
}

RecordFileContents readMacro(const QString& path) {
  RecordFileContents file = readRecordFile(
      path, {{keys::MacroName, RecordMember::Type::Name}, {keys::Sequence, RecordMember::Type::Dictionary}});
  if (!file.problem.isEmpty() || hasGoodEvents(file.record[keys::Sequence])) return file;
  return {{}, localized("lkeyFileHasBadMember").arg(QLatin1String(keys::Events))};
}

}  // namespace

void MacroFiles::open(QWidget* window, std::function<void(const PropertyList& macro)> imported) {
  const auto ended = [window, imported = std::move(imported)](int returnCode, const QString& path) {
    if (returnCode != FilePanel::okButton) return;
    const RecordFileContents file = readMacro(path);
    if (file.problem.isEmpty()) {
      imported(file.record);
    } else {
      showImportProblem(window, path, file.problem);
    }
  };
  FilePanel::open(window, QStringLiteral("mMacrosPanel"), localized("lkeyImportMacro"),
                  {{fileType}, localized("lkeyMacroFiles")}, startFolder, ended);
}

void MacroFiles::saveAs(QWidget* window, const PropertyList& macro) {
  const auto ended = [window, macro](int returnCode, const QString& path) {
    if (returnCode != FilePanel::okButton) return;
    exportRecord(window, QStringLiteral("%1.%2").arg(path, fileType), macro.without(keys::MacroID));
  };
  FilePanel::save(window, QStringLiteral("mMacrosSaveAsPanel"), localized("lkeyExportMacro"),
                  textOf(macro, keys::MacroName), startFolder, ended);
}

}  // namespace skarn
