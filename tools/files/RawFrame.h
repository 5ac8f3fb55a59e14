#pragma once

#include <opencv2/core.hpp>

#include "KvxFrame/Packing.h"
#include "KvxFrame/View.h"
#include "tools/files/Bytes.h"

namespace kvx::tool {

/** A frame in memory: CV_8UC1 or CV_16UC1, samples right-aligned. */
struct RawFrame {
    frame::Format format;  ///< Layout::Plain
    cv::Mat samples;
};

/** A frame to fill; `format` may be packed, the samples are not. */
RawFrame MakeRawFrame(const frame::Format& format, cv::Size size);

/** Views of samples, and of a picture's pixels. */
frame::SourceView ViewOf(const cv::Mat& samples, const frame::Format& format);
frame::SourceView ViewOf(const RawFrame& frame);
frame::DestinationView DestinationOf(RawFrame& frame);

/** The samples row by row without padding: bytes, or little-endian words. */
Bytes EncodeRaw(const cv::Mat& samples);

/** The same in the layout of `format`, whose depth is that of the samples. */
Bytes EncodePacked(const cv::Mat& samples, const frame::Format& format, frame::RowPadding padding);

/** An unpacked copy of a valid view of any layout. */
RawFrame UnpackFrame(const frame::SourceView& packed);

}  // namespace kvx::tool
