#include "macros/NSTableViewMacroSubClass.h"

#include "macros/MouseMacrosController.h"

namespace skarn {

void NSTableViewMacroSubClass::fillMenu(QMenu& menu) {
  if (mMacrosController != nullptr) mMacrosController->fillMacroMenu(menu);
}

bool NSTableViewMacroSubClass::takesKey(const QKeyEvent& key) {
  return mMacrosController != nullptr && mMacrosController->takesMacroKey(key);
}

}  // namespace skarn
