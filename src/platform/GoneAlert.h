// Says that the record that a sheet, an alert or a panel was opened for is no longer there. Main thread.
#pragma once

#include <QString>

class QWidget;

namespace skarn {

// window: where it is shown; name: the record's name when it was opened.
void showGoneAlert(QWidget* window, const QString& name);

}  // namespace skarn
