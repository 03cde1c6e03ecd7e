// What the Macros tab asks of its owner. Main thread; each call blocks until the engine answered or the wait ended. A
// macro is named by its index in the list, an event by its row in the details table.
#pragma once

#include <cstdint>
#include <string_view>

#include "model/PropertyList.h"

namespace skarn {

class MacroControllerDelegate {
 public:
  virtual ~MacroControllerDelegate() = default;

  virtual void addMacroWithSettings(const vorn::PropertyList& macro) = 0;
  virtual void deleteMacroAtIndex(int macro) = 0;
  virtual void renameMacroAtIndex(int macro, std::string_view withNewName) = 0;
  // The record as it is stored now: an edit of single events does not renew the list of macros. What is known of it
  // where there is no answer.
  virtual vorn::PropertyList macroAtIndex(int macro) = 0;
  // The answer's lines come through updateSelectedMacroWithMacroDetails of the tab.
  virtual void getMacroDetailsForMacroAtIndex(int macro) = 0;
  // The event dictionary; empty without an answer.
  virtual vorn::PropertyList getSequenceDetails(std::uint8_t macro, std::uint8_t eventIndex) = 0;
  virtual void updateSequenceInfo(std::uint8_t macro, std::uint8_t eventIndex, const vorn::PropertyList& newDict) = 0;
  virtual void removeEventAtIndex(int event, int forMacroAtIndex) = 0;
  virtual void removeAllEventsForMacroAtIndex(int macro) = 0;
  // delay in milliseconds, or the row whose delay every event takes; see the two entries of the details menu.
  virtual void setAllEventsDelay(int delay, int forMacroAtIndex, bool hasNoDelay) = 0;
  virtual void setNewDelay(int milliseconds, int atMacroEventIndex, int forMacroAtIndex) = 0;
  virtual void startMacroRecording(bool append, int macroIndex) = 0;
  virtual void stopMacroRecording() = 0;
  virtual void saveRecordedEventsForMacroAtIndex(int macro, bool isNewRecording) = 0;
  virtual void startEditHID() = 0;
  virtual void stopSingleKeyRecording() = 0;
};

}  // namespace skarn
