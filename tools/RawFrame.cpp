#include "tools/RawFrame.h"

#include <bit>
#include <cstring>

namespace kvx::tool {

static_assert(std::endian::native == std::endian::little, "words go to and come from raw files as they are in memory");

Bytes EncodeRaw(const cv::Mat& samples) {
    const size_t rowBytes = samples.cols * samples.elemSize();
    Bytes content(rowBytes * samples.rows);
    for (int row = 0; row < samples.rows; ++row) {
        std::memcpy(content.data() + row * rowBytes, samples.ptr(row), rowBytes);
    }
    return content;
}

}  // namespace kvx::tool
