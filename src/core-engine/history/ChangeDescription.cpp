#include "core-engine/history/ChangeDescription.h"

#include <algorithm>
#include <cstdint>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include "model/Assignments.h"
#include "model/MacroEvents.h"
#include "model/SettingsKeys.h"
#include "protocol/History.h"

namespace vorn::engine {

namespace {

namespace kinds = history::kinds;
namespace words = history::keys;

struct KindOfKey {
  keys::Key key;
  kinds::Kind kind;
};

// Of a profile record; device-wide ones are repeated in the device settings.
constexpr KindOfKey kindsOfKeys[] = {
    {keys::KeymapID, kinds::KeymapInForce},
    {keys::DPIX, kinds::Sensitivity},
    {keys::DPIY, kinds::Sensitivity},
    {keys::IndependentXYOn, kinds::Sensitivity},
    {keys::Stages, kinds::Stages},
    {keys::StageValue, kinds::Stages},
    {keys::PollingRate, kinds::PollingRate},
    {keys::Acceleration, kinds::Acceleration},
    {keys::AccelerationOn, kinds::Acceleration},
    {keys::LEDColors, kinds::Light},
    {keys::LEDEffects, kinds::Light},
    {keys::ScrollLED, kinds::Light},
    {keys::BrightnessKBNormal, kinds::Light},
    {keys::BrightnessNormal, kinds::Power},
    {keys::BrightnessBattery, kinds::Power},
    {keys::PowerSaver, kinds::Power},
    {keys::BatteryCriticalLevel, kinds::Power},
    {keys::AppInfo, kinds::Application},
    {keys::AutoSwitchOn, kinds::Application},
    {keys::ProfileOSDOn, kinds::Messages},
    {keys::SensitivityOSDOn, kinds::Messages},
    {keys::ProfileName, kinds::ProfileRenamed},
    {keys::Keymap, kinds::Assignment},
    {keys::Keys, kinds::Assignment},
    {keys::Buttons, kinds::Assignment},
};

kinds::Kind kindOfKey(std::string_view key) {
  const auto* const found = std::find_if(std::begin(kindsOfKeys), std::end(kindsOfKeys),
                                         [&](const KindOfKey& each) { return each.key == key; });
  return found == std::end(kindsOfKeys) ? kinds::Settings : found->kind;
}

// What only a profile has; beside the profiles it is a setting that nobody knows.
bool isOfProfile(kinds::Kind kind) {
  return kind == kinds::Assignment || kind == kinds::ProfileRenamed || kind == kinds::KeymapInForce;
}

// Collects what the edits are about.
class Description {
 public:
  Description(const PropertyList& before, const PropertyList& after, const ChangeOrigin& origin)
      : mBefore(before), mAfter(after), mOrigin(origin) {}

  void note(const Edit& edit) {
    const auto place = edit.place.elements();
    const std::string_view top = place.front().string();
    const PropertyList& second = edit.place.at(1);
    const std::string_view key = edit.place.at(2).string();
    if (top == keys::Profiles && place.size() == 2 && edit.isSplice) {
      mProfiles.note(edit);
    } else if (top == keys::Macros && place.size() == 2 && edit.isSplice) {
      mMacros.note(edit);
    } else if (top == keys::Profiles) {
      mChangedProfiles.insert(second.toInt64());
      mKinds.insert(kindOfKey(key));
      if (kindOfKey(key) == kinds::Assignment) noteAssignment(edit);
    } else if (top == keys::Macros) {
      mChangedMacros.insert(second.toInt64());
      mKinds.insert(kindOfMacroEdit(edit));
    } else if (second.string() == keys::ActiveProfile) {
      // A profile that comes or goes takes it along.
      mIsSwitch = edit.before != edit.after;
    } else if (top == keys::DeviceSettings && !isOfProfile(kindOfKey(second.string()))) {
      mKinds.insert(kindOfKey(second.string()));
    } else {
      mKinds.insert(kinds::Settings);
    }
  }

  PropertyList take() const {
    if (mProfiles.hasChanged() || mMacros.hasChanged()) return ofRecords();
    if (mKinds.empty() && mIsSwitch) {
      const PropertyList& profile = activeOf(mAfter);
      return described(kinds::ProfileSwitched, {{words::Profile, profile[keys::ProfileName]}});
    }
    return ofValues();
  }

 private:
  // Records that came and went.
  struct Records {
    std::vector<PropertyList> gone;
    std::vector<PropertyList> come;

    void note(const Edit& edit) {
      gone.insert(gone.end(), edit.before.elements().begin(), edit.before.elements().end());
      come.insert(come.end(), edit.after.elements().begin(), edit.after.elements().end());
    }
    bool hasChanged() const { return !gone.empty() || !come.empty(); }
  };

