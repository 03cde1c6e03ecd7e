#include "core-engine/device/linux/RatbagMouse.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "ports/BusService.h"

namespace vorn::engine {

namespace {

using News = RatbagMouse::News;
using Standing = RatbagMouse::Standing;

constexpr const char* busName = "org.freedesktop.ratbag1";
constexpr const char* managerPath = "/org/freedesktop/ratbag1";
constexpr const char* managerInterface = "org.freedesktop.ratbag1.Manager";
constexpr const char* deviceInterface = "org.freedesktop.ratbag1.Device";
constexpr const char* profileInterface = "org.freedesktop.ratbag1.Profile";
constexpr const char* resolutionInterface = "org.freedesktop.ratbag1.Resolution";
constexpr const char* ledInterface = "org.freedesktop.ratbag1.Led";
// The versions of ratbagd's interface have in common what is used of it here.
constexpr std::int32_t oldestVersion = 1;
constexpr std::int32_t latestVersion = 2;

using Paths = std::vector<std::string>;

bool isAmong(const Paths& paths, const std::string& path) {
  return std::ranges::find(paths, path) != paths.end();
}

// The one that says that it is active, else the first.
std::size_t activeOf(const std::vector<PropertyList>& objects) {
  const auto active = std::ranges::find_if(objects, [](const PropertyList& each) { return each["IsActive"].toBool(); });
  return active == objects.end() ? 0 : static_cast<std::size_t>(active - objects.begin());
}

PropertyList numbersOf(const RatbagColor& color) {
  return PropertyList::array({color.red, color.green, color.blue});
}

// Where ratbagd has what is told of the mouse.
struct Places {
  std::string device;
  Paths profiles;
  std::string profile;  // the active one, likewise
  Paths resolutions;
  std::string resolution;
  Paths leds;
};

struct Wishes {
  std::optional<RatbagResolution> resolution;
  std::optional<std::uint32_t> reportRate;
  std::optional<RatbagLight> light;
};

// Takes over what an object, told by its path, says of itself.
void take(const Places& places, const std::string& path, const PropertyList& properties, RatbagState& state) {
  if (path == places.profile) takeProfile(properties, state);
  if (path == places.resolution) takeResolution(properties, state);
  const auto led = static_cast<std::size_t>(std::ranges::find(places.leds, path) - places.leds.begin());
  if (led < state.leds.size()) takeLed(properties, state.leds[led]);
}

}  // namespace

struct RatbagMouse::Client {
  Client(RatbagIdentity which, Handler told)
      : identity(std::move(which)),
        handler(std::move(told)),
        service(Bus::System, busName, [this] { serviceChanged(); }) {
    if (!service.hasBus()) return;
    standing = Standing::Asked;
    service.watchAllBelow(managerPath, propertiesInterface, propertiesChanged,
                          [this](const ReceivedSignal& received) { propertiesOf(received); });
    service.watchAllBelow(managerPath, deviceInterface, "Resync", [this](const ReceivedSignal& received) {
      if (received.path == places.device) load();
    });
  }

  RatbagIdentity identity;
  Handler handler;
  Standing standing = Standing::NoBus;
  bool hasAsked = false;
  // Of the reading under way; the answers to any other are of no use.
  std::uint64_t reading = 0;
  bool isReading = false;
  bool mustReadAgain = false;
  Places places;
  std::optional<RatbagState> state;
  Wishes wishes;
  // How many answers are missing to what was sent, and what the mouse is to be then.
  std::size_t missingAnswers = 0;
  bool hasFailed = false;
  bool isReadMeanwhile = false;
  RatbagState expected;
  BusService service;

  // Always the last thing done: the handler may end all this.
  void tell(News news) const {
    const Handler told = handler;
    if (told) told(news);
  }

  void serviceChanged();
  void load();
  void readAll(const Paths& paths, const char* interface,
               std::function<void(const std::vector<PropertyList>& objects)> then);
  void takeManager(const PropertyList& manager);
  void takeDevices(const Paths& paths, const std::vector<PropertyList>& devices);
  void takeProfiles(Places found, RatbagState read, const std::vector<PropertyList>& profiles);
  void endReading(Standing now, Places found = {}, std::optional<RatbagState> read = {});
  void propertiesOf(const ReceivedSignal& received);

