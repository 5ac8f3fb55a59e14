#include "tools/SampleDepth.h"

#include <algorithm>
#include <bit>

#include "tools/ToolError.h"

namespace kvx::tool {
namespace {

/** Seen over all samples: every bit that is set, as stored and with the bytes of each word exchanged. */
struct UsedBits {
    uint16_t stored = 0;
    uint16_t swapped = 0;
    uint16_t largest = 0;
};

UsedBits FindUsedBits(const cv::Mat& samples) {
    UsedBits used;
    for (int row = 0; row < samples.rows; ++row) {
        const auto* sample = samples.ptr<uint16_t>(row);
        for (int column = 0; column < samples.cols; ++column) {
            used.stored |= sample[column];
            used.largest = std::max(used.largest, sample[column]);
        }
    }
    used.swapped = static_cast<uint16_t>(used.stored << 8 | used.stored >> 8);
    return used;
}

std::string LikelyCause(const UsedBits& used, const PixelFormat& format) {
    const uint32_t bits = format.bitsPerComponent;
    if (used.swapped <= LargestSample(format)) {
        return "the bytes look big-endian: exchange the two bytes of each sample";
    }
    if (std::countr_zero(used.stored) >= static_cast<int>(16 - bits)) {
        return fmt::format("the values look left-aligned: shift them right by {} bits", 16 - bits);
    }
    for (uint32_t deeper = bits + 2; deeper <= 16; deeper += 2) {
        const PixelFormat* candidate = WithDepth(format, deeper);
        if (candidate != nullptr && used.largest <= LargestSample(*candidate)) {
            return fmt::format("the samples have more bits: try --format {}", candidate->name);
        }
    }
    return "check --format";
}

}  // namespace

void CheckSampleDepth(const RawFrame& frame, const std::string& name) {
    if (frame.samples.depth() != CV_16U) {
        return;
    }
    const UsedBits used = FindUsedBits(frame.samples);
    if (used.largest > LargestSample(*frame.format)) {
        Fail(ExitCode::Frame, "{}: the largest sample is {}, but {} ends at {}: {}", name, used.largest,
             frame.format->name, LargestSample(*frame.format), LikelyCause(used, *frame.format));
    }
}

}  // namespace kvx::tool
