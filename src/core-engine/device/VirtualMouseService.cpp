#include "core-engine/device/VirtualMouseService.h"

#include <algorithm>
#include <optional>
#include <string_view>
#include <utility>

#include "protocol/DeviceStatus.h"
#include "protocol/VirtualMouse.h"

namespace vorn::engine {

namespace {

using Connection = Device::Connection;
namespace methods = virtualMouse::methods;

std::string_view nameOf(Connection connection) {
  switch (connection) {
    case Connection::Wired:
      return virtualMouse::wired;
    case Connection::Wireless:
      return virtualMouse::wireless;
    case Connection::Absent:
      break;
  }
  return virtualMouse::absent;
}

BusReply badArgument(std::string text) {
  return BusReply::failure(virtualMouse::errors::BadArgument, std::move(text));
}

BusReply absent() {
  return BusReply::failure(virtualMouse::errors::Absent, "The mouse is not plugged in");
}

BusReply notInUse() {
  return BusReply::failure(virtualMouse::errors::NotInUse, "Another mouse is in use, not the virtual one");
}

std::vector<PropertyList> valuesOf(Scheduler::Duration time, const OutputEvent& event) {
  return {static_cast<std::uint64_t>(time.count()), event.usagePage, event.usage, event.value};
}

bool isPrintable(std::string_view text) {
  return std::all_of(text.begin(), text.end(), [](char character) { return character >= ' ' && character <= '~'; });
}

}  // namespace

VirtualMouseService::VirtualMouseService(VirtualDevice& device, const Scheduler& scheduler, SettingsTurns& turns,
                                         std::function<bool()> isInUse)
    : mDevice(device), mScheduler(scheduler), mTurns(turns), mIsInUse(std::move(isInUse)) {
  mDevice.setOutputHandler([this](const OutputEvent& event) { keep(event); });
}

VirtualMouseService::~VirtualMouseService() {
  mDevice.setOutputHandler({});
}

bool VirtualMouseService::start(std::string& error) {
  mObject = BusObject::create(description(), &error);
  return mObject != nullptr;
}

// A method that changes nothing in the settings.
BusMethod VirtualMouseService::method(const char* name, std::vector<BusArgument> inputs,
                                      std::function<BusReply(const Arguments&)> work) {
  BusMethod result{name, std::move(inputs), {}, {}};
  result.callLater = [this, work = std::move(work)](const Arguments& given, const std::string&,
                                                    const BusReturn& answer) {
    mTurns.inTurn([answer, reply = work(given)] { answer(reply); });
  };
  return result;
}

BusMethod VirtualMouseService::changeOfSettings(const char* name, std::vector<BusArgument> inputs,
                                                std::function<BusReply(const Arguments&)> work) {
  BusMethod result{name, std::move(inputs), {}, {}};
  result.callLater = [this, work = std::move(work)](const Arguments& given, const std::string&,
                                                    const BusReturn& answer) {
    mTurns.whenSaved([answer, reply = work(given)] { answer(reply); });
  };
  return result;
}

BusObjectDescription VirtualMouseService::description() {
  const auto text = [](const Arguments& arguments, std::size_t index) { return arguments[index].toString(); };
  const std::vector<BusArgument> output = {{"t", "time"}, {"q", "usagePage"}, {"q", "usage"}, {"i", "value"}};
  BusObjectDescription result{virtualMouse::busName, virtualMouse::objectPath, virtualMouse::interface, {}, {}};
  BusMethod taking{methods::TakeOutput, {}, {{"a(tqqi)", "output"}}, {}};
  taking.callLater = [this](const Arguments&, const std::string&, const BusReturn& answer) {
    mTurns.inTurn([this, answer] { answer(takeOutput()); });
  };
  result.methods = {
      changeOfSettings(methods::Plug, {{"s", "connection"}},
                       [=, this](const Arguments& given) { return plug(text(given, 0)); }),
      changeOfSettings(methods::Unplug, {},
                       [this](const Arguments&) {
                         mDevice.setConnection(Connection::Absent);
                         return BusReply::success();
                       }),
      changeOfSettings(methods::Press, {{"s", "control"}},
                       [=, this](const Arguments& given) { return setControl(text(given, 0), true); }),
      changeOfSettings(methods::Release, {{"s", "control"}},
                       [=, this](const Arguments& given) { return setControl(text(given, 0), false); }),
      method(methods::Type, {{"u", "usagePage"}, {"u", "usage"}, {"b", "isPressed"}},
             [this](const Arguments& given) { return type(given); }),
      method(methods::SetBattery, {{"i", "percent"}},
             [this](const Arguments& given) { return setBattery(given[0].toInt64()); }),
      method(methods::SetCharging, {{"s", "status"}},
             [=, this](const Arguments& given) { return setCharging(text(given, 0)); }),
      {methods::SetFirmware,
       {{"s", "version"}, {"b", "isFailing"}},
       {},
       [=, this](const Arguments& given) { return setFirmware(text(given, 0), given[1].toBool()); }},
      {methods::State, {}, {{"a{sv}", "state"}}, [this](const Arguments&) { return state(); }},
      std::move(taking),
  };
  result.signals = {{virtualMouse::outputSignal, output}};
  return result;
}

void VirtualMouseService::keep(const OutputEvent& event) {
  const Scheduler::Duration time = mScheduler.now();
  if (mOutput.size() == maximumOutput) {
    mOutput.pop_front();
    ++mForgottenOutput;
  }
  mOutput.push_back({time, event});
  // Who listens too slowly can still take what is kept.
  if (mObject) mObject->emit(virtualMouse::outputSignal, valuesOf(time, event));
}

BusReply VirtualMouseService::plug(const std::string& connection) {
  for (const Connection each : {Connection::Wired, Connection::Wireless}) {
    if (connection != nameOf(each)) continue;
    mDevice.setConnection(each);
    return BusReply::success();
  }
  return badArgument("The connection is \"wired\" or \"wireless\"");
}

BusReply VirtualMouseService::setControl(const std::string& control, bool isPressed) {
  if (!VirtualDevice::isControl(control)) return badArgument("The mouse has no control \"" + control + "\"");
  if (!mIsInUse()) return notInUse();
  return mDevice.setControl(control, isPressed) ? BusReply::success() : absent();
}

BusReply VirtualMouseService::type(const Arguments& arguments) {
  if (!mIsInUse()) return notInUse();
  const auto usagePage = static_cast<std::uint32_t>(arguments[0].toUnsigned());
  const auto usage = static_cast<std::uint32_t>(arguments[1].toUnsigned());
  if (mDevice.typeKey(usagePage, usage, arguments[2].toBool())) return BusReply::success();
  return badArgument("What can be typed are keys (usage page 7, usages 4 to 231) and buttons (page 9, usages 1 to 9)");
}

BusReply VirtualMouseService::setBattery(std::int64_t percent) {
  if (percent < 0 || percent > 100) return badArgument("The battery level is a percentage from 0 to 100");
  mDevice.setBattery(static_cast<int>(percent));
  return BusReply::success();
}

BusReply VirtualMouseService::setCharging(const std::string& status) {
  std::optional<ChargingStatus> chosen;
  for (const ChargingStatus each : chargingStatuses) {
    if (status == chargingWord(each)) chosen = each;
  }
  if (!chosen && status != virtualMouse::usualCharging) {
    return badArgument(R"(The charging status is "battery", "charging", "none" or "usual")");
  }
  if (!mDevice.isPresent()) return absent();
  mDevice.setChargingStatus(chosen);
  return BusReply::success();
}

BusReply VirtualMouseService::setFirmware(const std::string& version, bool isFailing) {
  if (version.empty() || version.size() > maximumVersionLength || !isPrintable(version)) {
    return badArgument("The firmware version is a text of 1 to 64 printable ASCII characters");
  }
  mDevice.setFirmwareVersion(version);
  mDevice.setFirmwareFailing(isFailing);
  return BusReply::success();
}

BusReply VirtualMouseService::state() const {
  std::vector<PropertyList> pressed;
  for (const std::string& control : mDevice.pressedControls()) pressed.emplace_back(control);
  return BusReply::success({PropertyList::dictionary({{"connection", nameOf(mDevice.connection())},
                                                      {"battery", mDevice.batteryPercent()},
                                                      {"charging", chargingWord(mDevice.chargingStatus())},
                                                      {"firmware", mDevice.firmwareVersion()},
                                                      {"isFirmwareFailing", mDevice.isFirmwareFailing()},
                                                      {"pressed", PropertyList::array(std::move(pressed))},
                                                      {"output", static_cast<std::int64_t>(mOutput.size())},
                                                      {"forgottenOutput", mForgottenOutput}})});
}

BusReply VirtualMouseService::takeOutput() {
  std::vector<PropertyList> events;
  events.reserve(mOutput.size());
  for (const TimedOutput& each : mOutput) events.push_back(PropertyList::array(valuesOf(each.time, each.event)));
  mOutput.clear();
  mForgottenOutput = 0;
  return BusReply::success({PropertyList::array(std::move(events))});
}

}  // namespace vorn::engine
