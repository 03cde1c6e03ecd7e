// Whole files of others: read without ever waiting for somebody, and written whole or not at all. Pure but for the
// files themselves; any thread. Errors are those of the operating system (std::errc compares with them); an empty error
// code is success.
#pragma once

#include <cstddef>
#include <string>
#include <system_error>

#include "model/PropertyList.h"

namespace vorn {

// Reads a whole regular file of at most maximum bytes; what is seen of it is seen through the opened file, so that
// nobody can put another under the name meanwhile. Symbolic links are followed. invalid_argument for what is no regular
// file (folders, pipes, sockets and devices are not waited for), file_too_large above the maximum, otherwise the reason
// why it cannot be read. contents is empty then.
std::error_code readRegularFile(const std::string& path, std::size_t maximum, Bytes& contents);

// Puts the bytes on the disk under the path: the whole file or, on failure, nothing, and what was there stays. A file
// that is replaced leaves its mode to the new one and must be writable; a new one has the mode that the process gives
// its files. A symbolic link stays one: its target is replaced, or created where it leads nowhere. invalid_argument
// where the path leads to something else than a regular file.
std::error_code writeRegularFile(const std::string& path, BytesView bytes);

// Whether reading failed because there is no file under the path.
bool isMissingFile(std::error_code error);

// The reason in English, one line.
std::string reasonOf(std::error_code error);

}  // namespace vorn
