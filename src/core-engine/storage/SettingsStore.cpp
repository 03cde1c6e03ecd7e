#include "core-engine/storage/SettingsStore.h"

#include <utility>

#include "core-engine/rules/BundleRules.h"
#include "model/PropertyListCodec.h"

namespace vorn::engine {

SettingsStore::SettingsStore(SettingsFile& file, Log& log) : mFile(file), mLog(log) {}

void SettingsStore::load(const FactoryProfile& factoryProfile) {
  const auto check = [&](const PropertyList& contents, std::string& reason) -> std::optional<PropertyList> {
    const bool isComplete = isCompleteBundle(contents);
    auto usable = isComplete ? contents : repairedBundle(contents, factoryProfile(), &reason);
    if (usable && !isSendableBundle(*usable)) {
      reason = unsendableReason;
      return std::nullopt;
    }
    if (usable && !isComplete)
      mLog.line("the stored settings were incomplete; factory values stand in for what was missing");
    return usable;
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
  if (const Outcome outcome = save(*changed); outcome != Outcome::Done) return outcome;
  const PropertyList before = std::exchange(mBundle, *changed);
  if (mChangeHandler && !isSame) mChangeHandler(before, mBundle);
  return Outcome::Done;
}

SettingsStore::Outcome SettingsStore::save(const PropertyList& bundle) {
  // In a message the references of a small bundle may become wider, but never so that it grows beyond this.
  constexpr std::size_t certainSize = maximumSize / 4;
  const std::optional<Bytes> bytes = encodeBinaryPropertyList(bundle);
  if (!bytes || (bytes->size() > certainSize && !isSendableBundle(bundle))) return Outcome::TooLarge;
  std::string error;
  if (!mFile.save(*bytes, error)) {
    // A slider that is dragged on a full disk would otherwise tell the same at every step.
    if (error != mLastSaveError) mLog.line("cannot save the settings in " + mFile.folder() + ": " + error);
    mLastSaveError = error;
    return Outcome::NotSaved;
  }
  if (!mLastSaveError.empty()) mLog.line("the settings are saved again");
  mLastSaveError.clear();
  mIsOnDisk = true;
  return Outcome::Done;
}

}  // namespace vorn::engine
