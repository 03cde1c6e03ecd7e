// Sockets of displays. Never wait.
#pragma once

#include <string>

#include "model/FileDescriptor.h"

namespace vorn::engine {

// A connection to who listens under this absolute path, or, where nothing stands there, under the abstract name that is
// the same; it does not block and is not handed on to other programs. None where nobody listens or the queue is full.
FileDescriptor connectedSocket(const std::string& path);

// Whether somebody listens there, served or not.
bool isListenedTo(const std::string& path);

}  // namespace vorn::engine
