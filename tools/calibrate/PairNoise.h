#pragma once

#include <array>
#include <optional>
#include <vector>

#include "KvxFrame/CameraProfile.h"
#include "tools/files/RawFrame.h"

namespace kvx::tool {

/** The noise of a sensor from pairs of frames of one scene: all that stays the same cancels in their difference. */
class PairNoise {
public:
    /** @param blackLevel from which the signal counts */
    explicit PairNoise(const frame::Levels& blackLevel) : m_black(blackLevel) {}

    /** Compares a frame with the one before it, if both were equally exposed. Frames have one format and size. */
    void Add(const RawFrame& frame);

    /**
     * The noise of clear or coloured sites (of mono frames: of all sites).
     * @param intercept the variance without light if it is known
     * @return nothing without equally exposed frames, or without such sites
     */
    std::optional<frame::NoiseLine> Line(bool isClear, std::optional<double> intercept) const;

private:
    /** Sites of one filter colour in a block: in 12-bit values. */
    struct Block {
        double signal, variance, count;
    };
    void AddBlock(const RawFrame& frame, const cv::Rect& block);

    frame::Levels m_black;
    cv::Mat m_last;
    std::array<std::vector<Block>, 2> m_blocks;  // of coloured and of clear sites
};

}  // namespace kvx::tool
