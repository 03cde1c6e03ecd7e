#include "ports/ServiceManager.h"

#include <systemd/sd-bus.h>
#include <systemd/sd-daemon.h>

#include <algorithm>
#include <iterator>
#include <list>
#include <utility>

#include "model/Utf8.h"
#include "ports/BusCall.h"
#include "ports/BusConnection.h"

namespace vorn {

namespace {

constexpr const char* managerName = "org.freedesktop.systemd1";
constexpr const char* managerPath = "/org/freedesktop/systemd1";
constexpr const char* managerInterface = "org.freedesktop.systemd1.Manager";
constexpr std::size_t maximumApplicationLength = 48;

bool mayStandInUnitNames(char character) {
  return (character >= '0' && character <= '9') || (character >= 'A' && character <= 'Z') ||
         (character >= 'a' && character <= 'z') || character == '_' || character == '.' || character == ':';
}

bool appendExecStart(sd_bus_message* message, const TransientService& service) {
  const bool isOpen = sd_bus_message_open_container(message, SD_BUS_TYPE_STRUCT, "sv") >= 0 &&
                      sd_bus_message_append(message, "s", "ExecStartEx") >= 0 &&
                      sd_bus_message_open_container(message, SD_BUS_TYPE_VARIANT, "a(sasas)") >= 0 &&
                      sd_bus_message_open_container(message, SD_BUS_TYPE_ARRAY, "(sasas)") >= 0 &&
                      sd_bus_message_open_container(message, SD_BUS_TYPE_STRUCT, "sasas") >= 0 &&
                      sd_bus_message_append(message, "s", service.program.c_str()) >= 0 &&
                      sd_bus_message_open_container(message, SD_BUS_TYPE_ARRAY, "s") >= 0;
  if (!isOpen) return false;
  for (const std::string& argument : service.arguments) {
    if (!bus::isWithoutNul(argument) || sd_bus_message_append(message, "s", argument.c_str()) < 0) return false;
  }
  // The manager would take $NAME in an argument for a variable of its own.
  return sd_bus_message_close_container(message) >= 0 &&
         sd_bus_message_append(message, "as", 1, "no-env-expand") >= 0 &&
         sd_bus_message_close_container(message) >= 0 && sd_bus_message_close_container(message) >= 0 &&
         sd_bus_message_close_container(message) >= 0 && sd_bus_message_close_container(message) >= 0;
}

// systemd refuses all of them for one that it does not take (environ(7), and env_assignment_is_valid() in its sources).
bool isVariable(std::string_view assignment) {
  const auto isOfName = [](char character) {
    return (character >= '0' && character <= '9') || (character >= 'A' && character <= 'Z') ||
           (character >= 'a' && character <= 'z') || character == '_';
  };
  const std::string_view name = assignment.substr(0, assignment.find('='));
  if (name.empty() || name.size() == assignment.size() || (name.front() >= '0' && name.front() <= '9')) return false;
  if (!std::ranges::all_of(name, isOfName)) return false;
  for (std::string_view rest = assignment; !rest.empty();) {
    const Utf8Character character = firstCharacter(rest);
    const bool isBlank = character.code == '\t' || character.code == '\n';
    if (!character.isValid || character.code == 0x7F || (character.code < 0x20 && !isBlank)) return false;
    rest.remove_prefix(character.length);
  }
  return true;
}

bool appendTexts(sd_bus_message* message, const char* property, const std::vector<std::string>& texts) {
  if (texts.empty()) return true;
  const bool isOpen = sd_bus_message_open_container(message, SD_BUS_TYPE_STRUCT, "sv") >= 0 &&
                      sd_bus_message_append(message, "s", property) >= 0 &&
                      sd_bus_message_open_container(message, SD_BUS_TYPE_VARIANT, "as") >= 0 &&
                      sd_bus_message_open_container(message, SD_BUS_TYPE_ARRAY, "s") >= 0;
  return isOpen &&
         std::ranges::all_of(
             texts, [&](const std::string& text) { return sd_bus_message_append(message, "s", text.c_str()) >= 0; }) &&
         sd_bus_message_close_container(message) >= 0 && sd_bus_message_close_container(message) >= 0 &&
         sd_bus_message_close_container(message) >= 0;
}

bool appendEnvironment(sd_bus_message* message, const TransientService& service) {
  std::vector<std::string> variables;
  std::ranges::copy_if(service.environment, std::back_inserter(variables), isVariable);
  return appendTexts(message, "Environment", variables) &&
         appendTexts(message, "UnsetEnvironment", service.withoutVariables);
}

bool appendProperties(sd_bus_message* message, const TransientService& service) {
  const std::string folder = "-" + service.folder;
  const std::pair<const char*, const char*> properties[] = {
      {"Description", service.description.c_str()},
      // The start is over when the program has been executed, or has not.
      {"Type", "exec"},
      // A program may leave its work to a child.
      {"ExitType", "cgroup"},
      {"Slice", "app.slice"},
      {"CollectMode", "inactive-or-failed"},
      {"WorkingDirectory", folder.c_str()},
  };
  if (sd_bus_message_open_container(message, SD_BUS_TYPE_ARRAY, "(sv)") < 0) return false;
  for (const auto& [name, value] : properties) {
    if (sd_bus_message_append(message, "(sv)", name, "s", value) < 0) return false;
  }
  return appendEnvironment(message, service) && appendExecStart(message, service) &&
         sd_bus_message_close_container(message) >= 0;
}

bus::MessageReference newStart(const BusConnection& connection, const TransientService& service) {
  bus::MessageReference call =
      bus::newCall(connection, managerName, managerPath, managerInterface, "StartTransientUnit");
  const bool isWhole = call && sd_bus_message_append(call.get(), "ss", service.unit.c_str(), "fail") >= 0 &&
                       appendProperties(call.get(), service) && sd_bus_message_append(call.get(), "a(sa(sv))", 0) >= 0;
  return isWhole ? std::move(call) : nullptr;
}

}  // namespace

void notifyServiceManager(const std::string& lines) {
  sd_notify(0, lines.c_str());
}

std::string applicationUnit(std::string_view launcher, std::string_view application, std::string_view suffix) {
  constexpr std::string_view digits = "0123456789abcdef";
  std::string unit = "app-" + std::string(launcher) + "-";
  for (const char character : application.substr(0, maximumApplicationLength)) {
    if (mayStandInUnitNames(character)) {
      unit += character;
    } else {
      const auto byte = static_cast<unsigned char>(character);
      unit.append("\\x").append(1, digits[byte / 16]).append(1, digits[byte % 16]);
    }
  }
  return unit + "@" + std::string(suffix) + ".service";
}

struct ServiceStarter::State {
  // A service that is on its way.
  struct Start {
    State* state = nullptr;
    std::string unit;
    Started started;
    bus::SlotReference answer;
  };
  std::list<Start> starts;
  // Only while a start is on its way: the jobs of others are no reason to wake up.
  bus::SlotReference jobs;

