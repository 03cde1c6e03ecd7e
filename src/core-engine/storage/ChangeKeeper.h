// Goes along with each change of the settings on its way to the disk.
#pragma once

#include "core-engine/storage/ChangeOrigin.h"
#include "model/PropertyList.h"

namespace vorn::engine {

class ChangeKeeper {
 public:
  virtual ~ChangeKeeper() = default;
  // The change is about to be saved. On the thread of the settings' store, which waits for it.
  virtual void willSave(const PropertyList& before, const PropertyList& after, const ChangeOrigin& origin) = 0;
  // The same, where the disk is: on its thread, with the bytes that the settings' file will hold, before any of them is
  // there. What cannot be kept keeps no change from being saved.
  virtual void keep(BytesView bytes) = 0;
  // What became of the change, when it is in force where it is saved. On the thread of the store.
  virtual void hasEnded(bool isSaved) = 0;
};

}  // namespace vorn::engine
