// Macros as files of their own. A macro file is the macro's record without its ID, with the extension "SkarnMacro".
// Main thread.
#pragma once

#include <QString>
#include <functional>

#include "model/PropertyList.h"

class QWidget;

namespace skarn {

class MacroFiles {
 public:
  MacroFiles() = delete;

  using Imported = std::function<void(const vorn::PropertyList& macro, const QString& path)>;
  using Chosen = std::function<void(const QString& path)>;

  // Asks for a file on the panel "mMacrosPanel", a sheet of the window, and returns at once. imported then gets the
  // record, which the engine takes and which keeps whatever else the file holds. For a file that is no such record a
  // sheet says why, and imported is not called.
  static void open(QWidget* window, Imported imported);

  // Asks for a name on the panel "mMacrosSaveAsPanel" and returns at once. chosen then gets the path with the
  // extension added; a cancelled panel calls nothing.
  static void saveAs(QWidget* window, const QString& suggestedName, Chosen chosen);
};

}  // namespace skarn
