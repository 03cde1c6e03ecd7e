#include "ports/BusService.h"

#include <utility>

#include "ports/BusCall.h"
#include "ports/NameWatch.h"

namespace vorn {

struct BusService::State : std::enable_shared_from_this<State> {
  struct Watch {
    std::string path;
    std::shared_ptr<SignalWatch> watch;
  };

  Bus bus = Bus::Session;
  std::string busName;
  Changed changed;
  bus::BusReference connection;  // null without a bus
  std::string owner;
  // One for each time that the service is there: whose answers still count.
  std::shared_ptr<char> presence;
  std::vector<Watch> watches;
  std::optional<NameWatch> name;

  void ownerChanged(const std::string& now) {
    const std::shared_ptr<State> alive = shared_from_this();
    const auto become = [&](const std::string& next) {
      owner = next;
      presence = next.empty() ? nullptr : std::make_shared<char>();
      // The handler may end the service.
      const Changed handler = changed;
      if (handler) handler();
    };
    if (!owner.empty() && !now.empty()) become("");
    become(now);
  }
  // Another connection's names of others mean others.
  bool isReachable() const { return !owner.empty() && BusConnection::forThisThread(bus).handle() == connection.get(); }
  void call(const BusTarget& object, const std::string& method, const std::vector<BusInput>& inputs,
            std::optional<std::chrono::milliseconds> timeout, Answered answered) const {
    if (!isReachable()) return;
    callBusMethodLater(object, method, inputs, timeout,
                       [presence = std::weak_ptr(presence), answered = std::move(answered)](const BusAnswer& answer) {
                         if (!presence.expired()) answered(answer);
                       });
  }
  // The connection and not the name: what comes after this one knows nothing of the object.
  BusTarget object(const std::string& path, const std::string& interface) const {
    return {owner, path, interface, bus};
  }
  void watch(SignalSource source, SignalWatch::Handler received) {
    source.bus = bus;
    source.busName = busName;
    // The watch belongs to the state, and may end in its own handler. Signals can be sent to a single connection, past
    // the rule.
    watches.push_back({source.path, std::make_shared<SignalWatch>(
                                        source, [this, received = std::move(received)](const ReceivedSignal& signal) {
                                          if (!owner.empty() && signal.sender == owner) received(signal);
                                        })});
  }
};

BusService::BusService(Bus bus, std::string busName, Changed changed) : mState(std::make_shared<State>()) {
  mState->bus = bus;
  mState->busName = std::move(busName);
  mState->changed = std::move(changed);
  mState->connection = bus::share(BusConnection::forThisThread(bus).handle());
  if (!hasBus()) return;
  mState->name.emplace(bus, mState->busName,
                       [state = mState.get()](const std::string& owner) { state->ownerChanged(owner); });
}

BusService::~BusService() {
  mState->changed = {};
  mState->presence.reset();
  mState->watches.clear();
  mState->name.reset();
}

bool BusService::isThere() const {
  return !mState->owner.empty();
}

const std::string& BusService::owner() const {
  return mState->owner;
}

bool BusService::hasBus() const {
  return mState->connection != nullptr;
}

void BusService::start(std::function<void(const ServiceStart&)> done) {
  startService(
      mState->busName, startTimeout,
      [alive = std::weak_ptr(mState), done = std::move(done)](const ServiceStart& start) {
        if (!alive.expired()) done(start);
      },
      mState->bus);
}

void BusService::call(const std::string& path, const std::string& interface, const std::string& method,
                      const std::vector<BusInput>& inputs, Answered answered,
                      std::optional<std::chrono::milliseconds> limit) {
  mState->call(mState->object(path, interface), method, inputs, limit, std::move(answered));
}

void BusService::getProperties(const std::string& path, const std::string& interface,
                               std::function<void(const PropertyList& properties)> answered) {
  const auto take = [answered = std::move(answered)](const BusAnswer& answer) {
    const bool isUsable = answer.values.size() == 1 && answer.values.front().isDictionary();
    answered(isUsable ? answer.values.front() : PropertyList());
  };
  mState->call(mState->object(path, propertiesInterface), "GetAll", {{"s", interface}}, std::nullopt, take);
}

void BusService::setProperty(const std::string& path, const std::string& interface, const std::string& property,
                             const BusInput& value, Answered answered) {
  call(path, propertiesInterface, "Set", {{"s", interface}, {"s", property}, {"v<" + value.type + ">", value.value}},
       std::move(answered));
}

void BusService::watch(const std::string& path, const std::string& interface, const std::string& signal,
                       SignalWatch::Handler received) {
  mState->watch({path, interface, signal}, std::move(received));
}

void BusService::watchAllBelow(const std::string& path, const std::string& interface, const std::string& signal,
                               SignalWatch::Handler received) {
  SignalSource source{path, interface, signal};
  source.hasObjectsBelow = true;
  mState->watch(std::move(source), std::move(received));
}

void BusService::unwatch(const std::string& path) {
  std::erase_if(mState->watches, [&path](const State::Watch& watch) { return watch.path == path; });
}

std::optional<PropertyChanges> propertyChangesOf(const ReceivedSignal& received, std::string_view interface) {
  const auto& values = received.values;
  if (values.size() != 3 || values[0].string() != interface || !values[1].isDictionary()) return std::nullopt;
  return PropertyChanges{values[1], !values[2].isEmpty()};
}

}  // namespace vorn
