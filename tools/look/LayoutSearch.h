#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "tools/files/RawFrame.h"

namespace kvx::tool {

/** What is known of a frame whose format is to be guessed. */
struct KnownFacts {
    std::optional<uint64_t> width;
    std::optional<uint64_t> height;
    std::optional<uint64_t> bits;
};

/** One way to read a file: how the samples lie in it, and the size of the frame. Nothing of colours yet. */
struct LayoutCandidate {
    frame::Format layout;  ///< of mono; says bits and layout
    cv::Mat samples;       ///< CV_8UC1 or CV_16UC1
    double continuity;     ///< see Continuity()
};

/**
 * All ways to read the samples of a file that fill it without a rest, the most continuous first, at most `count`.
 *
 * Layouts with bits that no sample uses count only where these are zero; of those in which a sample takes the same room
 * only those with the smallest depth count: a byte order that leaves high bits unset is no accident. A size that is not
 * known has a width that is a multiple of 4 and between one and 2.4 times the height.
 */
std::vector<LayoutCandidate> FindLayouts(const Bytes& content, const KnownFacts& known, size_t count);

}  // namespace kvx::tool
