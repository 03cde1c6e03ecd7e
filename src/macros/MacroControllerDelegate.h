// What the Macros tab asks of its owner. Main thread; each call blocks until the engine answered or the wait ended. A
// macro is named by its index in the list, an event by its row in the details table.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "model/PropertyList.h"
#include "protocol/ReturnStatus.h"

namespace skarn {

class MacroControllerDelegate {
 public:
  virtual ~MacroControllerDelegate() = default;

  // What the engine said: Done means that the macro is there. None without a usable answer.
  virtual std::optional<vorn::ReturnStatus> addMacroWithSettings(const vorn::PropertyList& macro) = 0;
  virtual void deleteMacroAtIndex(int macro) = 0;
  virtual void renameMacroAtIndex(int macro, std::string_view withNewName) = 0;
  // Hands over the macros as they are stored now, through setMMacrosSettingsArray: an edit of single events does not
  // renew the list. Where there is no engine to ask, the list stays as it is, without a wait.
  virtual void reloadMacros() = 0;
  // The answer's lines come through updateSelectedMacroWithMacroDetails of the tab.
  virtual void getMacroDetailsForMacroAtIndex(int macro) = 0;
  // The event dictionary; empty without an answer.
  virtual vorn::PropertyList getSequenceDetails(std::uint8_t macro, std::uint8_t eventIndex) = 0;
  virtual void updateSequenceInfo(std::uint8_t macro, std::uint8_t eventIndex, const vorn::PropertyList& newDict) = 0;
  // The same for the other event of a pair: one change with the update before it.
  virtual void updateFurtherSequenceInfo(std::uint8_t macro, std::uint8_t eventIndex,
                                         const vorn::PropertyList& newDict) = 0;
  // Puts the whole sequence, a dictionary as in the macro's record, in the place of the macro's own. macro: its record
  // as it is known. What the engine said: it refuses a macro of another name, and as Outdated one of another sequence.
  // None without a usable answer.
  virtual std::optional<vorn::ReturnStatus> replaceSequence(const vorn::PropertyList& sequence, int ofMacroAtIndex,
                                                            const vorn::PropertyList& macro) = 0;
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
