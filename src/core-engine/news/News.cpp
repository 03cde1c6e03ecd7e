#include "core-engine/news/News.h"

#include <array>

#include "model/SettingsKeys.h"
#include "protocol/EngineProtocol.h"

namespace vorn::engine {

namespace {

// What the "DPI Updated" notification stands for.
constexpr std::array sensitivityKeys = {keys::DPIX, keys::DPIY, keys::IndependentXYOn, keys::Stages, keys::StageValue};

std::int32_t activeID(const PropertyList& bundle) {
  return bundle[keys::DeviceSettings][keys::ActiveProfile].toInt();
}

const PropertyList& activeProfile(const PropertyList& bundle) {
  return bundle[keys::Profiles].at(activeID(bundle));
}

bool hasOtherKeymap(const PropertyList& before, const PropertyList& after) {
  return activeID(before) == activeID(after) &&
         activeProfile(before)[keys::KeymapID].toInt() != activeProfile(after)[keys::KeymapID].toInt();
}

bool differsInSensitivityOnly(const PropertyList& before, const PropertyList& after) {
  if (activeID(before) != activeID(after)) return false;
  PropertyList profile = activeProfile(after);
  for (const keys::Key key : sensitivityKeys) {
    const PropertyList& earlier = activeProfile(before)[key];
    profile = earlier.isNone() ? profile.without(key) : profile.with(key, earlier);
  }
  return before == after.with(keys::Profiles, after[keys::Profiles].replacing(activeID(after), profile));
}

}  // namespace

std::string sourceAppOf(const Request& request) {
  if (request.replyPort() == configuratorReplyPortName) return std::string(configuratorIdentifier);
  const std::string_view own = request.body[requestKeys::SourceApp].string();
  if (own.size() > maximumSourceApp || own == configuratorIdentifier) return {};
  return std::string(own);
}

void News::settingsChanged(const PropertyList& before, const PropertyList& after, const std::string& sourceApp) {
  if (before == after) return;
  if (hasOtherKeymap(before, after)) {
    postKeymapUpdate(after, sourceApp);
    return;
  }
  const PropertyList& profile = activeProfile(after);
  if (differsInSensitivityOnly(before, after)) {
    post(notificationNames::dpiUpdated(wiredProductID),
         PropertyList::dictionary({{newsKeys::DPIValue, profile[keys::DPIX].toInt()},
                                   {newsKeys::DPIYValue, profile[keys::DPIY].toInt()},
                                   {keys::IndependentXYOn, profile[keys::IndependentXYOn].toInt()}}),
         sourceApp);
  } else {
    post(notificationNames::profileUpdated(wiredProductID),
         PropertyList::dictionary({{newsKeys::ProfileName, profile[keys::ProfileName].toString()}}), sourceApp);
  }
  // The configurator reloads after anybody else's change and so sees its result.
  const bool isConfigurators = sourceApp == configuratorIdentifier;
  const bool mayReadAnOldKeymapUpdate = mLastKeymapUpdate && mScheduler.now() - *mLastKeymapUpdate < keymapEchoTime;
  if (isConfigurators && mayReadAnOldKeymapUpdate) postKeymapUpdate(after, sourceApp);
}

void News::postKeymapUpdate(const PropertyList& bundle, const std::string& sourceApp) {
  mLastKeymapUpdate = mScheduler.now();
  post(notificationNames::keymapUpdated(wiredProductID),
       PropertyList::dictionary({{newsKeys::UpdatedKeymapProfile, bundle}}), sourceApp);
}

void News::post(std::string_view name, const PropertyList& userInfo, const std::string& sourceApp) {
  mPort.post(name, sourceApp.empty() ? userInfo : userInfo.with(newsKeys::SourceApp, sourceApp));
}

}  // namespace vorn::engine