  using Words = std::vector<PropertyList::Pair>;

  static PropertyList described(kinds::Kind kind, Words subject) {
    std::erase_if(subject, [](const auto& each) { return each.second.isNone(); });
    subject.emplace_back(words::Kind, kind);
    return PropertyList::dictionary(std::move(subject));
  }

  static const PropertyList& activeOf(const PropertyList& bundle) {
    return bundle[keys::Profiles].at(bundle[keys::DeviceSettings][keys::ActiveProfile].toInt64());
  }

  static PropertyList countUnlessOne(std::size_t count) { return count == 1 ? PropertyList() : PropertyList(count); }

  PropertyList ofRecords() const {
    if (mProfiles.hasChanged() && mMacros.hasChanged()) return described(kinds::Settings, {});
    const bool isProfiles = mProfiles.hasChanged();
    const Records& records = isProfiles ? mProfiles : mMacros;
    if (!records.gone.empty() && !records.come.empty()) {
      return described(isProfiles ? kinds::ProfilesReordered : kinds::Settings, {});
    }
    const bool isAdded = records.gone.empty();
    const std::vector<PropertyList>& which = isAdded ? records.come : records.gone;
    const PropertyList name = which.front()[isProfiles ? keys::ProfileName : keys::MacroName];
    const kinds::Kind profileKind = isAdded ? kinds::ProfileAdded : kinds::ProfileDeleted;
    const kinds::Kind macroKind = isAdded ? kinds::MacroAdded : kinds::MacroDeleted;
    return described(isProfiles ? profileKind : macroKind, {{isProfiles ? words::Profile : words::Macro, name},
                                                            {words::Count, countUnlessOne(which.size())}});
  }

  PropertyList ofValues() const {
    if (mKinds.empty()) return described(kinds::Settings, {});
    if (!mChangedMacros.empty()) return ofMacro();
    const PropertyList profile = changedProfile();
    if (mOrigin.isRestoring && !profile.isNone()) {
      return described(kinds::ProfileRestored, {{words::Profile, profile[keys::ProfileName]}});
    }
    // Another stage has its own sensitivity.
    const bool isOfStage = mKinds == std::set<kinds::Kind>{kinds::Sensitivity, kinds::Stages};
    const kinds::Kind kind = isOfStage ? kinds::Stages : *mKinds.begin();
    if (mKinds.size() > 1 && !isOfStage) {
      return described(mChangedProfiles.size() == 1 ? kinds::ProfileChanged : kinds::Settings,
                       {{words::Profile, profile[keys::ProfileName]}});
    }
    if (kind == kinds::Assignment) return ofAssignments(profile);
    PropertyList newName;
    PropertyList keymap;
    if (kind == kinds::ProfileRenamed) {
      newName = mAfter[keys::Profiles].at(*mChangedProfiles.begin())[keys::ProfileName];
    } else if (kind == kinds::KeymapInForce) {
      keymap = mAfter[keys::Profiles].at(*mChangedProfiles.begin())[keys::KeymapID];
    }
    return described(
        kind, {{words::Profile, profile[keys::ProfileName]}, {words::NewName, newName}, {words::Keymap, keymap}});
  }

  kinds::Kind kindOfMacroEdit(const Edit& edit) const {
    const std::span<const PropertyList> place = edit.place.elements();
    if (place[2].string() == keys::MacroName) return kinds::MacroRenamed;
    if (mOrigin.request == MessageID::SaveRecordedEvents) return kinds::MacroRecorded;
    const bool isOfEvent = place[2].string() == keys::Sequence && place.size() > 3;
    return isOfEvent && place.back().string() == keys::Delay ? kinds::MacroDelays : kinds::MacroEvents;
  }

  PropertyList ofMacro() const {
    const bool isOfEvents = mKinds == std::set<kinds::Kind>{kinds::MacroDelays, kinds::MacroEvents} ||
                            mKinds == std::set<kinds::Kind>{kinds::MacroEvents};
    if (mChangedMacros.size() == 1 && mChangedProfiles.empty() && isOfEvents) return ofMacroEvents();
    if (mKinds.size() > 1 || mChangedMacros.size() > 1 || !mChangedProfiles.empty()) {
      return described(kinds::Settings, {});
    }
    const std::int64_t position = *mChangedMacros.begin();
    const kinds::Kind kind = *mKinds.begin();
    const PropertyList newName =
        kind == kinds::MacroRenamed ? mAfter[keys::Macros].at(position)[keys::MacroName] : PropertyList();
    return described(kind, {{words::Macro, changedMacro()[keys::MacroName]}, {words::NewName, newName}});
  }

