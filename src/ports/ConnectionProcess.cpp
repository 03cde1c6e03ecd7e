#include "ports/ConnectionProcess.h"

#include <utility>

#include "ports/BusCall.h"

namespace vorn {

void askForProcess(const std::string& connectionName, std::function<void(std::optional<std::uint32_t> process)> told) {
  BusConnection& connection = BusConnection::forThisThread();
  bus::MessageReference question = bus::newBusCall(connection, "GetConnectionUnixProcessID");
  if (question && sd_bus_message_append(question.get(), "s", connectionName.c_str()) < 0) question.reset();
  // A bus that is full leaves out answers.
  bus::callLater(connection, question.get(), bus::busTimeout, [told = std::move(told)](sd_bus_message* answer) {
    std::uint32_t process = 0;
    const bool isKnown = answer != nullptr && sd_bus_message_is_method_error(answer, nullptr) == 0 &&
                         sd_bus_message_read(answer, "u", &process) > 0;
    told(isKnown ? std::optional(process) : std::nullopt);
  });
  connection.announceQueuedMessages();
}

}  // namespace vorn
