#include "model/ProfileOrder.h"

#include <algorithm>
#include <cstdint>
#include <numeric>
#include <string_view>
#include <utility>

#include "model/Assignments.h"
#include "model/SettingsKeys.h"

namespace vorn {

namespace {

// holder: a profile or a keymap.
PropertyList withMovedTargets(PropertyList holder, const ProfileOrder& order) {
  for (const keys::Key group : {keys::Keys, keys::Buttons}) {
    PropertyList records = holder[group];
    for (const std::string_view identifier : holder[group].keys()) {
      const PropertyList& record = holder[group][identifier];
      const PropertyList& target = record[keys::Param1];
      // Another type leads to no profile.
      if (commandOf(record) != AssignmentCommand::Profile || !target.isInteger()) continue;
      const std::int64_t place = placeInOrder(order, target.toInt64());
      if (place != target.toInt64()) records = records.with(identifier, record.with(keys::Param1, place));
    }
    if (records != holder[group]) holder = holder.with(group, records);
  }
  return holder;
}

PropertyList withMovedTargetsEverywhere(const PropertyList& profile, const ProfileOrder& order) {
  const PropertyList moved = withMovedTargets(profile, order);
  PropertyList keymaps = moved[keys::Keymap];
  for (std::size_t position = 0; position < keymaps.elements().size(); ++position) {
    const auto index = static_cast<std::int64_t>(position);
    const PropertyList keymap = withMovedTargets(keymaps.at(index), order);
    if (keymap != keymaps.at(index)) keymaps = keymaps.replacing(index, keymap);
  }
  return keymaps == moved[keys::Keymap] ? moved : moved.with(keys::Keymap, keymaps);
}

}  // namespace

ProfileOrder orderAfterMove(std::size_t count, std::size_t from, std::size_t to) {
  ProfileOrder order(count);
  std::iota(order.begin(), order.end(), std::size_t{0});
  const auto at = [&order](std::size_t position) { return order.begin() + static_cast<std::ptrdiff_t>(position); };
  if (from < to) {
    std::rotate(at(from), at(from + 1), at(to + 1));
  } else {
    std::rotate(at(to), at(from), at(from + 1));
  }
  return order;
}

PropertyList orderRecord(const ProfileOrder& order) {
  return PropertyList::array(std::vector<PropertyList>(order.begin(), order.end()));
}

std::optional<ProfileOrder> orderOfRecord(const PropertyList& record) {
  if (!record.isArray()) return std::nullopt;
  const auto elements = record.elements();
  std::vector<bool> isThere(elements.size());
  ProfileOrder order;
  for (const PropertyList& element : elements) {
    // A negative number is too large as an unsigned one.
    const std::uint64_t position = element.toUnsigned();
    if (!element.isInteger() || position >= elements.size() || isThere[position]) return std::nullopt;
    isThere[position] = true;
    order.push_back(position);
  }
  return order;
}

std::int64_t placeInOrder(const ProfileOrder& order, std::int64_t position) {
  const auto found = std::ranges::find_if(order, [&](std::size_t each) { return std::cmp_equal(each, position); });
  return found == order.end() ? position : found - order.begin();
}

PropertyList profilesInOrder(const PropertyList& profiles, const ProfileOrder& order) {
  std::vector<PropertyList> result;
  for (const std::size_t position : order) {
    result.push_back(withMovedTargetsEverywhere(profiles.at(static_cast<std::int64_t>(position)), order));
  }
  return PropertyList::array(std::move(result));
}

PropertyList profileNames(const PropertyList& profiles) {
  std::vector<PropertyList> names;
  for (const PropertyList& profile : profiles.elements()) names.push_back(profile[keys::ProfileName]);
  return PropertyList::array(std::move(names));
}

}  // namespace vorn
