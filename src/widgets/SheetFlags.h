// How a sheet is decorated.
#pragma once

#include <Qt>

namespace skarn {

// Window flags of a sheet: a title and a close button. It stands on its window, so it is neither minimised nor
// maximised.
inline constexpr Qt::WindowFlags sheetFlags =
    Qt::Sheet | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowCloseButtonHint;

}  // namespace skarn
