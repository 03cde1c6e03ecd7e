// The two palettes of the application and its one accent. Placeholder text is the muted colour of captions, Mid that of
// hairlines, Midlight that of quiet surfaces (chips, badges, hovered controls).
#pragma once

#include <QColor>
#include <QPalette>

namespace skarn {

QPalette lightPalette();
QPalette darkPalette();

// True when the palette writes light on dark.
bool isDark(const QPalette& palette);

// The ember: for the current profile, the active keymap, the record state and the selected control only. It never
// stands for a meaning alone.
QColor accentColor(const QPalette& palette);

}  // namespace skarn
