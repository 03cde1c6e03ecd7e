// The mice of this machine, by udev. Nothing is watched before somebody asks for them. One thread, the engine's.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "core-engine/Log.h"
#include "core-engine/device/RealMice.h"
#include "core-engine/device/linux/InputWatch.h"
#include "core-engine/device/linux/LinuxMouse.h"
#include "mice/MouseFinder.h"

namespace vorn::engine {

class LinuxMice : public RealMice {
 public:
  // All of them outlive the mice.
  LinuxMice(RunLoop& loop, Scheduler& scheduler, Log& log) : mLoop(loop), mScheduler(scheduler), mLog(log) {}
  ~LinuxMice() override;
  LinuxMice(const LinuxMice&) = delete;
  LinuxMice& operator=(const LinuxMice&) = delete;

  std::vector<FoundMouse> mice() override;
  void setChangeHandler(std::function<void()> handler) override { mChangeHandler = std::move(handler); }
  void setRecords(RecordOf recordOf) override { mRecordOf = std::move(recordOf); }
  // A mouse is to be destroyed before this.
  std::unique_ptr<RealMouse> make(const std::string& id) override { return makeLinuxMouse(id); }
  std::unique_ptr<LinuxMouse> makeLinuxMouse(const std::string& id);

  // What is plugged in as this mouse, as of the latest look.
  std::optional<MouseHardware> hardware(const std::string& id) const;

 private:
  // False where it watches already.
  bool beginToWatch();
  void find();
  // Finds them and tells what is new. Whether udev is done with all that there is.
  bool look();
  FoundMouse described(const MouseHardware& hardware) const;
  std::vector<FoundMouse> describedAll() const;

  RunLoop& mLoop;
  Scheduler& mScheduler;
  Log& mLog;
  std::function<void()> mChangeHandler;
  RecordOf mRecordOf;
  Found mFound;
  bool mIsOutputForbidden = false;
  std::vector<FoundMouse> mTold;
  std::vector<LinuxMouse*> mMade;
  std::unique_ptr<InputWatch> mWatch;
};

}  // namespace vorn::engine
