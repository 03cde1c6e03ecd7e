// Which program a process is.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vorn::engine {

// The program of a process, a path or a name, from the file that runs and the arguments that it was given: where the
// file only runs other programs, what it was called by or the script that it runs. Either may be empty.
std::string programOf(std::string_view file, const std::vector<std::string>& arguments);

// The same of a process of this machine, by its number; empty where nothing can be known. Never waits.
std::string programOfProcess(std::int64_t process);

}  // namespace vorn::engine
