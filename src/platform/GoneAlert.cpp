#include "platform/GoneAlert.h"

#include "platform/Localization.h"
#include "platform/ShownName.h"
#include "widgets/Alert.h"

namespace skarn {

namespace {

void tell(QWidget* window, const QString& name, const char* title, const char* description) {
  Alert::show(window, localized(title).arg(shownName(name)), localized(description), {localized("lkeyOK")});
}

}  // namespace

void showGoneAlert(QWidget* window, const QString& name) {
  tell(window, name, "lkeyRecordGoneTitle", "lkeyRecordGoneDesc");
}

void showNotCurrentAlert(QWidget* window, const QString& name) {
  tell(window, name, "lkeyProfileNotCurrentTitle", "lkeyProfileNotCurrentDesc");
}

}  // namespace skarn
