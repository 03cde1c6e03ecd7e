#include "ports/DistributedNotificationCenter.h"

#include <systemd/sd-bus.h>

#include <algorithm>
#include <cstring>
#include <map>
#include <optional>
#include <set>
#include <utility>
#include <vector>

#include "model/PropertyListCodec.h"
#include "model/VrCoreUtility.h"
#include "ports/BusCall.h"
#include "ports/PortWatch.h"

namespace vorn {

namespace {

constexpr const char* postedMember = "Posted";

// An apostrophe inside a rule's quotes ends them; outside of them "\'" stands for it (D-Bus specification, "Match
// Rules").
std::string quoted(std::string_view text) {
  std::string result = "'";
  for (const char character : text) {
    if (character == '\'')
      result += "'\\''";
    else
      result += character;
  }
  return result + "'";
}

// For those who look at the object; the signal itself needs no entry.
const sd_bus_vtable signalTable[] = {
    SD_BUS_VTABLE_START(0),
    SD_BUS_SIGNAL_WITH_ARGS(postedMember, SD_BUS_ARGS("s", name, "s", object, "ay", userInfo), 0), SD_BUS_VTABLE_END};

std::string matchRuleFor(const std::string& name) {
  return "type='signal',interface=" + quoted(notificationCenterInterface) + ",member=" + quoted(postedMember) +
         ",path=" + quoted(notificationCenterObjectPath) + ",arg0=" + quoted(name);
}

struct Registration {
  NotificationCenter::Observer observer;
  std::string name;
  NotificationCenter::Handler handler;
  bool isRemoved = false;
};

}  // namespace

struct DistributedNotificationCenter::State {
  std::vector<std::shared_ptr<Registration>> registrations;
  std::map<std::string, std::size_t, std::less<>> observersOfName;
  // While notifications are delivered, the rules of names without observers stay for a moment: a handler that removes
  // its observer and adds it again must not miss what is posted in between.
  int deliveries = 0;
  std::set<std::string, std::less<>> idleRules;
  // The connection that carries the match rules; another one after the bus was lost.
  bus::BusReference bus;
  bus::SlotReference filter;
  bus::SlotReference object;
  std::optional<PortWatch> believed;

  BusConnection& connection();
  void believe(const std::string& portName) {
    believed.emplace(portName, [] {});
  }
  bool isBelieved(sd_bus_message* message) const;
  void add(std::shared_ptr<Registration> registration);
  void removeIf(const std::function<bool(const Registration&)>& isMeant);
  void deliver(const Notification& notification);

