// The application's pictures, by their exact file names ("Skarn_keymap8.png"). On a high-resolution display the @2x
// picture is taken where there is one. Decoded once and kept. Main thread.
#pragma once

#include <QColor>
#include <QIcon>
#include <QPixmap>
#include <QString>

namespace skarn {

// A null picture when there is no such file.
QPixmap image(const QString& name);

// A black mask in a colour.
QPixmap tintedImage(const QString& name, const QColor& color);

// The same as an icon whose disabled state is drawn at the given share of the colour's opacity. A null icon when there
// is no such file.
QIcon tintedIcon(const QString& name, const QColor& color, qreal disabledOpacity = 0.4);

// For the windows of the application.
QIcon applicationIcon();

}  // namespace skarn
