// Tells bytes from others. The same on every machine and in every version, since files hold it; no protection against
// somebody who looks for two of the same.
#pragma once

#include <cstdint>

#include "model/PropertyList.h"

namespace vorn::engine {

// Many bytes at a time, so that large settings cost next to nothing beside their way to the disk. Any thread.
std::uint64_t fingerprintOf(BytesView bytes, std::uint64_t seed = 0);

}  // namespace vorn::engine
