// A mouse as the engine describes it. Whatever is missing or of another type reads as nothing. Main thread.
#pragma once

#include <QString>
#include <QStringList>
#include <cstdint>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "model/PropertyList.h"

namespace skarn {

struct MouseDescription {
  enum class Connection : std::uint8_t { Unknown, Wired, Wireless, Virtual };
  // How the sensitivity comes about.
  enum class Sensitivity : std::uint8_t { Hardware, Scaled, Missing };
  using Controls = std::set<std::string, std::less<>>;  // identifiers

  QString id;
  QString name;
  Connection connection = Connection::Unknown;  // while it is not plugged in
  bool isInUse = false;
  bool isPresent = false;
  bool isAllowed = false;
  QStringList forbidden;  // the device files that the user may not use
  Controls controls;
  Controls taught;     // those of them that it was taught
  int resolution = 0;  // DPI without scaling; 0 where nobody knows

  // Only told of the one in use.
  Sensitivity sensitivity = Sensitivity::Missing;
  bool hasPollingRate = false;
  bool hasLight = false;
  bool hasPower = false;
  bool hasBattery = false;
  QStringList held;  // device files that are not used, since something on them is held down
  QStringList busy;  // likewise, since another program keeps them for itself

  bool isVirtual() const { return connection == Connection::Virtual; }
  // One that has to be taught, scaled and so on.
  bool isRealInUse() const { return isInUse && !isVirtual(); }
  bool isTeachable() const { return isRealInUse() && isPresent; }
  friend bool operator==(const MouseDescription&, const MouseDescription&) = default;
};

// Of the keys of protocol/Mice.h.
MouseDescription mouseDescription(const vorn::PropertyList& mouse);
// Of an array of them; what has no ID is left out.
std::vector<MouseDescription> mouseDescriptions(const vorn::PropertyList& mice);

}  // namespace skarn
