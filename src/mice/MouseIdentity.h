// What a mouse is called: the texts of its makers, which may hold anything, made into names and identifiers. Pure; any
// thread.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vorn {

inline constexpr std::size_t maximumNameLength = 128;       // bytes
inline constexpr std::int32_t maximumResolution = 100'000;  // counts per inch; no mouse counts more

// The name without control characters, what is no UTF-8, and blanks at its ends, cut to maximumNameLength.
std::string cleanName(std::string_view name);

// Whether it is a serial number. Many makers give all their mice a number of zeros, which is none.
bool tells(std::string_view serialNumber);

// A mark of the mouse that is the same whenever it is plugged in: its serial number, or else the place.
std::string_view markOf(std::string_view serialNumber, std::string_view place);

// Letters, digits and a few signs stay, others are underscores; cut to 100 bytes.
std::string plainMark(std::string_view mark);

// "usb-16c0:27db-A1B2". bus: of the kernel's numbers, linux/input.h.
std::string mouseId(std::uint16_t bus, std::uint16_t vendor, std::uint16_t product, std::string_view mark);

// What distinguishes the nodes of one mouse: the number of the USB interface, where there is one, and the name, and of
// nodes that have both in common the count, from the second on: "01 Acme Mouse Keyboard", "01 Acme Mouse Keyboard 2".
// former: the names of the nodes before.
std::string nodeName(std::string_view interfaceNumber, std::string_view name, const std::vector<std::string>& former);

// Of the USB descriptor's bcdDevice, "0123", the text "1.23"; empty for anything else.
std::string firmwareText(std::string_view revision);

// The resolution in what udev knows, "400@125 *800@125": the one with the star, or else the first. 0 for anything else
// than 1 to maximumResolution.
std::int32_t resolutionOf(std::string_view mouseDpi);

}  // namespace vorn
