#include "app/VRCErrorHandler.h"

#include "widgets/Alert.h"

namespace skarn {

void VRCErrorHandler::showErrorWithTitle(const QString& title, const QString& errorDescription,
                                         const QString& defaultButtonLabel, const QString& alternativeButtonLabel,
                                         QWidget* toWindow) {
  QStringList buttons{defaultButtonLabel};
  if (!alternativeButtonLabel.isEmpty()) buttons << alternativeButtonLabel;
  Alert::show(toWindow, title, errorDescription, buttons);
}

}  // namespace skarn
