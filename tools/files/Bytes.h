#pragma once

#include <cstdint>
#include <vector>

namespace kvx::tool {

/** The content of a file. */
using Bytes = std::vector<uint8_t>;

}  // namespace kvx::tool
