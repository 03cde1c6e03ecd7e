// How a word on the command line finds what has a name, and what is offered where it finds nothing.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace vorn::ctl {

using Names = std::vector<std::string>;

// The positions of the names that the word means: those that are the same; where none is, those that differ from it in
// case only. More than one: the word is ambiguous.
std::vector<std::size_t> positionsNamed(const Names& names, std::string_view word);

// How many letters have to be put in, left out, replaced or swapped with their neighbour to make one word of the other,
// without regard to the case of A to Z.
std::size_t distance(std::string_view left, std::string_view right);

// Whether the word may be a slip of the pen for the name.
bool isNear(std::string_view word, std::string_view name);

// The names that are nearest to the word, as `; did you mean "a" or "b"?`; otherwise where none is near.
std::string suggestion(const Names& names, std::string_view word, const std::string& otherwise = {});
// The same for names that were chosen already; otherwise where there are none.
std::string didYouMean(const Names& names, const std::string& otherwise = {});

// `a, b or c`.
std::string alternatives(const Names& names);

}  // namespace vorn::ctl
