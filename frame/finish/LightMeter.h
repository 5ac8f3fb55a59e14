/** Measures the white balance and the exposure of frames. */
#pragma once

#include "frame/finish/WhiteBalanceEstimator.h"

namespace kvx::frame {

/** What a finish does to a frame, measured values included. */
struct Reading {
    GainEstimate balance;
    double exposure = 0;
};

/** Keeps its memory between frames. */
class LightMeter {
public:
    /** Measures what the finish asks for. @param source a valid view, which the levels fit */
    Reading Measure(const SourceView& source, const Finish& finish);

private:
    double BestExposure(const std::vector<Block>& blocks, Family family, const Finish& finish, const Gains& gains);

    BlockSurvey m_survey;
    WhiteBalanceEstimator m_whiteBalance;
    std::vector<float> m_luminance;
};

}  // namespace kvx::frame
