// What has to wait while the settings are being saved, in the order in which it came. Nothing waits here for the disk
// with the engine's thread, as long as there is room. One thread, the engine's.
#pragma once

#include <cstddef>
#include <deque>
#include <functional>
#include <utility>

#include "core-engine/storage/SettingsStore.h"

namespace vorn::engine {

class SettingsTurns {
 public:
  using Work = std::function<void()>;

  // So much waits at most; where more comes, the thread does wait for the disk.
  static constexpr std::size_t maximumWaiting = 256;

  explicit SettingsTurns(SettingsStore& store) : mStore(store) {}  // the store outlives the turns

  // Work that reads or changes the settings: done within the call where nothing waits and no save is under way,
  // otherwise when all that came before is done and saved.
  void whenSaved(Work work) { add({std::move(work), true}); }
  // Work that has nothing to do with the settings, and passes nothing by that came before.
  void inTurn(Work work) { add({std::move(work), false}); }

  // Does what need not wait any more. To be called whenever a save has ended.
  void goOn();

  bool isEmpty() const { return mWaiting.empty(); }
  // Whether whenSaved() does its work within the call.
  bool isFree() const { return isEmpty() && !mStore.isSaving(); }

 private:
  struct Turn {
    Work work;
    bool needsSettings = false;
  };

  void add(Turn turn);
  bool mayBegin(const Turn& turn) const { return !turn.needsSettings || !mStore.isSaving(); }

  SettingsStore& mStore;
  std::deque<Turn> mWaiting;
};

}  // namespace vorn::engine
