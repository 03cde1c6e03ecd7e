#include "platform/AddProblem.h"

#include "platform/Localization.h"
#include "platform/ShownName.h"
#include "widgets/Alert.h"

namespace skarn {

QString reasonAgainstAdding(vorn::RecordKind kind, std::optional<vorn::ReturnStatus> answer) {
  if (!answer) return localized("lkeyEngineSaidNothing");
  switch (*answer) {
    case vorn::ReturnStatus::OutOfRange:
      return localized(kind == vorn::RecordKind::Profile ? "lkeyNoRoomForProfile" : "lkeyNoRoomForMacro");
    case vorn::ReturnStatus::NotSaved:
      return localized("lkeyEngineDidNotSave");
    case vorn::ReturnStatus::TooLarge:
      return localized("lkeyRecordIsTooLarge");
    default:
      return localized("lkeyEngineRefused");
  }
}

void showAddProblem(QWidget* window, const QString& name, vorn::RecordKind kind,
                    std::optional<vorn::ReturnStatus> answer) {
  Alert::show(window, localized("lkeyAddFailedTitle").arg(shownName(name)), reasonAgainstAdding(kind, answer),
              {localized("lkeyOK")});
}

}  // namespace skarn
