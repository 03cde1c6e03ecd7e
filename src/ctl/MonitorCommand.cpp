#include <csignal>

#include "ctl/Commands.h"
#include "ctl/Values.h"
#include "model/SettingsKeys.h"
#include "ports/DistributedNotificationCenter.h"

namespace vorn::ctl {

namespace {

std::vector<std::string> observedNames() {
  namespace names = notificationNames;
  std::vector<std::string> result = {names::deviceRemoved(wiredProductID),
                                     names::profileUpdated(wiredProductID),
                                     names::dpiUpdated(wiredProductID),
                                     names::keymapUpdated(wiredProductID),
                                     names::singleKeyEvent(names::assignmentCapture),
                                     names::singleKeyEvent(names::macroEventCapture),
                                     names::macroSequence(wiredProductID)};
  for (const std::int32_t product : {wiredProductID, wirelessProductID}) {
    result.push_back(names::deviceAttached(product));
    result.push_back(names::commandReply(product));
  }
  return result;
}

// The bundle that a keymap update carries is much too long for a line.
PropertyList shortened(const PropertyList& userInfo) {
  const PropertyList& bundle = userInfo[newsKeys::UpdatedKeymapProfile];
  if (bundle.isNone()) return userInfo;
  const PropertyList& active = bundle[keys::Profiles].at(bundle[keys::DeviceSettings][keys::ActiveProfile].toInt64());
  return userInfo.without(newsKeys::UpdatedKeymapProfile).with(keys::KeymapID, active[keys::KeymapID].toInt());
}

std::string lineOf(const Notification& notification) {
  const PropertyList information = shortened(notification.userInfo);
  std::string text = notification.name;
  for (std::size_t index = 0; index < information.size(); ++index) {
    text +=
        (index == 0 ? ": " : ", ") + std::string(information.keyAt(index)) + "=" + textOf(information.valueAt(index));
  }
  return text;
}

}  // namespace

Outcome monitor(Context& context, const Arguments&) {
  if (auto failure = context.engine.connect()) return failure;
  RunLoop& loop = context.engine.loop();
  for (const int number : {SIGINT, SIGTERM}) loop.onSignal(number, [&loop] { loop.stop(); });

  Outcome failure;
  const auto tell = [&](const std::string& text, const PropertyList& value) {
    context.output.either(text, value);
    // Who reads along sees each line at once; who stopped reading ends the program.
    failure = context.output.flush();
    if (failure) loop.stop();
  };
  DistributedNotificationCenter& center = DistributedNotificationCenter::defaultCenter();
  for (const std::string& name : observedNames()) {
    center.addObserver(&loop, name, [&](const Notification& notification) {
      tell(lineOf(notification), PropertyList::dictionary({{"name", notification.name},
                                                           {"userInfo", notification.userInfo.dictionaryOrEmpty()}}));
    });
  }
  tell("listening", PropertyList::dictionary({{"name", "listening"}, {"userInfo", PropertyList::dictionary()}}));
  const bool isConnected = failure || loop.run();
  center.removeObserver(&loop);
  if (!failure && !isConnected) failure = Failure{ExitStatus::NoEngine, "the session bus is gone"};
  return failure;
}

}  // namespace vorn::ctl
