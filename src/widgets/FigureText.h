// One line of text in which every digit takes the same width, whatever the font, so that changing numbers do not
// jitter and columns of numbers stay straight. Shown as it stands. Main thread.
#pragma once

#include <QFontMetrics>
#include <QPalette>
#include <QString>

class QPainter;
class QStyle;

namespace skarn::figureText {

int width(const QString& text, const QFontMetrics& metrics);

// Begins at the left edge of line, in the painter's font; the text is centred in line's height.
void draw(QPainter& painter, const QStyle& style, const QRect& line, const QPalette& palette, bool isEnabled,
          const QString& text, QPalette::ColorRole role);

}  // namespace skarn::figureText
