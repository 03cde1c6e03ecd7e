// Names of any length in messages.
#pragma once

#include <QString>

namespace skarn {

// The name as an alert shows it: a long one without its middle, or the alert would grow as wide.
QString shownName(const QString& name);

}  // namespace skarn
