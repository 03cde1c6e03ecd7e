// Text as vornctl writes it: what comes from the settings, from files or from the command line may hold anything.
#pragma once

#include <string>
#include <string_view>

namespace vorn::ctl {

// A character below U+10000 as JSON writes it in a string (RFC 8259): \n, \t or \uXXXX.
std::string escapeOf(char32_t character);

// The text in one line that does to a terminal what letters do: control characters (model/Utf8.h) as escapeOf writes
// them, bytes that are no UTF-8 as \xHH. A backslash stays as it is.
std::string printable(std::string_view text);

// A line of a macro without the line breaks that it may end in.
std::string withoutLineBreak(std::string_view line);

// The text with blanks behind it up to the width, at least one.
std::string padded(std::string text, std::size_t width);

// What two texts have in common that differ in case only, in the letters of every script. A byte that is no UTF-8 is
// like itself alone.
std::u32string foldedCase(std::string_view text);

}  // namespace vorn::ctl
