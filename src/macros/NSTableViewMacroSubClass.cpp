#include "macros/NSTableViewMacroSubClass.h"

#include "macros/MouseMacrosController.h"

namespace skarn {

void NSTableViewMacroSubClass::fillMenu(QMenu& menu) {
  if (mMacrosController != nullptr) mMacrosController->fillMacroMenu(menu);
}

}  // namespace skarn
