#include "core-engine/rules/SensitivityRules.h"

#include <algorithm>

#include "model/ProfileKeys.h"

namespace vorn::engine {

namespace {

// A stage's sensitivity under the keys of a profile. What the stage lacks is left out.
PropertyList sensitivityOf(const PropertyList& stage) {
  PropertyList result = PropertyList::dictionary();
  const auto take = [&](keys::Key from, keys::Key to) {
    if (stage[from].isNumber()) result = result.with(to, stage[from]);
  };
  take(keys::StageDpiX, keys::DPIX);
  take(keys::StageDpiY, keys::DPIY);
  take(keys::StageIndependentXY, keys::IndependentXYOn);
  return result;
}

struct AxisKeys {
  keys::Key x;
  keys::Key y;
  keys::Key lock;  // 0: locked
};
constexpr AxisKeys profileAxes = {keys::DPIX, keys::DPIY, keys::IndependentXYOn};
constexpr AxisKeys stageAxes = {keys::StageDpiX, keys::StageDpiY, keys::StageIndependentXY};

// record: a profile or a stage.
PropertyList withLockedAxes(const PropertyList& record, const PropertyList& before, const AxisKeys& axes) {
  const auto isChanged = [&](keys::Key key) { return record[key] != before[key]; };
  const bool isLocked = record.contains(axes.lock) && record[axes.lock].toInt() == 0;
  if (!isLocked || record[axes.x] == record[axes.y]) return record;
  if (isChanged(axes.x) || (isChanged(axes.lock) && !isChanged(axes.y))) {
    return record.with(axes.y, record[axes.x]);
  }
  return isChanged(axes.y) ? record.with(axes.x, record[axes.y]) : record;
}

}  // namespace

PropertyList withLockedAxes(const PropertyList& profile, const PropertyList& before) {
  PropertyList stages = profile[keys::Stages];
  for (std::size_t index = 0; index < stages.size(); ++index) {
    const auto position = static_cast<std::int64_t>(index);
    const PropertyList& stage = stages.at(position);
    const PropertyList locked = withLockedAxes(stage, before[keys::Stages].at(position), stageAxes);
    if (locked != stage) stages = stages.replacing(position, locked);
  }
  const PropertyList result = stages == profile[keys::Stages] ? profile : profile.with(keys::Stages, stages);
  return withLockedAxes(result, before, profileAxes);
}

PropertyList stageStep(const PropertyList& profile, std::int32_t steps) {
  const PropertyList& stages = profile[keys::Stages];
  const auto count = static_cast<std::int64_t>(stages.elements().size());
  if (count == 0) return PropertyList::dictionary();
  const std::int64_t now = std::clamp<std::int64_t>(profile[keys::StageValue].toInt(), 0, count - 1);
  const std::int64_t stage = std::clamp<std::int64_t>(now + steps, 0, count - 1);
  return sensitivityOf(stages.at(stage)).with(keys::StageValue, stage);
}

PropertyList dpiStep(const PropertyList& profile, std::int32_t step) {
  PropertyList result = PropertyList::dictionary();
  for (const keys::Key axis : {keys::DPIX, keys::DPIY}) {
    const std::int32_t now = std::clamp(profile[axis].toInt(), dpiRange.minimum, dpiRange.maximum);
    result = result.with(axis, std::clamp(now + step, dpiRange.minimum, dpiRange.maximum));
  }
  return result;
}

PropertyList slowestSensitivity(const PropertyList& profile) {
  const auto stages = profile[keys::Stages].elements();
  const auto slowest = std::min_element(stages.begin(), stages.end(), [](const auto& left, const auto& right) {
    return left[keys::StageDpiX].toInt() < right[keys::StageDpiX].toInt();
  });
  return slowest == stages.end() ? PropertyList::dictionary() : sensitivityOf(*slowest);
}

}  // namespace vorn::engine
