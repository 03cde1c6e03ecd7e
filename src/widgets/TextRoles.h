// The fonts of the texts' roles, which SkarnStyle lists. Main thread.
#pragma once

#include <QFont>
#include <QString>

class QLabel;
class QWidget;

namespace skarn {

QFont semibold(QFont font);
// Of a group's title on this widget, or on none in particular.
QFont titleFont(const QWidget* widget);
QFont captionFont(const QFont& font);

// Gives the label the font and colour of its role; an unknown role leaves it as it is. Once for each label.
void applyTextRole(QLabel& label, const QString& role);

}  // namespace skarn
