/** Images as records of the library. */
#pragma once

#include <opencv2/core.hpp>

#include "KvxDemosaicing/KvxDemosaicing.h"

namespace kvx::bench {

/** The record of an image, which must outlive it. */
inline _KvxImage RecordOf(const cv::Mat& image, const char* formatName) {
    const _KvxPixelFormat& format = *KvxPixelFormat_ByName(formatName);
    _KvxImage record{};
    record.structSize = sizeof record;
    record.structVersion = KVX_IMAGE_VERSION;
    record.pixelType = format.pixelType;
    record.pixelDepth = format.bitsPerComponent;
    record.width = static_cast<uint32_t>(image.cols);
    record.height = static_cast<uint32_t>(image.rows);
    record.lineStep = static_cast<uint32_t>(image.step);
    record.imageSize = record.lineStep * record.height;
    record.data = image.data;
    return record;
}

}  // namespace kvx::bench
