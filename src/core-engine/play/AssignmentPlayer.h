// Does what the controls of the mouse are assigned to: looks a pressed control up in the active profile's groups and
// carries its assignment out. One thread, the engine's.
//
// A control is let go with what it was pressed with, whatever became of its assignment meanwhile. What the mouse sends
// to the desktop also goes to the recorder and the key capture, as if it had been typed.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "core-engine/play/MacroPlayer.h"
#include "core-engine/play/OutputKeys.h"
#include "core-engine/play/ProgramLauncher.h"
#include "core-engine/requests/Request.h"
#include "model/Assignments.h"

namespace vorn::engine {

class AssignmentPlayer {
 public:
  // The parts and the launcher outlive the player.
  AssignmentPlayer(const EngineParts& parts, ProgramLauncher& launcher);
  ~AssignmentPlayer() { releaseAll(); }
  AssignmentPlayer(const AssignmentPlayer&) = delete;
  AssignmentPlayer& operator=(const AssignmentPlayer&) = delete;

  // Takes every event of the device: controls are carried out, typed keys go to the recorder and the key capture, and
  // a change of the connection lets go of everything. Events of the battery are not its concern. What a control changes
  // may still be on its way to the disk when this returns; the next event that needs the settings waits for it.
  void handle(const DeviceEvent& event);
  // Lets go of everything that is held.
  void releaseAll();

 private:
  // A pressed control.
  struct Press {
    AssignmentCommand command{};
    KeyHold hold;
    explicit Press(OutputKeys& output) : hold(output) {}
  };

  void press(const std::string& control);
  void release(const std::string& control);
  void send(const OutputEvent& event);

  bool turnsSensitivity(std::string_view control) const;
  PropertyList assignmentOf(std::string_view control) const;
  void carryOut(const std::string& control, const PropertyList& assignment, Press& press);
  void carryOutOutput(const PropertyList& assignment, Press& press);
  void pressKey(std::int64_t usage, std::int64_t modifiers, KeyHold& hold);
  void pressDefault(std::int64_t code, KeyHold& hold);
  void switchKeymap(const std::string& control, const PropertyList& assignment);
  void playMacro(const std::string& control, const PropertyList& assignment);
  void launch(const PropertyList& assignment);

  EngineParts mParts;
  ProgramLauncher& mLauncher;
  OutputKeys mOutput;
  MacroPlayer mMacros;
  std::map<std::string, std::unique_ptr<Press>, std::less<>> mPresses;
};

}  // namespace vorn::engine
