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

// Puts the items in place of those that the pop-up has, unless their titles are the same, and selects none. An open
// menu stays open with the same titles, unless it is for something else by now: another profile, say. Each item's
// object name is the operation that choosing it calls: the control's action for the items of the menu itself, the stem
// of the control's submenus and MouseButtonMenuSelector, KeymapMenuSelector, MacroMenuSelector or ProfileMenuSelector
// for those of a submenu, which carry their tag besides. chosen gets the category and the tag of a submenu's item, also
// of the ticked one. text and what chosen refers to outlive the items.
using SubmenuChosen = std::function<void(AssignmentCategory submenu, int tag)>;
void buildAssignmentMenu(PopUpButton& popUp, const ControlDescriptor& control, AssignmentText& text,
                         const SubmenuChosen& chosen, bool isForSomethingElse);

}  // namespace skarn
