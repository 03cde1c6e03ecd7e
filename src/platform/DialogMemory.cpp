#include "platform/DialogMemory.h"

#include <QSettings>

namespace skarn {

void withholdDialogMemory() {
  // No folder can be made there. The program keeps nothing by these settings itself.
  QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, QStringLiteral("/dev/null"));
}

}  // namespace skarn
