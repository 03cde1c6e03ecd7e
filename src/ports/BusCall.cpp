#include "ports/BusCall.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <ctime>

namespace vorn::bus {

BusReference share(sd_bus* bus) {
  return BusReference(sd_bus_ref(bus));
}

std::string Error::text() const {
  if (mError.message != nullptr) return mError.message;
  return mError.name != nullptr ? mError.name : "unknown error";
}

bool isWithoutNul(std::string_view text) {
  return text.find('\0') == std::string_view::npos;
}

bool isValidBusName(std::string_view name) {
  return isWithoutNul(name) && sd_bus_service_name_is_valid(std::string(name).c_str()) > 0;
}

MessageReference newCall(const BusConnection& connection, const std::string& destination, const std::string& path,
                         const char* interface, const char* member) {
  if (!connection.isOpen()) return nullptr;
  sd_bus_message* message = nullptr;
  if (sd_bus_message_new_method_call(connection.handle(), &message, destination.c_str(), path.c_str(), interface,
                                     member) < 0)
    return nullptr;
  MessageReference call(message);
  return sd_bus_message_set_auto_start(message, 0) < 0 ? nullptr : std::move(call);
}

MessageReference newBusCall(const BusConnection& connection, const char* member) {
  return newCall(connection, "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", member);
}

bool appendBytes(sd_bus_message* message, BytesView bytes) {
  // The bus ends the connection of a sender that goes beyond this.
  if (bytes.size() > maximumDataSize) return false;
  return sd_bus_message_append_array(message, SD_BUS_TYPE_BYTE, bytes.data(), bytes.size()) >= 0;
}

std::optional<BytesView> readBytes(sd_bus_message* message) {
  const void* bytes = nullptr;
  std::size_t size = 0;
  if (sd_bus_message_read_array(message, SD_BUS_TYPE_BYTE, &bytes, &size) < 0) return std::nullopt;
  return BytesView(static_cast<const std::uint8_t*>(bytes), size);
}

MessageReference call(BusConnection& connection, sd_bus_message* message, std::chrono::milliseconds timeout,
                      Error& error) {
  // A limit of 0 would mean sd-bus's own default.
  const auto limit = std::max<std::int64_t>(std::chrono::microseconds(timeout).count(), 1);
  const BusReference alive = share(connection.handle());
  sd_bus_message* reply = nullptr;
  const int result = sd_bus_call(alive.get(), message, static_cast<std::uint64_t>(limit), error.get(), &reply);
  connection.announceQueuedMessages();
  return result < 0 ? nullptr : MessageReference(reply);
}

namespace {

// What the bus keeps of a call under way.
struct Calling {
  std::function<void(sd_bus_message*)> done;
  bool isDone = false;

  void finish(sd_bus_message* answer) {
    isDone = true;
    done(answer);
  }
  static int answered(sd_bus_message* answer, void* calling, sd_bus_error*) {
    static_cast<Calling*>(calling)->finish(answer);
    return 0;
  }
  static void dropped(void* calling) {
    const std::unique_ptr<Calling> owned(static_cast<Calling*>(calling));
    if (!owned->isDone) owned->finish(nullptr);
  }
};

}  // namespace

void callLater(BusConnection& connection, sd_bus_message* message, std::optional<std::chrono::milliseconds> limit,
               std::function<void(sd_bus_message* answer)> done) {
  auto calling = std::make_unique<Calling>(Calling{std::move(done)});
  const std::uint64_t time = limit ? static_cast<std::uint64_t>(std::chrono::microseconds(*limit).count()) : UINT64_MAX;
  sd_bus_slot* slot = nullptr;
  if (message == nullptr ||
      sd_bus_call_async(connection.handle(), &slot, message, Calling::answered, calling.get(), time) < 0)
    return calling->finish(nullptr);
  sd_bus_slot_set_destroy_callback(slot, Calling::dropped);
  // From here on the bus owns both.
  sd_bus_slot_set_floating(slot, 1);
  sd_bus_slot_unref(slot);
  static_cast<void>(calling.release());
  if (limit) connection.announceTimeout();
}

SlotReference addMatch(Bus bus, const std::string& rule, sd_bus_message_handler_t handler, void* userData) {
  if (bus == Bus::System) return addMatchLater(bus, rule, handler, userData);
  BusConnection& connection = BusConnection::forThisThread(bus);
  if (!connection.isOpen()) return nullptr;
  sd_bus_slot* slot = nullptr;
  const int result = sd_bus_add_match(connection.handle(), &slot, rule.c_str(), handler, userData);
  connection.announceQueuedMessages();
  return result < 0 ? nullptr : SlotReference(slot);
}

SlotReference addMatchLater(Bus bus, const std::string& rule, sd_bus_message_handler_t handler, void* userData) {
  BusConnection& connection = BusConnection::forThisThread(bus);
  if (!connection.isOpen()) return nullptr;
  // A bus that has no room for the rule is no reason to end the connection, which is what happens without this.
  const auto ignore = [](sd_bus_message*, void*, sd_bus_error*) { return 0; };
  sd_bus_slot* slot = nullptr;
  const int result = sd_bus_add_match_async(connection.handle(), &slot, rule.c_str(), handler, ignore, userData);
  connection.announceQueuedMessages();
  return result < 0 ? nullptr : SlotReference(slot);
}

std::string ownerChangesOf(const std::string& argument) {
  return "type='signal',sender='org.freedesktop.DBus',path='/org/freedesktop/DBus',interface='org.freedesktop.DBus',"
         "member='NameOwnerChanged'," +
         argument;
}

std::optional<OwnerChange> readOwnerChange(sd_bus_message* message) {
  const char* name = nullptr;
  const char* previousOwner = nullptr;
  const char* owner = nullptr;
  if (sd_bus_message_read(message, "sss", &name, &previousOwner, &owner) <= 0) return std::nullopt;
  return OwnerChange{name, previousOwner, owner};
}

namespace {

// The bus's answer to a question about the name; null for none.
MessageReference askAbout(BusConnection& connection, const char* member, const std::string& busName) {
  const MessageReference request = newBusCall(connection, member);
  if (!request || sd_bus_message_append(request.get(), "s", busName.c_str()) < 0) return nullptr;
  Error error;
  return call(connection, request.get(), busTimeout, error);
}

}  // namespace

bool hasOwner(BusConnection& connection, const std::string& busName) {
  const MessageReference answer = askAbout(connection, "NameHasOwner", busName);
  int isOwned = 0;
  return answer && sd_bus_message_read(answer.get(), "b", &isOwned) > 0 && isOwned != 0;
}

std::string ownerOf(BusConnection& connection, const std::string& busName) {
  const MessageReference answer = askAbout(connection, "GetNameOwner", busName);
  const char* owner = nullptr;
  return answer && sd_bus_message_read(answer.get(), "s", &owner) > 0 ? owner : "";
}

int claimName(BusConnection& connection, const std::string& busName) {
  const int result = sd_bus_request_name(connection.handle(), busName.c_str(), 0);
  connection.announceQueuedMessages();
  if (result == -EALREADY) return -EEXIST;
  return std::min(result, 0);
}

std::uint64_t monotonicMicroseconds() {
  timespec now{};
  clock_gettime(CLOCK_MONOTONIC, &now);
  return static_cast<std::uint64_t>(now.tv_sec) * 1'000'000 + static_cast<std::uint64_t>(now.tv_nsec) / 1'000;
}

void log(const std::string& line) {
  std::fprintf(stderr, "%s\n", line.c_str());
}

}  // namespace vorn::bus
