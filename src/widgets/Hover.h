// Main thread.
#pragma once

class QWidget;

namespace skarn {

// Ends the hover of a widget whose menu has closed, unless the pointer is over it. A pointer that went from the widget
// into its menu has not left the widget, by the count of the application.
void endHoverUnlessUnderPointer(QWidget& widget);

}  // namespace skarn
