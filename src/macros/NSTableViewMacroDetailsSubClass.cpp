#include "macros/NSTableViewMacroDetailsSubClass.h"

#include "macros/MouseMacrosController.h"

namespace skarn {

void NSTableViewMacroDetailsSubClass::fillMenu(QMenu& menu) {
  if (mMacrosController != nullptr) mMacrosController->fillMacroDetailsMenu(menu);
}

bool NSTableViewMacroDetailsSubClass::takesKey(const QKeyEvent& key) {
  return mMacrosController != nullptr && mMacrosController->takesLineKey(key);
}

}  // namespace skarn
