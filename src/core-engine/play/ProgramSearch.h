// Where programs lie, as the engine's own environment has it.
#pragma once

#include <string>

namespace vorn::engine {

// The value of the variable; otherwise where it is unset or empty.
std::string environmentValue(const char* name, const char* otherwise = "");

// The path of a program, from its absolute path or its name, which is looked for in PATH; empty where there is no such
// program that this process may execute.
std::string foundProgram(const std::string& name);

}  // namespace vorn::engine
