// What may stand at a place of the command line, for the completion of shells: made of the tables that the commands
// themselves use. Pure.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "ctl/Names.h"

namespace vorn::ctl {

struct Offer {
  std::string word;
  std::string_view description;  // may be empty
};

struct Offers {
  enum class Files : std::uint8_t { None, Folders, Any };

  std::vector<Offer> words;
  Files files = Files::None;   // that may stand there too
  std::string_view extension;  // of the files, besides folders; empty: any
};

// What only a running engine can name.
enum class NameKind : std::uint8_t { Profiles, Macros, Mice, Changes, Backups };
using NamesOfKind = std::function<Names(NameKind kind)>;

// words: those behind the program's name up to the one to complete, which is the last and may be empty. The offers do
// not depend on how it begins, but for the modifiers of a chord that stand there already.
Offers offersFor(const std::vector<std::string>& words, const NamesOfKind& namesOf);

}  // namespace vorn::ctl
