// The menu of a control: a direction's picture item, the eight categories, and the submenus of four of them, in which
// the present target is ticked. Main thread.
#pragma once

#include <functional>

#include "buttons/AssignmentText.h"
#include "buttons/ControlTable.h"

namespace skarn {

class PopUpButton;

// The tag of the entry that ends a submenu and calls the category's own operation.
inline constexpr int categoryTag = -1;
// That of the entry for the switch-back.
inline constexpr int switchBackTag = -2;

// Puts the items in place of those that the pop-up has, unless their titles are the same, and selects none. An open
// menu stays open with the same titles, unless it is for something else by now: another profile, say. Each item's
// object name is the operation that choosing it calls: the control's action for the items of the menu itself, the stem
// of the control's submenus and MouseButtonMenuSelector, KeymapMenuSelector, MacroMenuSelector or ProfileMenuSelector
// for those of a submenu, which carry their tag besides.
//
// The submenu of what the control has ends with its option: the repeat mode of its macro, in a submenu of its own, and
// whether it switches back from its keymap. text and what the handlers refer to outlive the items.
struct AssignmentHandlers {
  // The category and the tag of a submenu's item, also of the ticked one.
  std::function<void(AssignmentCategory submenu, int tag)> chosen;
  std::function<void(int mode)> repeatChosen;
  std::function<void(bool isOn)> switchBackChosen;
};
void buildAssignmentMenu(PopUpButton& popUp, const ControlDescriptor& control, AssignmentText& text,
                         const AssignmentHandlers& handlers, bool isForSomethingElse);

}  // namespace skarn
