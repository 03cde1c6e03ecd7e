// The English text of key codes, modifiers and macro events, as it stands in the table of a macro's events and in the
// labels of assignments. Never localised, and the same under every locale of the process.
//
// Any thread. The one thing shared is the list of held keys, which a lock guards.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "model/PropertyList.h"

namespace vorn {

class eventParser {
 public:
  eventParser() = delete;

  // The values of a macro event's command that have a text.
  static constexpr std::uint8_t releaseCommand = 0;
  static constexpr std::uint8_t pressCommand = 1;

  // The names of the modifiers and of the key, joined by " + ": "Left Control + Left Shift + A". hid is a usage of the
  // keyboard page, 0 to 3 for modifiers alone; of withModifier (bits of a keyboard report, 1 = left control to 128 =
  // right command) only the low 8 bits count. A modifier with a key that has no name ends in " + "; a key without
  // either gives an empty text. Without a modifier the held keys are forgotten.
  static std::string getStringWithHID(std::int64_t hid, std::int64_t withModifier);

  // The character of a letter (upper case) or digit key, 0 for every other key. Only the low 8 bits of hid count.
  static char returnASCII(int hid);

  // Appends the usage of each modifier whose bit is set, from 224 (bit 0) to 231 (bit 7). Only the low 8 bits count.
  static void getModifierHID(int modifier, std::vector<int>& retVal);

  // The lines of one macro event { command, delay, page, argument }: an array of its delay line ("0.020 seconds delay"
  // and a line break) and, for the press or release of a key or of one of the buttons 1 to 9, its event line. The line
  // of a key ends without a line break, that of a button with one. Missing members and members of another type read
  // as 0; command and page count modulo 256. None for a value that is no dictionary.
  static PropertyList parseSequence(const PropertyList& event);

  // The lines of a whole sequence, an array of strings: the lines of every event in order, without the delay line of
  // the first. None when one of the events is no dictionary.
  static PropertyList getMessagesArray(const PropertyList& events);

  // What a line tells, read from its text.
  enum class LineKind { KeyPress, KeyRelease, Button, Other };
  static LineKind kindOfLine(std::string_view line);

  // The line of the release that belongs to the line of a press; empty for any other line.
  static std::string releaseLineOf(std::string_view press);

  // The key or button that an event line tells of: "A", "Left Button"; empty for any other line.
  static std::string nameInLine(std::string_view line);

  // The milliseconds that a delay line tells; nothing for any other line.
  static std::optional<std::int64_t> delayOfLine(std::string_view line);

  // Brings the list of held keys up to date and puts it, in the order in which the keys went down, in place of the
  // argument. argument: the usages of the keys that are down now, in any order.
  static void manageHIDStack(std::vector<int>& argument);
};

}  // namespace vorn
