// A mouse of this machine in use, whether or not it is plugged in. It touches as little as it can: of its event nodes
// those are taken from the desktop that have a control which the engine plays, and those whose motion is to be scaled;
// the others stay the desktop's, and are not even opened while nobody listens. One thread, the engine's.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "core-engine/Log.h"
#include "core-engine/device/RealMice.h"
#include "core-engine/device/linux/HeldControls.h"
#include "core-engine/device/linux/MouseServices.h"
#include "core-engine/device/linux/NodeInUse.h"

namespace vorn::engine {

class LinuxMouse : public RealMouse, private NodeOwner {
 public:
  // All of them outlive the mouse.
  struct Surroundings {
    RunLoop& loop;
    Scheduler& scheduler;
    Log& log;
    std::function<void()> lookSoon;              // something of the mouse has gone, or may have come
    std::function<void(LinuxMouse&)> isLeaving;  // its last call; may be empty
  };

  LinuxMouse(std::string id, Surroundings surroundings);
  // Nothing stays pressed. Not to be called while one of its handlers runs.
  ~LinuxMouse() override;

  const std::string& id() const { return mId; }
  // What is plugged in now; nothing while the mouse is not. What the engine has made may be known to the desktop now.
  void update(std::optional<MouseHardware> hardware);
  const std::optional<MouseHardware>& hardware() const { return mHardware; }

  Connection connection() const override;
  std::string firmwareVersion() const override;
  int batteryPercent() const override { return mServices.batteryPercent(); }
  ChargingStatus chargingStatus() const override { return mServices.chargingStatus(); }
  void emit(const OutputEvent& event) override;
  void apply(const DeviceValues& values) override;
  void setListening(bool isListening) override;
  DeviceAbilities abilities() const override;
  void setRecord(const MouseRecord& record) override;
  void teach(Heard heard) override;
  std::int32_t resolution() const override;

 private:
  class Turn;

  RunLoop& loop() override { return mSurroundings.loop; }
  Scheduler& scheduler() override { return mSurroundings.scheduler; }
  const TranslationRules& rules() const override { return mRules; }
  bool isListening() const override { return mIsListening; }
  const PressListener::Heard& heard() const override { return mListener; }
  MadeOutput* keyboard() override { return mKeyboard.get(); }
  void tell(const DeviceEvent& event) override;
  void isReadable(NodeInUse& node) override;
  void isReady() override { pursue(); }
  void fault(std::string_view kind, const std::string& text) override;

  // It has been told what to apply.
  bool isInUse() const;
  void updateRules();
  void hardwareChanged();
  void batteryChanged();
  void goToSleep();
  NodeWishes wishesFor(const MouseNode& node) const;
  // Brings nodes and outputs to what is asked for, as far as that can be done now; the rest follows by itself.
  void pursue();
  void pursueOnce();
  void updateNodes();
  void make(std::unique_ptr<MadeOutput>& output, std::unique_ptr<OutputDevice> (*kind)());
  bool needsKeyboard() const;
  bool needsPointer() const;
  void tellAbilities();
  void drop(const NodeInUse& node);
  void releaseEmitted();
  MadeOutput* outputFor(std::uint16_t type, std::uint16_t code);
  // All that assignments may hold something on.
  std::vector<MadeOutput*> outputs();

  std::string mId;
  Surroundings mSurroundings;
  std::optional<MouseHardware> mHardware;
  MouseRecord mRecord;
  DeviceValues mValues;
  TranslationRules mRules;
  ControlSet mKept;  // the controls for which nodes are taken: assigned in whichever keymap, or taught
  HeldControls mHeld;
  MouseServices mServices;
  bool mIsListening = false;
  Heard mHeard;
  PressListener::Heard mListener;
  DeviceAbilities mToldAbilities;
  std::string mToldFirmware;
  bool mHasOutputFailed = false;
  bool mHasLostNode = false;  // to somebody else who is at the screen now
  bool mIsBusy = false;       // a node is read or pursued; what changes meanwhile is done afterwards
  bool mHasChanged = false;
  std::unique_ptr<MadeOutput> mKeyboard;
  std::unique_ptr<MadeOutput> mPointer;
  std::vector<std::unique_ptr<NodeInUse>> mNodes;
};

}  // namespace vorn::engine
