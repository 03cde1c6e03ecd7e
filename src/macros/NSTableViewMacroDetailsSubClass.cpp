#include "macros/NSTableViewMacroDetailsSubClass.h"

#include "macros/MouseMacrosController.h"

namespace skarn {

void NSTableViewMacroDetailsSubClass::fillMenu(QMenu& menu) {
  if (mMacrosController != nullptr) mMacrosController->fillMacroDetailsMenu(menu);
}

}  // namespace skarn
