// Say that what a sheet, an alert or a panel was opened for is not to be changed by it any more. Main thread.
// window: where it is shown; name: the record's name when it was opened.
#pragma once

#include <QString>

class QWidget;

namespace skarn {

// The record is no longer there.
void showGoneAlert(QWidget* window, const QString& name);

// The profile is no longer the current one.
void showNotCurrentAlert(QWidget* window, const QString& name);

}  // namespace skarn
