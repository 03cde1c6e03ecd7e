#include "core-engine/device/linux/LinuxMice.h"

#include <algorithm>
#include <utility>

#include "core-engine/device/linux/NodeChoice.h"
#include "core-engine/device/linux/OutputDevice.h"

namespace vorn::engine {

LinuxMice::~LinuxMice() = default;

bool LinuxMice::beginToWatch() {
  if (mWatch) return false;
  mWatch = std::make_unique<InputWatch>(mLoop, mScheduler, [this] { return look(); });
  return true;
}

std::vector<FoundMouse> LinuxMice::mice() {
  beginToWatch();
  look();
  return describedAll();
}

void LinuxMice::find() {
  mFound = findMice();
  mIsOutputForbidden = !OutputDevice::isAllowed();
}

bool LinuxMice::look() {
  find();
  // Who is told may have mice made and destroyed.
  for (LinuxMouse* mouse : std::vector(mMade)) {
    if (std::find(mMade.begin(), mMade.end(), mouse) != mMade.end()) mouse->update(hardware(mouse->id()));
  }
  std::vector<FoundMouse> now = describedAll();
  const bool isNew = now != mTold;
  mTold = std::move(now);
  if (isNew && mChangeHandler) mChangeHandler();
  return mFound.isComplete;
}

std::optional<MouseHardware> LinuxMice::hardware(const std::string& id) const {
  const auto found = std::find_if(mFound.mice.begin(), mFound.mice.end(),
                                  [&id](const MouseHardware& mouse) { return mouse.id == id; });
  return found == mFound.mice.end() ? std::nullopt : std::optional(*found);
}

std::unique_ptr<LinuxMouse> LinuxMice::makeLinuxMouse(const std::string& id) {
  if (beginToWatch()) find();
  auto mouse = std::make_unique<LinuxMouse>(
      id, LinuxMouse::Surroundings{mLoop, mScheduler, mLog, [this] { mWatch->lookSoon(); },
                                   [this](const LinuxMouse& gone) { std::erase(mMade, &gone); }});
  mMade.push_back(mouse.get());
  mouse->update(hardware(id));
  return mouse;
}

FoundMouse LinuxMice::described(const MouseHardware& hardware) const {
  FoundMouse mouse;
  mouse.id = hardware.id;
  mouse.isMarkedByPlace = hardware.isMarkedByPlace;
  mouse.name = hardware.name;
  mouse.connection = hardware.isWireless ? Device::Connection::Wireless : Device::Connection::Wired;
  mouse.isOutputForbidden = mIsOutputForbidden;
  mouse.resolution = hardware.resolution;
  const MouseRecord record = mRecordOf ? mRecordOf(hardware.id) : MouseRecord();
  for (const MouseNode& node : hardware.nodes) {
    mouse.nodes.push_back(node.path);
    mouse.controls.merge(controlsOf(node, record.controls));
    if (!node.isForbidden) continue;
    mouse.forbidden.push_back(node.path);
    mouse.isPointerForbidden = mouse.isPointerForbidden || node.codes.isPointer();
  }
  return mouse;
}

std::vector<FoundMouse> LinuxMice::describedAll() const {
  std::vector<FoundMouse> all;
  for (const MouseHardware& hardware : mFound.mice) all.push_back(described(hardware));
  return all;
}

}  // namespace vorn::engine
