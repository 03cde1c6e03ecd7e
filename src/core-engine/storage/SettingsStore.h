// The settings in force: the bundle in memory. What takes its place is on the disk before it comes into force. One
// thread; saves are done on another where there is one, one after the other.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "core-engine/Log.h"
#include "core-engine/storage/ChangeKeeper.h"
#include "core-engine/storage/ChangeOrigin.h"
#include "core-engine/storage/DiskThread.h"
#include "core-engine/storage/SettingsFile.h"
#include "model/PropertyList.h"

namespace vorn::engine {

class SettingsStore {
 public:
  // Makes the new bundle of the old one, without any other effect; nothing refuses the change.
  using Transformation = std::function<std::optional<PropertyList>(const PropertyList& bundle)>;
  // The factory's profile record, for what a stored profile lacks; none where there is no factory file.
  using FactoryProfile = std::function<PropertyList()>;

  // Told of a bundle that came into force in place of another one, when it is on the disk.
  using ChangeHandler =
      std::function<void(const PropertyList& before, const PropertyList& after, const ChangeOrigin& origin)>;

  enum class Outcome {
    Done,      // the result of the transformation is in force and on the disk
    Refused,   // by the transformation, or because its result is no complete bundle
    NotSaved,  // the disk did not take it; the old bundle is in force
    TooLarge,  // no message could carry the result to a client; the old bundle is in force
  };

  using Done = std::function<void(Outcome outcome)>;

  // All of them outlive the store. Without a disk thread every change is saved within the call; with one, settle() is
  // to be called on the store's thread soon after each work of it.
  SettingsStore(SettingsFile& file, Log& log, DiskThread* disk = nullptr);
  ~SettingsStore();
  SettingsStore(const SettingsStore&) = delete;
  SettingsStore& operator=(const SettingsStore&) = delete;

  // One handler, an empty one for none. It must not change the settings itself.
  void setChangeHandler(ChangeHandler handler) { mChangeHandler = std::move(handler); }

  // Is told of each change that is saved in the place of another bundle, after those that were added before. Outlives
  // the store.
  void addKeeper(ChangeKeeper& keeper) { mKeepers.push_back(&keeper); }

  // Takes what the disk holds; incomplete contents are completed. The factory profile is asked for only then.
  void load(const FactoryProfile& factoryProfile);

  // True until there is a bundle, stored or filled in.
  bool isEmpty() const { return mBundle.isNone(); }
  // Complete as BundleRules.h has it; none while the store is empty.
  const PropertyList& bundle() const { return mBundle; }

  // Gives an empty store its first bundle, a complete one. It comes into force also where the disk does not take it:
  // factory settings can be had again. A store that has a bundle keeps it.
  void fill(const PropertyList& bundle);

  // Puts the changed bundle, made of the one in force, in its place; nothing is a refusal. An empty store refuses. A
  // bundle equal to the one in force is done without a save, unless the last save failed or the history asks for it.
  // done is called once: within the call, or when the save has ended and the change handler has been told. Only while
  // no save is under way.
  void put(const std::optional<PropertyList>& changed, Done done, const ChangeOrigin& origin = {});
  // The same with the result of the transformation, for which it waits; a save under way comes to its end first.
  Outcome apply(const Transformation& transformation, const ChangeOrigin& origin = {});

  // Does other work where the disk is. Until it has ended it counts as a save under way; done is called then, which may
  // begin a change. Only while no save is under way.
  void useDisk(DiskThread::Work work, DiskThread::Work done);

  // Whether a save is under way; the bundle in force is still the old one.
  bool isSaving() const { return mSave.has_value() || mUse.has_value(); }
  // Waits for the save under way, puts its bundle in force and calls its done; after other work of
  // the disk also for the save that its done begins.
  void settle();
  // The same for a save whose work has ended; nothing where it has not.
  void settleEnded();

  // From now on nothing is saved: every change fails as NotSaved. A save under way is not touched.
  void close() { mIsClosed = true; }

 private:
  // The disk thread writes the last two; nobody else touches them until its work has ended.
  struct Save {
    PropertyList bundle;
    Done done;
    ChangeOrigin origin;
    Bytes bytes;
    bool isKept = false;  // told to the keepers
    bool isSaved = false;
    std::string error;
  };

  struct Use {
    DiskThread::Work work;
    DiskThread::Work done;
  };

  void save(const PropertyList& bundle, Done done, const ChangeOrigin& origin);
  void write(Save& save);
  void finish(const Save& save);

  SettingsFile& mFile;
  Log& mLog;
  DiskThread* mDisk;
  ChangeHandler mChangeHandler;
  std::vector<ChangeKeeper*> mKeepers;
  PropertyList mBundle;
  std::optional<Save> mSave;  // under way on the disk thread
  std::optional<Use> mUse;    // likewise; never both
  bool mIsOnDisk = false;     // for certain; a save that failed may have left its bundle there
  bool mIsClosed = false;
  std::string mLastSaveError;  // empty after a save that succeeded
};

}  // namespace vorn::engine
