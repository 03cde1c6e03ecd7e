// Which mouse is used: the stored choice makes the device, and what a person tells of a mouse is kept. One thread, the
// engine's.
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "core-engine/Log.h"
#include "core-engine/Scheduler.h"
#include "core-engine/device/MouseFile.h"
#include "core-engine/device/MouseInUse.h"
#include "core-engine/device/RealMice.h"
#include "core-engine/device/VirtualDevice.h"
#include "core-engine/storage/SettingsTurns.h"

namespace vorn::engine {

class Mice {
 public:
  // A teaching that nothing was taught in ends after this time.
  static constexpr Scheduler::Duration teachingTime = std::chrono::minutes(1);

  enum class Fault : std::uint8_t { None, NotFound, NotAllowed, NotTeachable, BadArgument, Busy, NotSaved };
  struct Outcome {
    Fault fault = Fault::None;
    std::string text{};  // English; empty without a fault
    friend bool operator==(const Outcome&, const Outcome&) = default;
  };
  // Called once, when what was asked for is on the disk and in force, or refused.
  using Done = std::function<void(const Outcome& outcome)>;

  struct Listed {
    FoundMouse mouse;  // of the virtual one and of one that is not plugged in, as far as that can be said
    bool isInUse = false;
    bool isPresent = false;
    std::vector<std::string> taught;             // identifiers of controls
    std::int32_t resolution = 0;                 // DPI without scaling; 0 where nobody knows
    std::optional<DeviceAbilities> abilities{};  // of the one in use
    friend bool operator==(const Listed&, const Listed&) = default;
  };

  // A teaching that has ended.
  struct Taught {
    std::string control;
    bool isTaught = false;
    std::string source{};  // "BTN_SIDE"; of a wheel or a hat with its direction, "REL_WHEEL +"
    std::string former{};  // the control that had the source before
    friend bool operator==(const Taught&, const Taught&) = default;
  };

  struct Parts {
    FileSystem& files;
    Log& log;
    Scheduler& scheduler;
    SettingsStore& store;  // whose disk the file is written on
    SettingsTurns& turns;
    VirtualDevice& virtualMouse;
    RealMice& realMice;
    MouseInUse& inUse;
  };

  // All of them outlive the mice. Nothing is touched yet.
  Mice(const Parts& parts, const std::string& folder);
  ~Mice();
  Mice(const Mice&) = delete;
  Mice& operator=(const Mice&) = delete;

  // Puts the stored choice in use. Once, before the disk has anything else to do.
  void load();

  // Called before another mouse comes in use, to let go of what is held with the one before.
  void setLeavingHandler(std::function<void()> handler) { mLeaving = std::move(handler); }
  // What the list says may be different now.
  void setChangeHandler(std::function<void()> handler) { mChanged = std::move(handler); }
  void setTaughtHandler(std::function<void(const Taught&)> handler) { mTaught = std::move(handler); }

  // By name, the virtual mouse last; looks once more.
  std::vector<Listed> list() const;

  void choose(const std::string& id, const Done& done);
  // The next source of the mouse in use becomes the control. The teaching belongs to the teacher, a connection; it ends
  // with the source, with an empty control, with the teacher, with the mouse's use, and when its time is over.
  void teach(const std::string& control, const std::string& teacher, const Done& done);
  // The connection is gone.
  void teacherLost(const std::string& teacher);
  // Empty: all controls.
  void forget(const std::string& control, const Done& done);
  void setResolution(std::uint32_t resolution, const Done& done);

  bool isVirtualInUse() const { return mReal == nullptr; }
  // To be called where the mouse in use has come or gone, or can do something else.
  void tellChanged() const;

 private:
  struct Teaching {
    std::string teacher;
    std::string control;
    Scheduler::Ticket end = 0;  // of its time; 0 when a source has been heard
  };

  Listed listed(const FoundMouse& found, bool isPresent) const;
  Listed listedVirtual() const;
  void chooseNow(const std::string& id, const Done& done);
  void use(const std::string& id);
  // The mouse in use may have come back in another socket, with another ID.
  void followSoon();
  void follow();
  bool isTeaching() const { return !mTeaching.teacher.empty(); }
  void teachNow(const std::string& control, const std::string& teacher, const Done& done);
  void callOff();
  Outcome refusalToTeach(const std::string& control) const;
  void hear(const EventSource& source);
  void take(const std::string& control, const EventSource& source);
  void end(const Taught& taught);
  // Changes what is known of the mouse in use.
  void changeRecord(const std::function<void(MouseRecord&)>& change, const Done& done);
  // Keeps this in the place of what is known, and does the work then.
  void keep(const KnownMice& known, const std::function<void()>& work, const Done& done);

  Parts mParts;
  MouseFile mFile;
  KnownMice mKnown;
  std::unique_ptr<RealMouse> mReal;                 // in use; null: the virtual one
  std::vector<std::unique_ptr<RealMouse>> mFormer;  // were in use until now
  Scheduler::Ticket mEndOfFormer = 0;
  std::set<std::string, std::less<>> mBeside;  // IDs of its kind that were there together with the mouse in use
  Scheduler::Ticket mFollowing = 0;
  Teaching mTeaching;
  std::function<void()> mLeaving;
  std::function<void()> mChanged;
  std::function<void(const Taught&)> mTaught;
};

}  // namespace vorn::engine
