#include "core-engine/storage/SettingsStore.h"

#include <utility>

#include "core-engine/rules/BundleRules.h"

namespace vorn::engine {

SettingsStore::SettingsStore(SettingsFile& file, Log& log) : mFile(file), mLog(log) {}

void SettingsStore::load(const FactoryProfile& factoryProfile) {
  const auto check = [&](const PropertyList& contents, std::string& reason) -> std::optional<PropertyList> {
    if (isCompleteBundle(contents)) return contents;
    auto repaired = repairedBundle(contents, factoryProfile(), &reason);
    if (repaired) mLog.line("the stored settings were incomplete; factory values stand in for what was missing");
    return repaired;
  };
  mBundle = mFile.load(check).value_or(PropertyList());
  mIsOnDisk = !isEmpty();
}

void SettingsStore::fill(const PropertyList& bundle) {
  if (!isEmpty()) return;
  save(bundle);
  mBundle = bundle;
}

SettingsStore::Outcome SettingsStore::apply(const Transformation& transformation) {
  if (isEmpty()) return Outcome::Refused;
  const std::optional<PropertyList> changed = transformation(mBundle);
  if (!changed || !isCompleteBundle(*changed)) return Outcome::Refused;
  const bool isSame = *changed == mBundle;
  if (isSame && mIsOnDisk) return Outcome::Done;
  if (!save(*changed)) return Outcome::NotSaved;
  const PropertyList before = std::exchange(mBundle, *changed);
  if (mChangeHandler && !isSame) mChangeHandler(before, mBundle);
  return Outcome::Done;
}

bool SettingsStore::save(const PropertyList& bundle) {
  std::string error;
  if (!mFile.save(bundle, error)) {
    // A slider that is dragged on a full disk would otherwise tell the same at every step.
    if (error != mLastSaveError) mLog.line("cannot save the settings in " + mFile.folder() + ": " + error);
    mLastSaveError = error;
    return false;
  }
  if (!mLastSaveError.empty()) mLog.line("the settings are saved again");
  mLastSaveError.clear();
  mIsOnDisk = true;
  return true;
}

}  // namespace vorn::engine
