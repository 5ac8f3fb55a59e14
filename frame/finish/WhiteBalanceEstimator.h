/** Estimates the light of a scene. */
#pragma once

#include "frame/finish/BlockSurvey.h"

namespace kvx::frame {

/** Gains, and whether they had to be limited to those of a plausible light. */
struct GainEstimate {
    Gains gains;
    bool isLimited = false;
};

/** Keeps its memory between frames. */
class WhiteBalanceEstimator {
public:
    /** As MeasureGains(). @param method any but Given */
    GainEstimate Estimate(const std::vector<Block>& blocks, WhiteBalance method);

private:
    template <class Condition>
    std::array<double, 3> BrightestMean(const std::vector<Block>& blocks, double share, const Condition& counts);
    GainEstimate AutomaticGains(const std::vector<Block>& blocks);

    std::vector<float> m_brightness;
    std::vector<Block> m_usable, m_plausible;
};

}  // namespace kvx::frame
