#include "model/MacroEvents.h"

#include <algorithm>
#include <iterator>
#include <utility>
#include <vector>

#include "model/HidUsages.h"
#include "model/SettingsKeys.h"

namespace vorn {

namespace {

bool isWithin(const PropertyList& value, std::int64_t minimum, std::int64_t maximum) {
  return value.isInteger() && value.toInt64() >= minimum && value.toInt64() <= maximum;
}

}  // namespace

bool isMacroDelay(const PropertyList& value) {
  return isWithin(value, 0, maximumDelay);
}

bool isMacroEvent(const PropertyList& event) {
  const PropertyList& page = event[keys::Page];
  const PropertyList& argument = event[keys::Argument];
  return isWithin(event[keys::Command], 0, 1) && isMacroDelay(event[keys::Delay]) && page.isInteger() &&
         argument.isInteger() && hid::isKeyOrButton(page.toInt64(), argument.toInt64());
}

bool isReleaseOf(const PropertyList& press, const PropertyList& event) {
  return isMacroEvent(press) && isMacroEvent(event) && press[keys::Command].toInt() == 1 &&
         event[keys::Command].toInt() == 0 && press[keys::Page] == event[keys::Page] &&
         press[keys::Argument] == event[keys::Argument];
}

PropertyList macroEvents(const PropertyList& macro) {
  const PropertyList& events = macro[keys::Sequence][keys::Events];
  if (std::ranges::all_of(events.elements(), isMacroEvent)) return events.arrayOrEmpty();
  std::vector<PropertyList> usable;
  std::ranges::copy_if(events.elements(), std::back_inserter(usable), isMacroEvent);
  return PropertyList::array(std::move(usable));
}

}  // namespace vorn
