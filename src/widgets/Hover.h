// Main thread.
#pragma once

class QMenu;
class QWidget;

namespace skarn {

// For a button and its menu: the hover of the button ends when the menu closes, unless the pointer is over the button,
// and when a sheet comes before its window. A pointer that goes from a button into its menu, or from a menu to the
// sheet that it opens, has not left the button by the count of the application. Once for each button.
void endHoverWithMenu(QWidget& button, QMenu& menu);

}  // namespace skarn
