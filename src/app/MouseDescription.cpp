#include "app/MouseDescription.h"

#include "platform/Localization.h"
#include "protocol/Mice.h"

namespace skarn {

namespace words = vorn::mice::keys;
using vorn::PropertyList;

namespace {

QString textOf(const PropertyList& value) {
  return QString::fromStdString(value.toString());
}

QStringList textsOf(const PropertyList& values) {
  QStringList texts;
  for (const PropertyList& value : values.elements()) texts << textOf(value);
  return texts;
}

MouseDescription::Controls controlsOf(const PropertyList& identifiers) {
  MouseDescription::Controls controls;
  for (const PropertyList& identifier : identifiers.elements()) controls.insert(identifier.toString());
  return controls;
}

MouseDescription::Connection connectionOf(std::string_view word) {
  if (word == vorn::mice::connections::Virtual) return MouseDescription::Connection::Virtual;
  if (word == vorn::mice::connections::Wireless) return MouseDescription::Connection::Wireless;
  return word == vorn::mice::connections::Wired ? MouseDescription::Connection::Wired
                                                : MouseDescription::Connection::Unknown;
}

MouseDescription::Sensitivity sensitivityOf(std::string_view word) {
  if (word == vorn::mice::sensitivities::Hardware) return MouseDescription::Sensitivity::Hardware;
  return word == vorn::mice::sensitivities::Scaled ? MouseDescription::Sensitivity::Scaled
                                                   : MouseDescription::Sensitivity::Missing;
}

}  // namespace

MouseDescription mouseDescription(const PropertyList& mouse) {
  MouseDescription description;
  description.id = textOf(mouse[words::ID]);
  description.connection = connectionOf(mouse[words::Connection].string());
  // The engine speaks English.
  description.name = description.isVirtual() ? localized("lkeyVirtualMouse") : textOf(mouse[words::Name]);
  description.isInUse = mouse[words::IsInUse].toBool();
  description.isPresent = mouse[words::IsPresent].toBool();
  description.isAllowed = mouse[words::IsAllowed].toBool();
  description.forbidden = textsOf(mouse[words::Forbidden]);
  description.controls = controlsOf(mouse[words::Controls]);
  description.taught = controlsOf(mouse[words::Taught]);
  description.resolution = mouse[words::Resolution].toInt();
  description.sensitivity = sensitivityOf(mouse[words::Sensitivity].string());
  description.hasPollingRate = mouse[words::HasPollingRate].toBool();
  description.hasLight = mouse[words::HasLight].toBool();
  description.hasPower = mouse[words::HasPower].toBool();
  description.hasBattery = mouse[words::HasBattery].toBool();
  description.held = textsOf(mouse[words::Held]);
  description.busy = textsOf(mouse[words::Busy]);
  return description;
}

std::vector<MouseDescription> mouseDescriptions(const PropertyList& mice) {
  std::vector<MouseDescription> descriptions;
  for (const PropertyList& mouse : mice.elements()) {
    MouseDescription description = mouseDescription(mouse);
    if (!description.id.isEmpty()) descriptions.push_back(std::move(description));
  }
  return descriptions;
}

}  // namespace skarn
