#include "model/ProfileComparison.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <set>
#include <string_view>

#include "model/Assignments.h"
#include "model/ProfileKeys.h"
#include "model/SettingsKeys.h"

namespace vorn {

namespace {

struct PartOfKey {
  keys::Key key;
  ProfilePart part;
};

// In the order in which they are told. Those that are missing are other ones.
constexpr PartOfKey parts[] = {
    {keys::AppInfo, ProfilePart::Application},
    {keys::AutoSwitchOn, ProfilePart::Application},
    {keys::KeymapID, ProfilePart::Controls},
    {keys::DPIX, ProfilePart::Sensitivity},
    {keys::DPIY, ProfilePart::Sensitivity},
    {keys::IndependentXYOn, ProfilePart::Sensitivity},
    {keys::Stages, ProfilePart::Sensitivity},
    {keys::StageValue, ProfilePart::Sensitivity},
    {keys::SensitivityOSDOn, ProfilePart::Sensitivity},
    {keys::AccelerationOn, ProfilePart::Sensitivity},
    {keys::Acceleration, ProfilePart::Sensitivity},
    {keys::ScrollLED, ProfilePart::Light},
    {keys::LEDEffects, ProfilePart::Light},
    {keys::LEDColors, ProfilePart::Light},
    {keys::BrightnessKBNormal, ProfilePart::Light},
};

bool isToldAsAssignments(std::string_view key) {
  return key == keys::Keys || key == keys::Buttons || key == keys::Keymap;
}

bool isLeftOut(std::string_view key) {
  const ProfileKey* setting = profileKeyOf(key);
  return key == keys::ProfileName || (setting != nullptr && setting->scope == SettingScope::Device);
}

bool isSameAssignment(const PropertyList& left, const PropertyList& right, const Control& control) {
  const bool isLeftFactory = left.isNone() || isFactoryAssignment(left, control);
  const bool isRightFactory = right.isNone() || isFactoryAssignment(right, control);
  if (isLeftFactory || isRightFactory) return isLeftFactory == isRightFactory;
  const auto isSame = [](const PropertyList& one, const PropertyList& other) {
    return one.isString() || other.isString() ? one == other : one.toInt64() == other.toInt64();
  };
  return commandOf(left) == commandOf(right) && isSame(left[keys::Param1], right[keys::Param1]) &&
         isSame(left[keys::Param2], right[keys::Param2]);
}

template <typename Same>
bool isSameArray(const PropertyList& left, const PropertyList& right, const Same& same) {
  const auto one = left.elements();
  const auto other = right.elements();
  return std::equal(one.begin(), one.end(), other.begin(), other.end(), same);
}

bool isSameStage(const PropertyList& left, const PropertyList& right) {
  return std::ranges::all_of(std::array{keys::StageDpiX, keys::StageDpiY, keys::StageIndependentXY},
                             [&](keys::Key key) { return left[key].toInt() == right[key].toInt(); });
}

// As far as 256 steps tell them apart.
bool isSameColor(const PropertyList& left, const PropertyList& right) {
  return std::ranges::all_of(std::array{keys::Red, keys::Green, keys::Blue}, [&](keys::Key key) {
    return std::lround(left[key].toDouble() * 255) == std::lround(right[key].toDouble() * 255);
  });
}

bool isSameValue(std::string_view key, const PropertyList& left, const PropertyList& right) {
  if (left == right) return true;
  const ProfileKey* setting = profileKeyOf(key);
  if (setting == nullptr) return false;
  switch (setting->type) {
    case SettingType::Integer:
      return left.isNumber() && right.isNumber() && left.toInt64() == right.toInt64();
    case SettingType::Flag:
      return left.toBool() == right.toBool();
    case SettingType::Stages:
      return isSameArray(left, right, isSameStage);
    case SettingType::Colors:
      return isSameArray(left, right, isSameColor);
    case SettingType::Dictionary:
      return key == keys::AppInfo && left[keys::Application] == right[keys::Application] &&
             left[keys::Identifier] == right[keys::Identifier];
    default:
      return false;
  }
}

class Comparison {
 public:
  Comparison(const PropertyList& left, const PropertyList& right) : mLeft(left), mRight(right) {}

  std::vector<ProfileDifference> make() {
    for (const auto& [key, part] : parts) {
      compare(key, part);
      if (key == keys::KeymapID) compareAssignments();
    }
    std::set<std::string_view> others;
    for (const PropertyList* profile : {&mLeft, &mRight}) {
      for (const std::string_view key : profile->keys()) others.insert(key);
    }
    for (const PartOfKey& told : parts) others.erase(told.key);
    for (const std::string_view key : others) {
      if (!isLeftOut(key) && !isToldAsAssignments(key)) compare(key, ProfilePart::Other);
    }
    return std::move(mResult);
  }

 private:
  void compare(std::string_view key, ProfilePart part) {
    if (isSameValue(key, mLeft[key], mRight[key])) return;
    mResult.push_back({part, nullptr, -1, std::string(key), mLeft[key], mRight[key]});
  }

  void compareAssignments() {
    for (std::int64_t keymap = 0; keymap < static_cast<std::int64_t>(keys::keymapCount); ++keymap) {
      for (const Control& control : controls) {
        const PropertyList& left = assignmentIn(mLeft, keymap, control);
        const PropertyList& right = assignmentIn(mRight, keymap, control);
        if (isSameAssignment(left, right, control)) continue;
        mResult.push_back({ProfilePart::Controls, &control, keymap, std::string(control.group), left, right});
      }
    }
  }

  const PropertyList& mLeft;
  const PropertyList& mRight;
  std::vector<ProfileDifference> mResult;
};

}  // namespace

std::vector<ProfileDifference> profileDifferences(const PropertyList& left, const PropertyList& right) {
  return Comparison(left, right).make();
}

const PropertyList& assignmentIn(const PropertyList& profile, std::int64_t keymap, const Control& control) {
  const bool isInForce = profile[keys::KeymapID].toInt64() == keymap && profile.contains(control.group);
  const PropertyList& holder = isInForce ? profile : profile[keys::Keymap].at(keymap);
  return holder[control.group][control.identifier];
}

}  // namespace vorn
