#include "widgets/PlainToolTip.h"

#include <QHelpEvent>
#include <QStringList>
#include <QToolTip>

namespace skarn {

namespace {

constexpr qsizetype longestLine = 80;  // characters

// Left to itself, a tooltip is wrapped to the shape of a sheet of paper, however short it is.
QString wrapped(const QString& text) {
  QStringList lines;
  for (QString rest : text.split(QLatin1Char('\n'))) {
    while (rest.size() > longestLine) {
      qsizetype end = rest.lastIndexOf(QLatin1Char(' '), longestLine);
      if (end <= 0) end = longestLine - (rest.at(longestLine).isLowSurrogate() ? 1 : 0);
      lines << rest.left(end);
      rest = rest.mid(end).trimmed();
    }
    lines << rest;
  }
  return lines.join(QLatin1Char('\n'));
}

}  // namespace

void showPlainToolTip(const QHelpEvent& event, const QString& text, QWidget* widget, const QRect& place) {
  // Whether a text is markup would otherwise be guessed from its first line.
  const QString markup = QStringLiteral("<p style='white-space:pre'>%1</p>").arg(wrapped(text).toHtmlEscaped());
  QToolTip::showText(event.globalPos(), markup, widget, place);
}

}  // namespace skarn
