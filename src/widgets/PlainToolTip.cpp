#include "widgets/PlainToolTip.h"

#include <QHelpEvent>
#include <QTextDocument>
#include <QToolTip>

namespace skarn {

void showPlainToolTip(const QHelpEvent& event, const QString& text, QWidget* widget, const QRect& place) {
  // Whether a text is markup would otherwise be guessed from its first line.
  QToolTip::showText(event.globalPos(), Qt::convertFromPlainText(text, Qt::WhiteSpaceNormal), widget, place);
}

}  // namespace skarn
