// Mice of a machine that there is not: what is plugged in is what the test says.
#pragma once

#include <algorithm>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "core-engine/device/RealMice.h"

namespace vorn::engine::test {

inline FoundMouse foundMouse(const std::string& id, const std::string& name) {
  FoundMouse mouse;
  mouse.id = id;
  mouse.name = name;
  mouse.nodes = {"/dev/input/event4", "/dev/input/event5"};
  mouse.resolution = 1000;
  mouse.controls = {"03", "06", "07"};
  return mouse;
}

class FakeMice : public RealMice {
 public:
  class Mouse : public RealMouse {
   public:
    Mouse(FakeMice& all, std::string ownID) : id(std::move(ownID)), mAll(all) { mAll.inUse.push_back(this); }
    ~Mouse() override { std::erase(mAll.inUse, this); }
    Mouse(const Mouse&) = delete;
    Mouse& operator=(const Mouse&) = delete;

    Connection connection() const override {
      const bool isThere =
          std::any_of(mAll.found.begin(), mAll.found.end(), [this](const FoundMouse& each) { return each.id == id; });
      return isThere ? Connection::Wired : Connection::Absent;
    }
    std::string firmwareVersion() const override { return {}; }
    int batteryPercent() const override { return 0; }
    ChargingStatus chargingStatus() const override { return ChargingStatus::NoBatteryDisplay; }
    void emit(const OutputEvent& event) override { emitted.push_back(event); }
    void apply(const DeviceValues& values) override { applied = values; }
    void setListening(bool listens) override { isListening = listens; }
    DeviceAbilities abilities() const override {
      DeviceAbilities result;
      result.sensitivity = DeviceAbilities::Way::Scaled;
      result.reachesDesktop = true;
      result.held = held;
      result.busy = busy;
      return result;
    }
    void setRecord(const MouseRecord& told) override { record = told; }
    void teach(Heard taught) override { heard = std::move(taught); }
    std::int32_t resolution() const override { return record.resolution == 0 ? 1000 : record.resolution; }

    std::string id;
    std::vector<OutputEvent> emitted;
    DeviceValues applied;
    bool isListening = false;
    MouseRecord record;
    Heard heard;
    std::vector<std::string> held;
    std::vector<std::string> busy;

   private:
    FakeMice& mAll;
  };

  std::vector<FoundMouse> mice() override { return found; }
  void setChangeHandler(std::function<void()> handler) override { changed = std::move(handler); }
  void setRecords(RecordOf records) override { recordOf = std::move(records); }
  std::unique_ptr<RealMouse> make(const std::string& id) override { return std::make_unique<Mouse>(*this, id); }

  std::vector<FoundMouse> found;
  std::vector<Mouse*> inUse;  // those that were made and are still there
  std::function<void()> changed;
  RecordOf recordOf;
};

inline const EventSource side{"01 Acme Mouse", EV_KEY, BTN_SIDE, 0};
inline const EventSource tiltLeft{"01 Acme Mouse", EV_REL, REL_HWHEEL, -1};

}  // namespace vorn::engine::test
