// The settings in force: the bundle in memory, changed only by transformations whose result is on the disk before it
// comes into force. One thread.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <utility>

#include "core-engine/Log.h"
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
  using ChangeHandler = std::function<void(const PropertyList& before, const PropertyList& after)>;

  enum class Outcome {
    Done,      // the result of the transformation is in force and on the disk
    Refused,   // by the transformation, or because its result is no complete bundle
    NotSaved,  // the disk did not take it; the old bundle is in force
    TooLarge,  // no message could carry the result to a client; the old bundle is in force
  };

  // The file and the log outlive the store.
  SettingsStore(SettingsFile& file, Log& log);

  // One handler, an empty one for none. It must not change the settings itself.
  void setChangeHandler(ChangeHandler handler) { mChangeHandler = std::move(handler); }

  // Takes what the disk holds; incomplete contents are completed. The factory profile is asked for only then.
  void load(const FactoryProfile& factoryProfile);

  // True until there is a bundle, stored or filled in.
  bool isEmpty() const { return mBundle.isNone(); }
  // Complete as BundleRules.h has it; none while the store is empty.
  const PropertyList& bundle() const { return mBundle; }

  // Gives an empty store its first bundle, a complete one. It comes into force also where the disk does not take it:
  // factory settings can be had again. A store that has a bundle keeps it.
  void fill(const PropertyList& bundle);

  // Changes the bundle. An empty store refuses. A result equal to the bundle in force is done without a save.
  Outcome apply(const Transformation& transformation);

 private:
  Outcome save(const PropertyList& bundle);

  SettingsFile& mFile;
  Log& mLog;
  ChangeHandler mChangeHandler;
  PropertyList mBundle;
  bool mIsOnDisk = false;
  std::string mLastSaveError;  // empty after a save that succeeded
};

}  // namespace vorn::engine
