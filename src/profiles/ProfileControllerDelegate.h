// What the Profiles tab asks of its owner. Main thread; each call blocks until the engine answered or the wait ended,
// and is followed by a reload of the tab. A profile ID is the profile's index in the list.
#pragma once

#include <optional>

#include "model/ProfileOrder.h"
#include "model/PropertyList.h"
#include "protocol/ReturnStatus.h"

namespace skarn {

class ProfileControllerDelegate {
 public:
  virtual ~ProfileControllerDelegate() = default;

  // What the engine said: Done and PartlyRefused mean that the profile is there. None without a usable answer.
  virtual std::optional<vorn::ReturnStatus> addNewProfileWithSettings(const vorn::PropertyList& profile) = 0;
  // The same for one more profile of several that come together: one change with the addition before it.
  virtual std::optional<vorn::ReturnStatus> addFurtherProfileWithSettings(const vorn::PropertyList& profile) = 0;
  virtual void deleteProfileWithProfileID(int profileID) = 0;
  virtual void switchProfileWithID(int profileID) = 0;
  virtual void renameProfileWithProfileID(int profileID, const vorn::PropertyList& andSettings) = 0;
  // Puts the profiles into this order. names: those that somebody saw who wants it, from model/ProfileOrder.h; where
  // there are others by now, nothing moves and the answer is Outdated.
  virtual std::optional<vorn::ReturnStatus> reorderProfiles(const vorn::ProfileOrder& order,
                                                            const vorn::PropertyList& names) = 0;
  // Changes the given keys of the selected profile, or of the active one when no row is selected.
  virtual void updateProfileWithSettings(const vorn::PropertyList& settings) = 0;
};

}  // namespace skarn
