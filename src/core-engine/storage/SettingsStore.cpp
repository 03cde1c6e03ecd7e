#include "core-engine/storage/SettingsStore.h"

#include <string>
#include <utility>

#include "core-engine/rules/BundleRules.h"
#include "model/PropertyListCodec.h"

namespace vorn::engine {

SettingsStore::SettingsStore(SettingsFile& file, Log& log, DiskThread* disk) : mFile(file), mLog(log), mDisk(disk) {}

// A save under way comes to its end, but tells nobody any more.
SettingsStore::~SettingsStore() {
  if (isSaving()) mDisk->wait();
}

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
  settle();
  if (!isEmpty()) return;
  save(bundle, [](Outcome) {}, {});
  settle();
  mBundle = bundle;
}

SettingsStore::Outcome SettingsStore::apply(const Transformation& transformation, const ChangeOrigin& origin) {
  settle();
  if (isEmpty()) return Outcome::Refused;
  Outcome result = Outcome::Refused;
  put(
      transformation(mBundle), [&result](Outcome outcome) { result = outcome; }, origin);
  settle();
  return result;
}

void SettingsStore::put(const std::optional<PropertyList>& changed, Done done, const ChangeOrigin& origin) {
  if (isEmpty() || !changed || !isCompleteBundle(*changed)) return done(Outcome::Refused);
  // A step of the history may come to no change, but is to be kept.
  const bool isStep = origin.kind == ChangeOrigin::Kind::History;
  if (*changed == mBundle && mIsOnDisk && !isStep) return done(Outcome::Done);
  save(*changed, std::move(done), origin);
}

void SettingsStore::save(const PropertyList& bundle, Done done, const ChangeOrigin& origin) {
  if (mIsClosed) return done(Outcome::NotSaved);
  // In a message the references of a small bundle may become wider, but never so that it grows beyond this.
  constexpr std::size_t certainSize = maximumSize / 4;
  std::optional<Bytes> bytes = encodeBinaryPropertyList(bundle);
  if (!bytes || (bytes->size() > certainSize && !isSendableBundle(bundle))) {
    // Whoever serves a client tells it there.
    if (origin.kind == ChangeOrigin::Kind::History) {
      std::string line = "cannot change the settings: ";
      mLog.line(line += unsendableReason);
    }
    return done(Outcome::TooLarge);
  }
  Save save{bundle, std::move(done), origin, std::move(*bytes), !isEmpty(), false, {}};
  if (save.isKept) {
    for (ChangeKeeper* keeper : mKeepers) keeper->willSave(mBundle, bundle, origin);
  }
  if (mDisk == nullptr) {
    write(save);
    return finish(save);
  }
  mSave = std::move(save);
  mDisk->start([this] { write(*mSave); });
}

// On the disk thread, where there is one.
void SettingsStore::write(Save& save) {
  if (save.isKept) {
    for (ChangeKeeper* keeper : mKeepers) keeper->keep(save.bytes);
  }
  save.isSaved = mFile.save(save.bytes, save.error);
}

void SettingsStore::useDisk(DiskThread::Work work, DiskThread::Work done) {
  if (mDisk == nullptr) {
    work();
    return done();
  }
  mUse = Use{std::move(work), std::move(done)};
  mDisk->start([this] { mUse->work(); });
}

void SettingsStore::settle() {
  for (bool isUse = true; isUse && isSaving();) {
    isUse = mUse.has_value();
    mDisk->wait();
    settleEnded();
  }
}

void SettingsStore::settleEnded() {
  if (!isSaving() || !mDisk->isIdle()) return;
  // Whoever is told may begin the next change.
  if (mUse) {
    const Use use = std::move(*mUse);
    mUse.reset();
    return use.done();
  }
  const Save save = std::move(*mSave);
  mSave.reset();
  finish(save);
}

void SettingsStore::finish(const Save& save) {
  mIsOnDisk = save.isSaved;
  const auto tellKeepers = [&] {
    if (!save.isKept) return;
    for (ChangeKeeper* keeper : mKeepers) keeper->hasEnded(save.isSaved);
  };
  if (!save.isSaved) {
    // A slider that is dragged on a full disk would otherwise tell the same at every step.
    if (save.error != mLastSaveError) {
      mLog.line("cannot save the settings in " + mFile.folder() + ": " + save.error);
    }
    mLastSaveError = save.error;
    tellKeepers();
    return save.done(Outcome::NotSaved);
  }
  if (!mLastSaveError.empty()) mLog.line("the settings are saved again");
  mLastSaveError.clear();
  const PropertyList before = std::exchange(mBundle, save.bundle);
  if (mChangeHandler && !before.isNone() && before != mBundle) mChangeHandler(before, mBundle, save.origin);
  tellKeepers();
  save.done(Outcome::Done);
}

}  // namespace vorn::engine