  PropertyList ofMacroEvents() const {
    const PropertyList before = macroEvents(changedMacro());
    const PropertyList after = macroEvents(mAfter[keys::Macros].at(*mChangedMacros.begin()));
    const PropertyList& name = changedMacro()[keys::MacroName];
    if (!isPartOf(after, before)) return described(kinds::MacroEvents, {{words::Macro, name}});
    const PropertyList count = after.isEmpty() ? PropertyList() : PropertyList(before.size() - after.size());
    return described(kinds::MacroEventsRemoved, {{words::Macro, name}, {words::Count, count}});
  }

  // Whether events are fewer than others and stand among them in this order, whatever their delays are.
  static bool isPartOf(const PropertyList& events, const PropertyList& others) {
    if (events.size() >= others.size()) return false;
    const auto rest = events.elements();
    auto next = rest.begin();
    for (const PropertyList& other : others.elements()) {
      if (next != rest.end() && next->without(keys::Delay) == other.without(keys::Delay)) ++next;
    }
    return next == rest.end();
  }

  const PropertyList& changedMacro() const { return mBefore[keys::Macros].at(*mChangedMacros.begin()); }

  // As it was called before the change; none where there are several.
  PropertyList changedProfile() const {
    if (mChangedProfiles.size() != 1) return {};
    return mBefore[keys::Profiles].at(*mChangedProfiles.begin());
  }

  void noteAssignment(const Edit& edit) {
    const PropertyList& place = edit.place;
    if (place.at(2).string() != keys::Keymap) {
      // A group that had been another than the keymap's.
      mControls.insert(place.at(3).toString());
      return;
    }
    mKeymaps.insert(place.at(3).toInt64());
    mControls.insert(place.at(5).toString());
    mGroup = place.at(4).toString();
  }

  PropertyList ofAssignments(const PropertyList& profile) const {
    PropertyList keymap = mKeymaps.size() == 1 ? PropertyList(*mKeymaps.begin()) : PropertyList();
    if (mControls.size() != 1 || mKeymaps.size() != 1 || mChangedProfiles.size() != 1) {
      return described(kinds::Assignment, {{words::Profile, profile[keys::ProfileName]},
                                           {words::Keymap, keymap},
                                           {words::Controls, fewControls()},
                                           {words::Count, std::max(mControls.size(), mKeymaps.size())}});
    }
    const PropertyList& record = mAfter[keys::Profiles].at(*mChangedProfiles.begin())[keys::Keymap].at(
        *mKeymaps.begin())[mGroup][*mControls.begin()];
    return described(kinds::Assignment, {{words::Profile, profile[keys::ProfileName]},
                                         {words::Keymap, keymap},
                                         {words::Control, *mControls.begin()},
                                         {words::Command, record[keys::Command].toInt()},
                                         {words::Param1, textOf(record[keys::Param1])},
                                         {words::Param2, textOf(record[keys::Param2])},
                                         {words::Target, targetOf(record)}});
  }

  // None where they are too many to be named, or not of one keymap.
  PropertyList fewControls() const {
    constexpr std::size_t most = 3;
    if (mControls.size() < 2 || mControls.size() > most || mKeymaps.size() != 1 || mChangedProfiles.size() != 1)
      return {};
    return PropertyList::array({mControls.begin(), mControls.end()});
  }

  static PropertyList textOf(const PropertyList& value) {
    return value.isString() ? value : PropertyList(std::to_string(value.toInt64()));
  }

  PropertyList targetOf(const PropertyList& record) const {
    const std::int64_t position = record[keys::Param1].toInt64();
    switch (commandOf(record)) {
      case AssignmentCommand::Macro:
        return mAfter[keys::Macros].at(position)[keys::MacroName];
      case AssignmentCommand::Profile:
        return mAfter[keys::Profiles].at(position)[keys::ProfileName];
      default:
        return {};
    }
  }

  const PropertyList& mBefore;
  const PropertyList& mAfter;
  const ChangeOrigin& mOrigin;
  Records mProfiles;
  Records mMacros;
  std::set<std::int64_t> mChangedProfiles;
  std::set<std::int64_t> mChangedMacros;
  std::set<kinds::Kind> mKinds;
  std::set<std::string> mControls;
  std::set<std::int64_t> mKeymaps;
  std::string mGroup;
  bool mIsSwitch = false;
};

}  // namespace

PropertyList descriptionOf(const Edits& edits, const PropertyList& before, const PropertyList& after,
                           const ChangeOrigin& origin) {
  Description description(before, after, origin);
  for (const Edit& edit : edits) description.note(edit);
  return description.take();
}

}  // namespace vorn::engine
