// Changes that clients ask for at random.
#pragma once

#include <algorithm>
#include <cstddef>
#include <initializer_list>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "core-engine/TestMacros.h"
#include "core-engine/rules/MacroRules.h"
#include "core-engine/rules/ProfileRules.h"
#include "model/SettingsKeys.h"
#include "protocol/EngineProtocol.h"

namespace vorn::engine::test {

struct RandomChange {
  MessageID request;
  PropertyList keys;    // of the request
  PropertyList bundle;  // after it; as before where it is refused
};

class RandomChanges {
 public:
  // factoryProfile: what a profile gets that lacks something.
  explicit RandomChanges(unsigned seed, PropertyList factoryProfile = {})
      : mRandom(seed), mFactoryProfile(std::move(factoryProfile)) {}

  // 0 to count - 1.
  int number(int count) { return std::uniform_int_distribution(0, count - 1)(mRandom); }

  RandomChange next(const PropertyList& bundle) {
    const int profileID = number(static_cast<int>(bundle["Profiles"].size()));
    const int macroID = number(std::max(static_cast<int>(bundle["Macros"].size()), 1));
    const int kind = number(12);
    if (kind <= 3) return ofProfiles(bundle, kind, profileID);
    if (kind <= 8) return ofMacros(bundle, kind, macroID);
    const PropertyList changed = settings();
    return {MessageID::UpdateProfile,
            words({{requestKeys::ProfileID, profileID}, {requestKeys::DeviceSettingsDictionary, changed}}),
            kept(withUpdatedProfile(bundle, profileID, changed), bundle)};
  }

 private:
  static constexpr std::size_t mostProfiles = 5;
  static constexpr std::size_t mostMacros = 8;

  static PropertyList words(std::initializer_list<PropertyList::Pair> entries) {
    return PropertyList::dictionary(entries);
  }
  static PropertyList kept(const ProfileChange& change, const PropertyList& bundle) {
    return change.bundle.value_or(bundle);
  }
  static PropertyList kept(const MacroResult& result, const PropertyList& bundle) {
    return result.status == ReturnStatus::Done ? result.value : bundle;
  }

  RandomChange ofProfiles(const PropertyList& bundle, int kind, int profileID) {
    const PropertyList position = words({{requestKeys::ProfileID, profileID}});
    const PropertyList& profiles = bundle["Profiles"];
    switch (kind) {
      case 0:
        if (profiles.size() < mostProfiles) {
          const PropertyList record = profiles.at(profileID).with("ProfileName", name());
          return {MessageID::AddProfile, words({{requestKeys::DeviceSettingsDictionary, record}}),
                  kept(withAddedProfile(bundle, record, mFactoryProfile), bundle)};
        }
        [[fallthrough]];
      case 1:
        return {MessageID::DeleteProfile, position, kept(withoutProfile(bundle, profileID), bundle)};
      case 2:
        return {MessageID::SwitchProfile, position, kept(withActiveProfile(bundle, profileID), bundle)};
      default: {
        const PropertyList records = reordered(profiles);
        return {MessageID::ReplaceAllProfiles, words({{requestKeys::AllProfiles, records}}),
                kept(withReplacedProfiles(bundle, records, mFactoryProfile), bundle)};
      }
    }
  }

  RandomChange ofMacros(const PropertyList& bundle, int kind, int macroID) {
    const PropertyList position = words({{requestKeys::MacroID, macroID}});
    const PropertyList& macros = bundle["Macros"];
    switch (kind) {
      case 4:
        if (macros.size() <= mostMacros) {
          const PropertyList record = words({{keys::MacroName, name()}});
          return {MessageID::AddMacro, words({{requestKeys::MacroContents, record}}),
                  kept(withAddedMacro(bundle, record), bundle)};
        }
        [[fallthrough]];
      case 5:
        return {MessageID::DeleteMacro, position, kept(withoutMacro(bundle, macroID), bundle)};
      case 6: {
        const PropertyList contents = words({{keys::MacroID, macroID}, {keys::MacroName, name()}});
        return {MessageID::RenameMacro, words({{requestKeys::MacroContents, contents}}),
                kept(withRenamedMacro(bundle, macroID, contents[keys::MacroName]), bundle)};
      }
      case 7: {
        const PropertyList contents = words({{keys::MacroID, macroID},
                                             {keys::MacroName, macros.at(macroID)[keys::MacroName].string()},
                                             {keys::Sequence, sequence(macros.at(macroID))}});
        return {MessageID::ReplaceMacroSequence, words({{requestKeys::MacroContents, contents}}),
                kept(withReplacedSequence(bundle, contents), bundle)};
      }
      default: {
        const int row = number(4);
        return {MessageID::RemoveMacroEvent, position.with(requestKeys::MacroEventTableIndex, row),
                kept(withoutRow(bundle, macroID, row), bundle)};
      }
    }
  }

  std::string name() { return "Name " + std::to_string(number(6)); }
  // Some events, or some more than the macro has.
  PropertyList sequence(const PropertyList& macro) {
    std::vector<PropertyList> events;
    if (number(2) == 0) {
      const auto former = macro[keys::Sequence][keys::Events].elements();
      events.assign(former.begin(), former.end());
    }
    for (int left = number(4) + 1; left > 0; --left) events.push_back(keyPress(4 + number(20), number(100)));
    return sequenceOf(std::move(events));
  }
  PropertyList reordered(const PropertyList& records) {
    std::vector<PropertyList> result(records.elements().begin(), records.elements().end());
    std::shuffle(result.begin(), result.end(), mRandom);
    return PropertyList::array(std::move(result));
  }
  PropertyList settings() {
    const PropertyList group =
        words({{std::to_string(number(2) == 0 ? 20 : 43), assignment(number(2) == 0 ? 10 : 17, number(4), 1)}});
    switch (number(8)) {
      case 0:
        return words({{"ProfileName", name()}});
      case 1:
        return words({{"DPIX", 100 * (number(50) + 1)}});
      case 2:
        // A look at another keymap alone would be no change.
        return words({{"KeymapID", number(8)}, {"ProfileName", "Profile " + std::to_string(++mRenamed)}});
      case 3:
        return words({{"ScrollLED", number(2)}, {"LEDEffects", number(3)}});
      case 4:
        return words({{"PowerSaver", number(6)}});
      default:
        return words({{"Keys", group}});
    }
  }

  std::mt19937 mRandom;
  int mRenamed = 0;
  PropertyList mFactoryProfile;
};

}  // namespace vorn::engine::test
