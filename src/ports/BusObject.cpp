#include "ports/BusObject.h"

#include <systemd/sd-bus.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <deque>

#include "ports/BusCall.h"
#include "ports/BusValue.h"

namespace vorn {

namespace {

std::string typesOf(const std::vector<BusArgument>& arguments) {
  std::string types;
  for (const BusArgument& argument : arguments) types += argument.type;
  return types;
}

bool appendValues(sd_bus_message* message, const std::vector<BusArgument>& arguments,
                  const std::vector<PropertyList>& values) {
  return std::equal(arguments.begin(), arguments.end(), values.begin(), values.end(),
                    [message](const BusArgument& argument, const PropertyList& value) {
                      return bus::appendValue(message, argument.type, value);
                    });
}

constexpr std::string_view basicTypes = "bnqiuxts";

bool hasOnlyBasicInputs(const BusMethod& method) {
  return std::all_of(method.inputs.begin(), method.inputs.end(), [](const BusArgument& input) {
    return input.type.size() == 1 && basicTypes.find(input.type) != std::string_view::npos;
  });
}

// What the bus looks at, also for a while after a method has ended its own object: it belongs to the slot.
class PublishedTable {
 public:
  explicit PublishedTable(BusObjectDescription description) : mDescription(std::move(description)) { make(); }
  PublishedTable(const PublishedTable&) = delete;
  PublishedTable& operator=(const PublishedTable&) = delete;

  // Hands the table over to the slot. 0 or a negative errno.
  static int publish(std::unique_ptr<PublishedTable> table, sd_bus* bus, bus::SlotReference* slot);

  const BusObjectDescription& description() const { return mDescription; }

 private:
  const char* keep(std::string text) { return mTexts.emplace_back(std::move(text)).c_str(); }
  const char* keepNames(const std::vector<BusArgument>& first, const std::vector<BusArgument>& second);
  void make();
  static int handleCall(sd_bus_message* message, void* table, sd_bus_error* error);

  const BusObjectDescription mDescription;
  std::deque<std::string> mTexts;  // that the entries point to
  std::vector<sd_bus_vtable> mEntries;
};

// Each name with a NUL after it, one after the other.
const char* PublishedTable::keepNames(const std::vector<BusArgument>& first, const std::vector<BusArgument>& second) {
  std::string names;
  for (const auto* arguments : {&first, &second}) {
    for (const BusArgument& argument : *arguments) names.append(argument.name).push_back('\0');
  }
  return keep(std::move(names));
}

void PublishedTable::make() {
  mEntries.push_back(SD_BUS_VTABLE_START(0));
  for (const BusMethod& method : mDescription.methods) {
    mEntries.push_back(SD_BUS_METHOD_WITH_NAMES(method.name.c_str(), keep(typesOf(method.inputs)), ,
                                                keep(typesOf(method.outputs)), keepNames(method.inputs, method.outputs),
                                                handleCall, SD_BUS_VTABLE_UNPRIVILEGED));
  }
  for (const BusSignal& signal : mDescription.signals) {
    mEntries.push_back(SD_BUS_SIGNAL_WITH_NAMES(signal.name.c_str(), keep(typesOf(signal.arguments)),
                                                keepNames(signal.arguments, {}), 0));
  }
  mEntries.push_back(SD_BUS_VTABLE_END);
}

int PublishedTable::publish(std::unique_ptr<PublishedTable> table, sd_bus* bus, bus::SlotReference* slot) {
  sd_bus_slot* added = nullptr;
  const BusObjectDescription& description = table->mDescription;
  const int result = sd_bus_add_object_vtable(bus, &added, description.path.c_str(), description.interface.c_str(),
                                              table->mEntries.data(), table.get());
  if (result < 0) return result;
  slot->reset(added);
  sd_bus_slot_set_destroy_callback(added, [](void* owned) { delete static_cast<PublishedTable*>(owned); });
  static_cast<void>(table.release());
  return 0;
}

int sendReply(sd_bus_message* call, const std::vector<BusArgument>& outputs, const BusReply& reply) {
  if (!reply.errorName.empty()) {
    return sd_bus_reply_method_errorf(call, reply.errorName.c_str(), "%s", reply.errorText.c_str());
  }
  sd_bus_message* started = nullptr;
  const int result = sd_bus_message_new_method_return(call, &started);
  if (result < 0) return result;
  const bus::MessageReference message(started);
  if (!appendValues(message.get(), outputs, reply.values)) {
    return sd_bus_reply_method_errorf(call, SD_BUS_ERROR_FAILED, "The result does not fit the method's types");
  }
  return sd_bus_message_send(message.get());
}

int PublishedTable::handleCall(sd_bus_message* message, void* table, sd_bus_error* /*error*/) {
  const auto& methods = static_cast<const PublishedTable*>(table)->mDescription.methods;
  const char* member = sd_bus_message_get_member(message);
  const auto method =
      std::find_if(methods.begin(), methods.end(), [member](const BusMethod& each) { return each.name == member; });
  if (method == methods.end()) return -EBADMSG;
  std::vector<PropertyList> inputs;
  for (const BusArgument& input : method->inputs) {
    const auto value = bus::readBasicValue(message, input.type.front());
    if (!value) return -EBADMSG;
    inputs.push_back(*value);
  }
  const char* name = sd_bus_message_get_sender(message);
  const std::string sender = name != nullptr ? name : "";
  if (method->callLater) {
    // The caller's message stays until its answer; a function that can be copied holds it.
    const std::shared_ptr<sd_bus_message> call(sd_bus_message_ref(message), bus::Unref());
    method->callLater(inputs, sender, [call, outputs = method->outputs](const BusReply& reply) {
      sendReply(call.get(), outputs, reply);
      BusConnection::forThisThread().announceQueuedMessages();
    });
    return 1;
  }
  const BusReply reply = method->callFrom ? method->callFrom(inputs, sender) : method->call(inputs);
  const int sent = sendReply(message, method->outputs, reply);
  return sent < 0 ? sent : 1;
}

}  // namespace

struct BusObject::State {
  const PublishedTable* table = nullptr;  // as long as the slot
  bus::BusReference bus;
  bus::SlotReference slot;
  bool isNameOurs = false;

