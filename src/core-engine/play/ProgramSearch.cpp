#include "core-engine/play/ProgramSearch.h"

#include <algorithm>
#include <cstdlib>

#include "model/ApplicationEntry.h"

namespace vorn::engine {

std::string environmentValue(const char* name, const char* otherwise) {
  const char* value = std::getenv(name);
  return value != nullptr && *value != '\0' ? value : otherwise;
}

std::string foundProgram(const std::string& name) {
  if (name.find('/') != std::string::npos) return name.front() == '/' && isProgram(name) ? name : std::string();
  const std::string folders = environmentValue("PATH", "/usr/local/bin:/usr/bin:/bin");
  for (std::size_t start = 0; start <= folders.size();) {
    const std::size_t end = std::min(folders.find(':', start), folders.size());
    std::string path = folders.substr(start, end - start) + "/" + name;
    if (path.front() == '/' && path != "/" + name && isProgram(path)) return path;
    start = end + 1;
  }
  return {};
}

}  // namespace vorn::engine
