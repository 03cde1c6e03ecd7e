#include "platform/GoneAlert.h"

#include "platform/Localization.h"
#include "platform/ShownName.h"
#include "widgets/Alert.h"

namespace skarn {

void showGoneAlert(QWidget* window, const QString& name) {
  Alert::show(window, localized("lkeyRecordGoneTitle").arg(shownName(name)), localized("lkeyRecordGoneDesc"),
              {localized("lkeyOK")});
}

}  // namespace skarn
