#include "profiles/NSTableViewSubClass.h"

namespace skarn {

NSTableViewSubClass::NSTableViewSubClass(QWidget* parent) : QTableView(parent) {
  setSelectionBehavior(SelectRows);
  // The selection follows the active profile.
  setSelectionMode(NoSelection);
  setEditTriggers(NoEditTriggers);
}

}  // namespace skarn
