#include "ctl/Commands.h"
#include "ctl/Settings.h"
#include "model/SettingsKeys.h"
#include "ports/DistributedNotificationCenter.h"
#include "protocol/DeviceStatus.h"
#include "protocol/VirtualMouse.h"

namespace vorn::ctl {

namespace {

// What the engine tells about the mouse, as the user information of its three notifications.
struct DeviceReport {
  PropertyList firmware;
  PropertyList battery;
  PropertyList charging;

  bool isWhole() const { return !firmware.isNone() && !battery.isNone() && !charging.isNone(); }
  bool hasBattery() const { return battery[newsKeys::BatteryPercentLevel].toInt() != noBatteryLevel; }
  // An engine that does not tell the connection has told a battery of every mouse.
  bool isPresent() const { return firmware.contains(newsKeys::IsDeviceWired) || hasBattery(); }

  void take(const PropertyList& information) {
    switch (static_cast<MessageID>(information[newsKeys::MessageID].toInt())) {
      case MessageID::QueryFirmwareVersion:
        firmware = information;
        break;
      case MessageID::QueryBatteryLevel:
        battery = information;
        break;
      case MessageID::QueryChargingStatus:
        charging = information;
        break;
      default:
        break;
    }
  }
};

Result<DeviceReport> deviceReport(EngineClient& engine) {
  if (auto failure = engine.connect()) return *failure;
  DeviceReport report;
  DistributedNotificationCenter& center = DistributedNotificationCenter::defaultCenter();
  center.addObserver(&report, notificationNames::commandReply(wiredProductID), [&](const Notification& notification) {
    report.take(notification.userInfo);
    if (report.isWhole()) engine.loop().stop();
  });
  Outcome failure;
  for (const MessageID query :
       {MessageID::QueryFirmwareVersion, MessageID::QueryBatteryLevel, MessageID::QueryChargingStatus}) {
    if (!failure) failure = engine.send(query);
  }
  if (!failure) failure = engine.waitUntil([&] { return report.isWhole(); });
  center.removeObserver(&report);
  if (failure) return *failure;
  return report;
}

std::string_view chargingName(const PropertyList& report) {
  return chargingWord(static_cast<ChargingStatus>(report[newsKeys::DeviceChargingStatus].toInt()));
}

PropertyList summary(const PropertyList& bundle, const DeviceReport& report) {
  const std::int64_t active = activeProfileID(bundle);
  const PropertyList& profile = bundle[keys::Profiles].at(active);
  PropertyList result = PropertyList::dictionary({
      {"isPresent", report.isPresent()},
      {"profile", PropertyList::dictionary({{"id", active}, {"name", profile[keys::ProfileName].toString()}})},
      {"profiles", bundle[keys::Profiles].size()},
      {"macros", bundle[keys::Macros].size()},
  });
  for (const keys::Key key : {keys::KeymapID, keys::DPIX, keys::DPIY, keys::StageValue, keys::PollingRate}) {
    result = result.with(key, profile[key].toInt());
  }
  if (!report.isPresent()) return result;
  if (report.firmware[newsKeys::ReturnStatus].toInt() == 0) {
    result = result.with("firmware", report.firmware[newsKeys::FirmwareVersion].toString());
  }
  if (report.firmware.contains(newsKeys::IsDeviceWired)) {
    const bool isWired = report.firmware[newsKeys::IsDeviceWired].toBool();
    result = result.with("connection", isWired ? virtualMouse::wired : virtualMouse::wireless);
  }
  if (report.hasBattery()) result = result.with("battery", report.battery[newsKeys::BatteryPercentLevel].toInt());
  return result.with("charging", chargingName(report.charging));
}

std::string sensitivityText(const PropertyList& summary) {
  const std::string x = std::to_string(summary[keys::DPIX].toInt());
  const std::string y = std::to_string(summary[keys::DPIY].toInt());
  const std::string stage = ", stage " + std::to_string(summary[keys::StageValue].toInt64() + 1);
  return (x == y ? x : x + " x " + y) + " DPI" + stage;
}

std::string mouseText(const PropertyList& summary) {
  if (!summary["isPresent"].toBool()) return "absent";
  const std::string_view connection = summary["connection"].string();
  std::string text = "present, ";
  if (connection == virtualMouse::wired) text += "on its cable, ";
  if (connection == virtualMouse::wireless) text += "on its wireless receiver, ";
  return text + "firmware " + (summary.contains("firmware") ? summary["firmware"].toString() : "unknown");
}

std::string batteryText(const PropertyList& summary) {
  if (!summary.contains("battery")) return "not in use";
  const bool isCharging = summary["charging"].string() == chargingWord(ChargingStatus::Charging);
  return std::to_string(summary["battery"].toInt64()) + " %" + (isCharging ? ", charging" : "");
}

std::vector<std::string> linesOf(const PropertyList& summary) {
  const auto number = [&](std::string_view key, std::int64_t offset = 0) {
    return std::to_string(summary[key].toInt64() + offset);
  };
  std::vector<std::string> lines = {"Engine:       running", "Mouse:        " + mouseText(summary)};
  if (summary["isPresent"].toBool()) lines.push_back("Battery:      " + batteryText(summary));
  lines.insert(lines.end(),
               {"Profile:      " + std::to_string(summary["profile"]["id"].toInt64() + 1) + " \"" +
                    summary["profile"]["name"].toString() + "\" of " + number("profiles"),
                "Keymap:       " + number(keys::KeymapID, 1), "Sensitivity:  " + sensitivityText(summary),
                "Polling rate: " + number(keys::PollingRate) + " Hz", "Macros:       " + number("macros")});
  return lines;
}

}  // namespace

Outcome status(Context& context, const Arguments&) {
  const auto bundle = allSettings(context.engine);
  if (!bundle) return bundle.failure();
  const auto report = deviceReport(context.engine);
  if (!report) return report.failure();
  const PropertyList told = summary(*bundle, *report);
  context.output.either(linesOf(told), told);
  return std::nullopt;
}

}  // namespace vorn::ctl
