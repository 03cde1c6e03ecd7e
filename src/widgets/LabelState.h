// How a page looks while its controls cannot be used.
#pragma once

#include <QString>

class QWidget;

namespace skarn {

// Gives every label and group title of a page the palette's text colour, or its disabled one. While they are disabled,
// the page and whatever on it has no tooltip of its own says why.
void setLabelsEnabled(QWidget& page, bool enabled, const QString& whyNot);

}  // namespace skarn