 private:
  static int handleMessage(sd_bus_message* message, void* state, sd_bus_error*);
  void addRule(BusConnection& connection, const std::string& name);
  void removeRule(BusConnection& connection, const std::string& name);
  void removeIdleRules();
};

BusConnection& DistributedNotificationCenter::State::connection() {
  BusConnection& connection = BusConnection::forThisThread();
  if (!connection.isOpen() || connection.handle() == bus.get()) return connection;
  // sd-bus reads match rules with a grammar of its own, in which not every name can be told; so the rules go to the
  // bus as calls, and one filter takes the signals.
  bus = bus::share(connection.handle());
  sd_bus_slot* slot = nullptr;
  const int result = sd_bus_add_filter(bus.get(), &slot, handleMessage, this);
  filter.reset(slot);
  if (result < 0) bus::log(std::string("Cannot observe notifications: ") + std::strerror(-result));
  sd_bus_slot* added = nullptr;
  sd_bus_add_object_vtable(bus.get(), &added, notificationCenterObjectPath, notificationCenterInterface, signalTable,
                           nullptr);
  object.reset(added);
  idleRules.clear();
  for (const auto& [name, count] : observersOfName) addRule(connection, name);
  // Names of connections mean something on one bus alone.
  if (believed) believe(std::string(believed->portName()));
  return connection;
}

void DistributedNotificationCenter::State::addRule(BusConnection& connection, const std::string& name) {
  const auto request = bus::newBusCall(connection, "AddMatch");
  bus::Error error;
  if (!request || sd_bus_message_append(request.get(), "s", matchRuleFor(name).c_str()) < 0 ||
      !bus::call(connection, request.get(), bus::busTimeout, error))
    bus::log("Cannot observe notification \"" + name + "\": " + error.text());
}

void DistributedNotificationCenter::State::removeRule(BusConnection& connection, const std::string& name) {
  const auto request = bus::newBusCall(connection, "RemoveMatch");
  if (!request || sd_bus_message_append(request.get(), "s", matchRuleFor(name).c_str()) < 0) return;
  // The bus keeps the order of our messages, so nothing is gained by waiting for its answer.
  if (sd_bus_message_set_expect_reply(request.get(), 0) >= 0) sd_bus_send(connection.handle(), request.get(), nullptr);
  connection.announceQueuedMessages();
}

void DistributedNotificationCenter::State::add(std::shared_ptr<Registration> registration) {
  BusConnection& current = connection();
  const std::string name = registration->name;
  registrations.push_back(std::move(registration));
  const bool isFirst = ++observersOfName[name] == 1;
  if (isFirst && idleRules.erase(name) == 0 && current.isOpen()) addRule(current, name);
}

void DistributedNotificationCenter::State::removeIf(const std::function<bool(const Registration&)>& isMeant) {
  connection();
  const auto removed = std::stable_partition(registrations.begin(), registrations.end(),
                                             [&](const auto& registration) { return !isMeant(*registration); });
  // A removed handler may own what called us; it goes when everything here is consistent again.
  const std::vector<std::shared_ptr<Registration>> dropped(removed, registrations.end());
  registrations.erase(removed, registrations.end());
  for (const auto& registration : dropped) {
    registration->isRemoved = true;
    const auto found = observersOfName.find(registration->name);
    if (--found->second > 0) continue;
    observersOfName.erase(found);
    idleRules.insert(registration->name);
  }
  if (deliveries == 0) removeIdleRules();
}

void DistributedNotificationCenter::State::removeIdleRules() {
  BusConnection& current = connection();
  for (const std::string& name : std::exchange(idleRules, {})) {
    if (current.isOpen()) removeRule(current, name);
  }
}

void DistributedNotificationCenter::State::deliver(const Notification& notification) {
  std::vector<std::shared_ptr<Registration>> concerned;
  std::copy_if(registrations.begin(), registrations.end(), std::back_inserter(concerned),
               [&](const auto& registration) { return registration->name == notification.name; });
  ++deliveries;
  for (const auto& registration : concerned)
    if (!registration->isRemoved) registration->handler(notification);
  if (--deliveries == 0) removeIdleRules();
}

bool DistributedNotificationCenter::State::isBelieved(sd_bus_message* message) const {
  const char* sender = sd_bus_message_get_sender(message);
  return !believed || (sender != nullptr && sender == believed->owner());
}

int DistributedNotificationCenter::State::handleMessage(sd_bus_message* message, void* state, sd_bus_error*) {
  if (sd_bus_message_is_signal(message, notificationCenterInterface, postedMember) <= 0) return 0;
  const char* path = sd_bus_message_get_path(message);
  const char* name = nullptr;
  const char* object = nullptr;
  if (path == nullptr || std::strcmp(path, notificationCenterObjectPath) != 0 ||
      sd_bus_message_has_signature(message, "ssay") <= 0 || sd_bus_message_read(message, "ss", &name, &object) < 0)
    return 0;
  const std::optional<BytesView> userInfo = bus::readBytes(message);
  auto& self = *static_cast<State*>(state);
  if (!userInfo || !self.observersOfName.contains(name) || !self.isBelieved(message)) return 0;
  Notification notification{name, object, PropertyList()};
  if (!userInfo->empty()) {
    notification.userInfo = VrCoreUtility::convertDataToDictionary(*userInfo);
    if (!notification.userInfo.isDictionary()) {
      bus::log("The user information of notification \"" + notification.name + "\" is no dictionary and is ignored");
      notification.userInfo = PropertyList();
    }
  }
  self.deliver(notification);
  return 0;
}

DistributedNotificationCenter& DistributedNotificationCenter::defaultCenter() {
  // The connection is made first, so that it outlives the centre at the end of the thread.
  BusConnection::forThisThread();
  thread_local DistributedNotificationCenter center;
  center.mState->connection();
  return center;
}

DistributedNotificationCenter::DistributedNotificationCenter() : mState(std::make_unique<State>()) {}

DistributedNotificationCenter::~DistributedNotificationCenter() = default;

void DistributedNotificationCenter::believeOnly(std::string_view portName) {
  mState->believe(std::string(portName));
}

void DistributedNotificationCenter::addObserver(Observer observer, std::string_view name, Handler handler) {
  mState->add(std::make_shared<Registration>(Registration{observer, std::string(name), std::move(handler)}));
}

void DistributedNotificationCenter::removeObserver(Observer observer, std::string_view name) {
  mState->removeIf(
      [&](const Registration& registration) { return registration.observer == observer && registration.name == name; });
}

void DistributedNotificationCenter::removeObserver(Observer observer) {
  mState->removeIf([&](const Registration& registration) { return registration.observer == observer; });
}

void DistributedNotificationCenter::post(std::string_view name, std::string_view object, const PropertyList& userInfo) {
  postTo({}, name, object, userInfo);
}

void DistributedNotificationCenter::postTo(std::string_view receiver, std::string_view name, std::string_view object,
                                           const PropertyList& userInfo) {
  const auto drop = [&](const std::string& reason) {
    bus::log("Notification \"" + std::string(name) + "\" is not posted: " + reason);
  };
  Bytes encoded;
  if (!userInfo.isNone()) {
    std::string reason;
    std::optional<Bytes> bytes = encodeBinaryPropertyList(userInfo, &reason);
    if (!bytes) return drop(reason);
    encoded = std::move(*bytes);
  }
  BusConnection& connection = mState->connection();
  if (!connection.isOpen()) return drop(connection.error());
  // The bus stops listening to a program of whose messages it keeps too many for others, who do not read theirs.
  std::uint64_t unwritten = 0;
  sd_bus_get_n_queued_write(connection.handle(), &unwritten);
  if (unwritten >= maximumUnwritten) return drop("the bus takes no more");
  sd_bus_message* created = nullptr;
  if (sd_bus_message_new_signal(connection.handle(), &created, notificationCenterObjectPath,
                                notificationCenterInterface, postedMember) < 0)
    return drop("the bus connection is closing");
  const bus::MessageReference message(created);
  if (!bus::isWithoutNul(name) || !bus::isWithoutNul(object) ||
      sd_bus_message_append(created, "ss", std::string(name).c_str(), std::string(object).c_str()) < 0)
    return drop("its name or object is no text that the bus carries");
  if (!bus::appendBytes(created, encoded)) return drop("its user information is too large");
  if (!receiver.empty() && sd_bus_message_set_destination(created, std::string(receiver).c_str()) < 0)
    return drop("its receiver is no bus name");
  const int result = sd_bus_send(connection.handle(), created, nullptr);
  if (result < 0) return drop(std::strerror(-result));
  connection.announceQueuedMessages();
}

}  // namespace vorn
