// Tooltips for texts that come from elsewhere, such as names that the user gave. Main thread.
#pragma once

#include <QRect>

class QHelpEvent;
class QString;
class QWidget;

namespace skarn {

// Shows the text as it stands: markup and ampersands in it mean nothing. Long texts are wrapped. With a place in the
// widget's coordinates, the text goes when the pointer leaves that place.
void showPlainToolTip(const QHelpEvent& event, const QString& text, QWidget* widget, const QRect& place = {});

}  // namespace skarn
