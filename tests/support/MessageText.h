// What a message of the bus holds, as a text that tests can compare.
#pragma once

#include <systemd/sd-bus.h>

#include <cstdint>
#include <string>

namespace vorn::test {

// The values that are left in the message or its container: 'text', a number behind the letter of its type,
// (structure), [array], [key value], <type variant>.
inline std::string textOf(sd_bus_message* message) {
  std::string text;
  char type = 0;
  const char* contents = nullptr;
  while (sd_bus_message_peek_type(message, &type, &contents) > 0) {
    if (!text.empty()) text += ' ';
    if (contents != nullptr) {
      sd_bus_message_enter_container(message, type, contents);
      const bool isStructure = type == SD_BUS_TYPE_STRUCT;
      text += isStructure ? "(" : type == SD_BUS_TYPE_VARIANT ? std::string("<") + contents + " " : "[";
      text += textOf(message) + (isStructure ? ")" : type == SD_BUS_TYPE_VARIANT ? ">" : "]");
      sd_bus_message_exit_container(message);
    } else if (type == SD_BUS_TYPE_STRING) {
      const char* value = nullptr;
      sd_bus_message_read_basic(message, type, &value);
      text += "'" + std::string(value) + "'";
    } else {
      std::uint64_t value = 0;
      sd_bus_message_read_basic(message, type, &value);
      text += type + std::to_string(value);
    }
  }
  return text;
}

}  // namespace vorn::test
