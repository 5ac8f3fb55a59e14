#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <vector>

namespace kvx::tool {

/** The content of a file. */
using Bytes = std::vector<uint8_t>;

/** Takes the content of a file, piece by piece. */
using ContentSink = std::function<void(const uint8_t* piece, size_t bytes)>;

}  // namespace kvx::tool