  const BusObjectDescription& description() const { return table->description(); }
  bool emit(const BusSignal& signal, const std::vector<PropertyList>& values) const;
};

bool BusObject::State::emit(const BusSignal& signal, const std::vector<PropertyList>& values) const {
  sd_bus_message* started = nullptr;
  if (sd_bus_message_new_signal(bus.get(), &started, description().path.c_str(), description().interface.c_str(),
                                signal.name.c_str()) < 0)
    return false;
  const bus::MessageReference message(started);
  return appendValues(message.get(), signal.arguments, values) && sd_bus_send(bus.get(), message.get(), nullptr) >= 0;
}

BusObject::BusObject() : mState(std::make_unique<State>()) {}

std::unique_ptr<BusObject> BusObject::create(BusObjectDescription description, std::string* error) {
  const auto fail = [error](std::string reason) {
    if (error != nullptr) *error = std::move(reason);
    return nullptr;
  };
  if (!bus::isValidBusName(description.busName)) return fail("Not a valid bus name: " + description.busName);
  for (const BusMethod& method : description.methods) {
    if (!hasOnlyBasicInputs(method)) return fail("A method takes more than basic types: " + method.name);
  }
  BusConnection& connection = BusConnection::forThisThread();
  if (!connection.isOpen()) return fail(connection.error());

  std::unique_ptr<BusObject> object(new BusObject);
  State& state = *object->mState;
  state.bus = bus::share(connection.handle());
  auto table = std::make_unique<PublishedTable>(std::move(description));
  state.table = table.get();
  // Whoever sees the name must find the object.
  int result = PublishedTable::publish(std::move(table), state.bus.get(), &state.slot);
  if (result < 0) return fail(std::strerror(-result));
  result = bus::claimName(connection, state.description().busName);
  state.isNameOurs = result >= 0;
  if (result == -EEXIST) return fail("Another program has the name " + state.description().busName);
  return result < 0 ? fail(std::strerror(-result)) : std::move(object);
}

BusObject::~BusObject() {
  if (mState->isNameOurs) sd_bus_release_name(mState->bus.get(), mState->description().busName.c_str());
}

bool BusObject::emit(const std::string& signal, const std::vector<PropertyList>& values) {
  const auto& signals = mState->description().signals;
  const auto found =
      std::find_if(signals.begin(), signals.end(), [&](const BusSignal& each) { return each.name == signal; });
  if (found == signals.end() || !mState->emit(*found, values)) return false;
  BusConnection::forThisThread().announceQueuedMessages();
  return true;
}

}  // namespace vorn