  void send();
  void set(const std::string& path, const char* interface, const char* property, const BusInput& value);
  void setLeds(const RatbagLight& light);
  void answered(const BusAnswer& answer);
};

void RatbagMouse::Client::serviceChanged() {
  ++reading;
  isReading = false;
  mustReadAgain = false;
  missingAnswers = 0;
  wishes = {};
  if (service.isThere()) return load();
  const bool wasKnown = state.has_value();
  state.reset();
  if (!std::exchange(hasAsked, true)) {
    service.start([this](const ServiceStart& start) {
      if (standing != Standing::Asked || start.status == ServiceStart::Status::Running) return;
      standing = start.status == ServiceStart::Status::NotInstalled ? Standing::NotInstalled : Standing::NotRunning;
    });
    return;
  }
  standing = Standing::NotRunning;
  if (wasKnown) tell(News::Forgotten);
}

void RatbagMouse::Client::load() {
  hasAsked = true;
  mustReadAgain = isReading;
  if (std::exchange(isReading, true)) return;
  isReadMeanwhile = true;
  ++reading;
  readAll({managerPath}, managerInterface,
          [this](const std::vector<PropertyList>& managers) { takeManager(managers.front()); });
}

void RatbagMouse::Client::readAll(const Paths& paths, const char* interface,
                                  std::function<void(const std::vector<PropertyList>& objects)> then) {
  struct Gathering {
    std::vector<PropertyList> objects;
    std::size_t missing;
  };
  // One more than there are, for the asking itself.
  const auto gathering =
      std::make_shared<Gathering>(Gathering{std::vector<PropertyList>(paths.size()), paths.size() + 1});
  const auto arrived = [this, gathering, current = reading, then = std::move(then)] {
    if (--gathering->missing == 0 && current == reading) then(gathering->objects);
  };
  for (std::size_t index = 0; index < paths.size(); ++index) {
    service.getProperties(paths[index], interface, [gathering, arrived, index](const PropertyList& properties) {
      gathering->objects[index] = properties;
      arrived();
    });
  }
  arrived();
}

void RatbagMouse::Client::takeManager(const PropertyList& manager) {
  const std::int32_t version = manager["APIVersion"].toInt();
  if (version < oldestVersion || version > latestVersion) return endReading(Standing::Incompatible);
  Paths paths = ratbagPaths(manager["Devices"]);
  // ratbagd names its objects after the hidraw nodes, and tells of them in no other way.
  if (!identity.hidrawNames.empty()) {
    std::erase_if(paths, [this](const std::string& path) {
      return !isAmong(identity.hidrawNames, path.substr(path.rfind('/') + 1));
    });
  }
  readAll(paths, deviceInterface,
          [this, paths](const std::vector<PropertyList>& devices) { takeDevices(paths, devices); });
}

void RatbagMouse::Client::takeDevices(const Paths& paths, const std::vector<PropertyList>& devices) {
  const auto isMeant = [this](const PropertyList& device) {
    if (!device.isDictionary()) return false;
    return !identity.hidrawNames.empty() || device["Model"].string().starts_with(identity.model + ":");
  };
  const auto meant = std::ranges::find_if(devices, isMeant);
  const bool isOnly = identity.hidrawNames.empty() ? std::ranges::count_if(devices, isMeant) == 1 : true;
  if (meant == devices.end() || !isOnly) return endReading(Standing::NotListed);
  Places found;
  found.device = paths[static_cast<std::size_t>(meant - devices.begin())];
  found.profiles = ratbagPaths((*meant)["Profiles"]);
  RatbagState read;
  takeDevice(*meant, read);
  readAll(found.profiles, profileInterface,
          [this, found, read](const std::vector<PropertyList>& profiles) { takeProfiles(found, read, profiles); });
}

void RatbagMouse::Client::takeProfiles(Places found, RatbagState read, const std::vector<PropertyList>& profiles) {
  if (profiles.empty()) return endReading(Standing::Known, std::move(found), std::move(read));
  const std::size_t active = activeOf(profiles);
  const PropertyList& profile = profiles[active];
  found.profile = found.profiles[active];
  found.resolutions = ratbagPaths(profile["Resolutions"]);
  found.leds = ratbagPaths(profile["Leds"]);
  takeProfile(profile, read);
  readAll(found.resolutions, resolutionInterface, [=, this](const std::vector<PropertyList>& resolutions) {
    Places complete = found;
    RatbagState withResolution = read;
    if (!resolutions.empty()) {
      complete.resolution = complete.resolutions[activeOf(resolutions)];
      take(complete, complete.resolution, resolutions[activeOf(resolutions)], withResolution);
    }
    readAll(complete.leds, ledInterface, [this, complete, withResolution](const std::vector<PropertyList>& leds) {
      RatbagState withLeds = withResolution;
      withLeds.leds.resize(leds.size());
      for (std::size_t index = 0; index < leds.size(); ++index) takeLed(leds[index], withLeds.leds[index]);
      endReading(Standing::Known, complete, std::move(withLeds));
    });
  });
}

void RatbagMouse::Client::endReading(Standing now, Places found, std::optional<RatbagState> read) {
  isReading = false;
  if (std::exchange(mustReadAgain, false)) return load();
  standing = now;
  places = std::move(found);
  const std::optional<RatbagState> before = std::exchange(state, std::move(read));
  if (!state) {
    wishes = {};
    if (before) tell(News::Forgotten);
    return;
  }
  // With what is under way the mouse will be as it was asked to be.
  const bool isAsAsked = missingAnswers > 0 && state == expected;
  send();
  if (!before) return tell(News::Known);
  if (state != before && !isAsAsked) tell(News::Changed);
}

void RatbagMouse::Client::propertiesOf(const ReceivedSignal& received) {
  if (propertyChangesOf(received, managerInterface)) return load();
  if (!state) return;
  for (const char* interface : {profileInterface, resolutionInterface, ledInterface}) {
    const auto told = propertyChangesOf(received, interface);
    const bool isOurs = isAmong(places.profiles, received.path) || isAmong(places.resolutions, received.path) ||
                        isAmong(places.leds, received.path);
    if (!told || !isOurs) continue;
    if (isReading || told->isIncomplete || told->changed.contains("IsActive")) return load();
    RatbagState changed = *state;
    take(places, received.path, told->changed, changed);
    if (changed == state) return;
    state = changed;
    if (missingAnswers > 0) {
      RatbagState asAsked = expected;
      take(places, received.path, told->changed, asAsked);
      if (asAsked == std::exchange(expected, asAsked)) return;
    }
    return tell(News::Changed);
  }
}

void RatbagMouse::Client::set(const std::string& path, const char* interface, const char* property,
                              const BusInput& value) {
  ++missingAnswers;
  service.setProperty(path, interface, property, value, [this](const BusAnswer& answer) { answered(answer); });
}

void RatbagMouse::Client::setLeds(const RatbagLight& light) {
  for (std::size_t index = 0; index < std::min(places.leds.size(), state->leds.size()); ++index) {
    const RatbagLed& now = state->leds[index];
    const RatbagLed wanted = ledFor(light, now, index);
    expected.leds[index] = wanted;
    const std::string& path = places.leds[index];
    if (wanted.mode != now.mode) set(path, ledInterface, "Mode", {"u", static_cast<std::uint8_t>(wanted.mode)});
    if (wanted.color != now.color) set(path, ledInterface, "Color", {"(uuu)", numbersOf(wanted.color)});
    if (wanted.brightness != now.brightness) set(path, ledInterface, "Brightness", {"u", wanted.brightness});
  }
}

void RatbagMouse::Client::send() {
  if (missingAnswers > 0 || !state) return;
  const Wishes wanted = std::exchange(wishes, {});
  expected = *state;
  hasFailed = false;
  isReadMeanwhile = isReading;
  // One more than are sent, until all are.
  missingAnswers = 1;
  if (wanted.resolution && *wanted.resolution != state->resolution) {
    expected.resolution = *wanted.resolution;
    const auto [x, y] = *wanted.resolution;
    const BusInput both{"v<(uu)>", PropertyList::array({x, y})};
    set(places.resolution, resolutionInterface, "Resolution", state->hasSeparateAxes ? both : BusInput{"v<u>", x});
  }
  if (wanted.reportRate && *wanted.reportRate != state->reportRate) {
    expected.reportRate = *wanted.reportRate;
    set(places.profile, profileInterface, "ReportRate", {"u", *wanted.reportRate});
  }
  if (wanted.light) setLeds(*wanted.light);
  if (missingAnswers > 1) {
    ++missingAnswers;
    service.call(places.device, deviceInterface, "Commit", {}, [this](const BusAnswer& answer) { answered(answer); });
  }
  --missingAnswers;
}

void RatbagMouse::Client::answered(const BusAnswer& answer) {
  hasFailed |= answer.status != BusAnswer::Status::Success;
  if (--missingAnswers > 0) return;
  const bool isRefused = hasFailed && answer.status != BusAnswer::Status::NoBus;
  if (hasFailed || isReadMeanwhile) {
    load();
  } else {
    state = expected;
  }
  send();
  if (isRefused) tell(News::Refused);
}

RatbagMouse::RatbagMouse(RatbagIdentity identity, Handler handler)
    : mClient(std::make_unique<Client>(std::move(identity), std::move(handler))) {}

RatbagMouse::~RatbagMouse() = default;

Standing RatbagMouse::standing() const {
  return mClient->standing;
}

const RatbagState* RatbagMouse::state() const {
  return mClient->state ? &*mClient->state : nullptr;
}

std::optional<RatbagResolution> RatbagMouse::resolution() const {
  if (state() == nullptr || state()->resolutions.empty()) return std::nullopt;
  if (mClient->wishes.resolution) return mClient->wishes.resolution;
  return mClient->missingAnswers > 0 ? mClient->expected.resolution : state()->resolution;
}

std::optional<RatbagResolution> RatbagMouse::setResolution(RatbagResolution wanted) {
  const auto nearest = state() != nullptr ? nearestResolution(*state(), wanted) : std::nullopt;
  if (!nearest) return std::nullopt;
  mClient->wishes.resolution = nearest;
  mClient->send();
  return nearest;
}

std::optional<std::uint32_t> RatbagMouse::setReportRate(std::uint32_t wanted) {
  const auto nearest = state() != nullptr ? nearestAllowed(state()->reportRates, wanted) : std::nullopt;
  if (!nearest) return std::nullopt;
  mClient->wishes.reportRate = nearest;
  mClient->send();
  return nearest;
}

bool RatbagMouse::setLight(const RatbagLight& light) {
  if (state() == nullptr || state()->leds.empty()) return false;
  mClient->wishes.light = light;
  mClient->send();
  return true;
}

}  // namespace vorn::engine
