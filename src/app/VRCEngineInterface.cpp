#include "app/VRCEngineInterface.h"

#include <QDir>

#include "app/VRCErrorHandler.h"

namespace skarn {

VRCEngineInterface::VRCEngineInterface(VRCDeviceManager* deviceManager, QString engineFramework)
    : deviceManagerInstance(deviceManager), mEngineFramework(std::move(engineFramework)) {}

void VRCEngineInterface::checkEngine() const {
  if (QDir(mEngineFramework).exists()) return;
  VRCErrorHandler::showErrorWithTitle(
      QStringLiteral("File is missing"),
      QStringLiteral("Software component necessary for the operation is missing. Please install the software from "
                     "the software CD-ROM"),
      QStringLiteral("OK"), QString(), parentWindow);
}

}  // namespace skarn
