// Changes that the mouse itself makes in the profiles, some for good and some only while a control is held. One thread,
// the engine's.
//
// Where two held controls change the same one after the other, it goes back to what was before the first when both are
// let go, in whichever order. What somebody else changed meanwhile stays as it is.
//
// No change waits for the disk: it is in force when the store's save has ended, and nothing but release() and
// takeBackReleased() may be called before that.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "core-engine/storage/SettingsStore.h"
#include "model/ProfileOrder.h"
#include "model/PropertyList.h"

namespace vorn::engine {

class ProfileChanger {
 public:
  explicit ProfileChanger(SettingsStore& store) : mStore(store) {}  // the store outlives the changer

  // The record of the active profile; none while there are no settings.
  const PropertyList& activeProfile() const;
  // A profile that does not exist is not switched to.
  void switchTo(
      const PropertyList& profileID, SettingsStore::Done done = [](SettingsStore::Outcome) {});

  // Puts the settings, keys of a profile record, into the active profile.
  void change(const PropertyList& settings);
  // The same for as long as the control is held.
  void changeWhileHeld(std::string_view control, const PropertyList& settings);
  // Takes back what the control changed while it was held, if it changed anything. What the disk does not take is
  // kept for takeBackReleased.
  void release(std::string_view control);
  // Tries again what could not be saved when its control was let go; nothing happens where there is no such thing, or
  // where a save is under way.
  void takeBackReleased();

  // A profile was deleted: what was changed in it is forgotten, what was changed in one behind it moves up with it.
  void profileDeleted(std::int64_t profileID);
  // The profiles stand in another order now: what was changed in one goes with it.
  void profilesReordered(const ProfileOrder& order);
  // All profiles were replaced, these former ones (an array of records): forgets what was changed in a profile that has
  // now another name or another value in the place of what was changed.
  void profilesReplaced(const PropertyList& former);
  // These former profiles (an array of records) stand at these places now, one for each, negative where it is gone:
  // what was changed in one goes with it, and is forgotten where another value is in its place now.
  void profilesMoved(const PropertyList& former, const std::vector<std::int64_t>& places);

 private:
  struct HeldChange {
    std::string control;
    std::int64_t profileID = 0;
    PropertyList before;  // what the keys had
    PropertyList after;   // what they had then
    bool isHeld = true;   // false: the take-back was not saved yet
  };
  std::int64_t activeProfileID() const;
  const PropertyList& profileAt(std::int64_t profileID) const;
  void changeProfile(std::int64_t profileID, const PropertyList& settings, SettingsStore::Done done);
  // What was let go, from this position on.
  void takeBackFrom(std::size_t position);
  // done: false when it could not be saved.
  void takeBack(std::size_t position, const std::function<void(bool isDone)>& done);

  SettingsStore& mStore;
  std::vector<HeldChange> mHeldChanges;  // the latest last
};

}  // namespace vorn::engine
