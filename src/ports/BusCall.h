// Private to src/ports: ownership of sd-bus objects, and the few calls that several files make.
#pragma once

#include <systemd/sd-bus.h>

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "model/PropertyList.h"
#include "ports/BusConnection.h"

namespace vorn::bus {

struct Unref {
  void operator()(sd_bus* bus) const { sd_bus_unref(bus); }
  void operator()(sd_bus_message* message) const { sd_bus_message_unref(message); }
  void operator()(sd_bus_slot* slot) const { sd_bus_slot_unref(slot); }
};
using BusReference = std::unique_ptr<sd_bus, Unref>;
using MessageReference = std::unique_ptr<sd_bus_message, Unref>;
using SlotReference = std::unique_ptr<sd_bus_slot, Unref>;

BusReference share(sd_bus* bus);

// The text of a D-Bus error reply.
class Error {
 public:
  Error() = default;
  explicit Error(const sd_bus_error& error) { sd_bus_error_copy(&mError, &error); }
  ~Error() { sd_bus_error_free(&mError); }
  Error(const Error&) = delete;
  Error& operator=(const Error&) = delete;

  sd_bus_error* get() { return &mError; }
  bool is(const char* name) const { return sd_bus_error_has_name(&mError, name) > 0; }
  std::string name() const { return mError.name != nullptr ? mError.name : ""; }
  std::string text() const;

 private:
  sd_bus_error mError{};
};

// How long the bus itself may take for an answer.
inline constexpr std::chrono::milliseconds busTimeout{2000};
// An array of bytes may be at most this long on the bus (D-Bus specification, "Marshaling (Wire Format)", ARRAY).
inline constexpr std::size_t maximumDataSize = std::size_t{1} << 26;

// A valid well-known bus name; also says no to a text that holds a NUL.
bool isValidBusName(std::string_view name);
// A text that can be sent as a D-Bus string, apart from its encoding, which sd-bus checks.
bool isWithoutNul(std::string_view text);

// A call that starts no service. Null when it cannot be built (no bus, an invalid name).
MessageReference newCall(const BusConnection& connection, const std::string& destination, const std::string& path,
                         const char* interface, const char* member);
// A call of the bus itself.
MessageReference newBusCall(const BusConnection& connection, const char* member);
bool appendBytes(sd_bus_message* message, BytesView bytes);
// Valid as long as the message.
std::optional<BytesView> readBytes(sd_bus_message* message);

// Sends the call and blocks until its answer came or the time has passed. Null on failure; error then tells why.
MessageReference call(BusConnection& connection, sd_bus_message* message, std::chrono::milliseconds timeout,
                      Error& error);

// Sends the call and returns at once. done is called once: from the connection's process() with the answer, which may
// be an error, or with null when the call could not be sent or its connection goes. A null message cannot be sent.
// Without a limit it waits as long as the connection lasts.
void callLater(BusConnection& connection, sd_bus_message* message, std::optional<std::chrono::milliseconds> limit,
               std::function<void(sd_bus_message* answer)> done);

// Has the handler called with whatever fits the rule. On the session's bus from now on; on the system's, which nobody
// waits for, from when it knows. Null, and nothing is called, where that cannot be.
SlotReference addMatch(Bus bus, const std::string& rule, sd_bus_message_handler_t handler, void* userData);
// The same without waiting for either bus: it knows of the rule before it hears of what is sent afterwards.
SlotReference addMatchLater(Bus bus, const std::string& rule, sd_bus_message_handler_t handler, void* userData);

// The rule for the bus's own word that a bus name has another owner; argument: which ones ("arg0='org.vorn.Example'").
std::string ownerChangesOf(const std::string& argument);
struct OwnerChange {
  std::string busName;
  std::string previousOwner;  // the unique name of its connection; empty for none
  std::string owner;          // likewise
};
// Nothing for what is no such word.
std::optional<OwnerChange> readOwnerChange(sd_bus_message* message);

bool hasOwner(BusConnection& connection, const std::string& busName);
// The unique name of the connection that has the bus name; empty for none.
std::string ownerOf(BusConnection& connection, const std::string& busName);
// Takes the name without queueing for it and without letting others replace us. 0 or a negative errno, -EEXIST when
// it is somebody's already, also our own.
int claimName(BusConnection& connection, const std::string& busName);

// The clock of the bus and of the event loop.
std::uint64_t monotonicMicroseconds();

void log(const std::string& line);

}  // namespace vorn::bus
