#include "ctl/Commands.h"
#include "ctl/Settings.h"
#include "model/SettingsKeys.h"
#include "ports/DistributedNotificationCenter.h"
#include "protocol/DeviceStatus.h"

namespace vorn::ctl {

namespace {

// What the engine tells about the mouse, as the user information of its three notifications.
struct DeviceReport {
  PropertyList firmware;
  PropertyList battery;
  PropertyList charging;

  bool isWhole() const { return !firmware.isNone() && !battery.isNone() && !charging.isNone(); }
  bool isPresent() const { return battery[newsKeys::BatteryPercentLevel].toInt() != noBatteryLevel; }

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
  return result.with("battery", report.battery[newsKeys::BatteryPercentLevel].toInt())
      .with("charging", chargingName(report.charging));
}

std::string sensitivityText(const PropertyList& summary) {
  const std::string x = std::to_string(summary[keys::DPIX].toInt());
  const std::string y = std::to_string(summary[keys::DPIY].toInt());
  const std::string stage = ", stage " + std::to_string(summary[keys::StageValue].toInt64() + 1);
  return (x == y ? x : x + " x " + y) + " DPI" + stage;
}

std::string textOf(const PropertyList& summary) {
  const auto number = [&](std::string_view key, std::int64_t offset = 0) {
    return std::to_string(summary[key].toInt64() + offset);
  };
  std::string text = "Engine:       running\n";
  if (summary["isPresent"].toBool()) {
    const std::string firmware = summary.contains("firmware") ? summary["firmware"].toString() : "unknown";
    text += "Mouse:        present, firmware " + firmware + "\n";
    text += "Battery:      " + number("battery") + " %" +
            (summary["charging"].string() == chargingWord(ChargingStatus::Charging) ? ", charging" : "") + "\n";
  } else {
    text += "Mouse:        absent\n";
  }
  return text + "Profile:      " + std::to_string(summary["profile"]["id"].toInt64() + 1) + " \"" +
         summary["profile"]["name"].toString() + "\" of " + number("profiles") + "\n" +
         "Keymap:       " + number(keys::KeymapID, 1) + "\n" + "Sensitivity:  " + sensitivityText(summary) + "\n" +
         "Polling rate: " + number(keys::PollingRate) + " Hz\n" + "Macros:       " + number("macros");
}

}  // namespace

Outcome status(Context& context, const Arguments&) {
  const auto bundle = allSettings(context.engine);
  if (!bundle) return bundle.failure();
  const auto report = deviceReport(context.engine);
  if (!report) return report.failure();
  const PropertyList told = summary(*bundle, *report);
  context.output.either(textOf(told), told);
  return std::nullopt;
}

}  // namespace vorn::ctl
