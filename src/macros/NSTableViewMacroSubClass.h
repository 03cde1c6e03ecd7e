// The table of macros: its right-click menu repeats the gear menu under it.
#pragma once

#include "macros/RightClickMenuTable.h"

namespace skarn {

class MouseMacrosController;

class NSTableViewMacroSubClass : public RightClickMenuTable {
  Q_OBJECT

 public:
  using RightClickMenuTable::RightClickMenuTable;

  // Whose menu it is; not owned, outlives the table.
  void setMMacrosController(MouseMacrosController* controller) { mMacrosController = controller; }

 protected:
  void fillMenu(QMenu& menu) override;
  bool takesKey(const QKeyEvent& key) override;

 private:
  MouseMacrosController* mMacrosController = nullptr;
};

}  // namespace skarn
