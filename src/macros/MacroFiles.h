// Macros as files of their own. A macro file is the macro's record without its ID, with the extension "SkarnMacro".
// Main thread.
#pragma once

#include <functional>

#include "model/PropertyList.h"

class QWidget;

namespace skarn {

class MacroFiles {
 public:
  MacroFiles() = delete;

  // Asks for a file on the panel "mMacrosPanel", a sheet of the window, and returns at once. imported then gets the
  // record, which the engine takes and which keeps whatever else the file holds. For a file that is no such record a
  // sheet says why, and imported is not called.
  static void open(QWidget* window, std::function<void(const vorn::PropertyList& macro)> imported);

  // Asks for a name on the panel "mMacrosSaveAsPanel" and writes the record to that name with the extension added.
  static void saveAs(QWidget* window, const vorn::PropertyList& macro);
};

}  // namespace skarn
