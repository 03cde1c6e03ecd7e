// Titles of menu items and buttons, whose "&" would mark a mnemonic.
#pragma once

#include <QString>

namespace skarn {

// A title that is shown as it stands.
QString escapedTitle(QString title);
// The title that is shown for an escaped one.
QString unescapedTitle(QString escaped);

}  // namespace skarn
