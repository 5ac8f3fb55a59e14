#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "tools/files/RawFrame.h"

namespace kvx::tool {

/** What is known of a frame whose format is guessed. */
struct KnownFacts {
    std::optional<uint64_t> width;
    std::optional<uint64_t> height;
    std::optional<uint64_t> bits;
};

/** One way to read a file: the layout of the samples and the size of the frame, without colours. */
struct LayoutCandidate {
    frame::Format layout;  ///< mono, with bits and layout
    cv::Mat samples;       ///< CV_8UC1 or CV_16UC1
    double continuity;     ///< see Continuity()
};

/**
 * All layouts and sizes that exactly fill a file, the most continuous first, at most `count`.
 *
 * A layout with unused bits counts only if all of these are zero. Of layouts whose samples take the same space, only
 * those with the smallest depth count, since unset high bits are no accident. A width that is not known is a multiple
 * of 4 and 1 to 2.4 times the height.
 */
std::vector<LayoutCandidate> FindLayouts(const Bytes& content, const KnownFacts& known, size_t count);

}  // namespace kvx::tool
