// Which process a connection of the bus belongs to.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace vorn {

// Asks the bus without waiting. told is called once, now or from the run loop of the calling thread: with the number of
// the process that has the connection (its unique bus name), or with nothing where the connection is gone or the bus
// does not tell soon.
void askForProcess(const std::string& connectionName, std::function<void(std::optional<std::uint32_t> process)> told);

}  // namespace vorn
