// The values of "ReturnStatus" in the answers to requests that change settings.
#pragma once

#include <cstdint>

namespace vorn {

enum class ReturnStatus : std::int32_t {
  Done = 0,
  NoSettings = 1,     // the engine has no settings, and no default settings to begin with
  Malformed = 2,      // a value that the request needs is missing or of another type
  OutOfRange = 3,     // no such position, no room for one more, or the last one
  NotSaved = 4,       // the disk did not take the change
  TooLarge = 5,       // a record beyond the size that a record may have
  PartlyRefused = 6,  // some values were unusable; the others are in force
  NotRunning = 7,     // the client has no recording or capture, or nothing was recorded
  NoMouse = 8,        // the client was told that no mouse is connected, and has read no settings since
  Outdated = 9,       // the client saw another list, or another sequence, than there is now
};
inline constexpr ReturnStatus lastReturnStatus = ReturnStatus::Outdated;

// Is the change in force, if only in part?
constexpr bool isChanged(ReturnStatus status) {
  return status == ReturnStatus::Done || status == ReturnStatus::PartlyRefused;
}

}  // namespace vorn
