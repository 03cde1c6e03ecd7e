// Tooltips for texts that come from elsewhere, such as names that the user gave. Main thread.
#pragma once

class QHelpEvent;
class QString;
class QWidget;

namespace skarn {

// Shows the text as it stands: markup and ampersands in it mean nothing. Long texts are wrapped.
void showPlainToolTip(const QHelpEvent& event, const QString& text, QWidget* widget);

}  // namespace skarn
