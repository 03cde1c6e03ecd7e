// What the Buttons tab asks of its owner. Main thread; each call blocks until the engine answered or the wait ended.
#pragma once

#include "model/PropertyList.h"

namespace skarn {

class MouseButtonDelegate {
 public:
  virtual ~MouseButtonDelegate() = default;

  // Changes groups of the selected profile (of the active one when none is selected), or of the profile at an index.
  virtual void updateButtonAssignmentWithSettings(const vorn::PropertyList& settings) = 0;
  virtual void updateButtonAssignmentWithSettings(const vorn::PropertyList& settings, int toProfileIndex) = 0;
  // Replaces every profile; nothing is reloaded.
  virtual void updateProfileKeyInDictionaryWithDictionary(const vorn::PropertyList& profiles) = 0;
  virtual void startSingleKeyRecording() = 0;
  virtual void stopSingleKeyRecording() = 0;
  virtual void selectTabAtIndex(int index) = 0;
  virtual void switchProfileWithID(int profileID) = 0;
};

}  // namespace skarn
