#include "widgets/PlainToolTip.h"

#include <QHelpEvent>
#include <QTextDocument>
#include <QToolTip>

namespace skarn {

namespace {

constexpr qsizetype longestLine = 80;  // characters

}  // namespace

void showPlainToolTip(const QHelpEvent& event, const QString& text, QWidget* widget, const QRect& place) {
  // Whether a text is markup would otherwise be guessed from its first line. What may be wrapped is, to the shape of a
  // sheet of paper, however short it is.
  const QString markup = text.size() > longestLine
                             ? Qt::convertFromPlainText(text, Qt::WhiteSpaceNormal)
                             : QStringLiteral("<p style='white-space:pre'>%1</p>").arg(text.toHtmlEscaped());
  QToolTip::showText(event.globalPos(), markup, widget, place);
}

}  // namespace skarn