  bool listen(const BusConnection& connection);

  void end(std::list<Start>::iterator start, const StartedService& result) {
    const Started started = std::move(start->started);
    starts.erase(start);
    if (starts.empty()) jobs.reset();
    started(result);
  }
  static int answered(sd_bus_message* message, void* start, sd_bus_error*) {
    const sd_bus_error* error = sd_bus_message_get_error(message);
    if (error == nullptr) return 0;
    const std::string reason = error->message != nullptr && *error->message != '\0' ? error->message : error->name;
    State& state = *static_cast<Start*>(start)->state;
    const auto own = std::ranges::find_if(state.starts, [start](const Start& each) { return &each == start; });
    // One that has not answered may still do it.
    const bool isUnanswered = sd_bus_error_has_name(error, SD_BUS_ERROR_NO_REPLY) > 0;
    state.end(own, {"the service manager says: " + reason, !isUnanswered});
    return 0;
  }
  static int jobRemoved(sd_bus_message* message, void* self, sd_bus_error*) {
    const char* unit = nullptr;
    const char* result = nullptr;
    if (sd_bus_message_skip(message, "uo") < 0 || sd_bus_message_read(message, "ss", &unit, &result) <= 0) return 0;
    State& state = *static_cast<State*>(self);
    const auto own = std::ranges::find(state.starts, unit, &Start::unit);
    if (own == state.starts.end()) return 0;
    const bool isDone = std::string_view(result) == "done";
    state.end(
        own,
        {isDone ? "" : std::string("the service manager could not run it (") + result + "); its journal tells why"});
    return 0;
  }
};

bool ServiceStarter::State::listen(const BusConnection& connection) {
  if (jobs) return true;
  // Where the bus has no room for the rule, nobody hears of a program that cannot be run; that is no reason to end.
  const auto ignore = [](sd_bus_message*, void*, sd_bus_error*) { return 0; };
  sd_bus_slot* slot = nullptr;
  const int result = sd_bus_match_signal_async(connection.handle(), &slot, managerName, managerPath, managerInterface,
                                               "JobRemoved", &State::jobRemoved, ignore, this);
  jobs.reset(slot);
  return result >= 0;
}

ServiceStarter::ServiceStarter() : mState(std::make_unique<State>()) {}

ServiceStarter::~ServiceStarter() = default;

bool ServiceStarter::start(const TransientService& service, Started started, std::string& error) {
  BusConnection& connection = BusConnection::forThisThread();
  const bus::MessageReference call = newStart(connection, service);
  if (!call) {
    error = connection.isOpen() ? "the service manager cannot be told of it" : connection.error();
    return false;
  }
  State::Start& entry = mState->starts.emplace_back();
  entry.state = mState.get();
  entry.unit = service.unit;
  entry.started = std::move(started);
  // The bus takes the rule before the request, so the job cannot end unseen.
  sd_bus_slot* slot = nullptr;
  const bool isSent = mState->listen(connection) &&
                      sd_bus_call_async(connection.handle(), &slot, call.get(), &State::answered, &entry, 0) >= 0;
  entry.answer.reset(slot);
  connection.announceQueuedMessages();
  if (isSent) return true;
  mState->starts.pop_back();
  if (mState->starts.empty()) mState->jobs.reset();
  error = "the service manager cannot be reached";
  return false;
}

}  // namespace vorn
