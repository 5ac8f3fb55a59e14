#pragma once

#include <vector>

#include "tools/look/LayoutSearch.h"

namespace kvx::tool {

/** A format that a frame may have. Scores are from 0 to 1, the best. */
struct Guess {
    frame::Format format;  ///< with the layout of the file
    cv::Mat samples;       ///< of the frame in this size
    double score;          ///< `continuity` times `explained`
    double continuity;     ///< how well layout and size fit: Continuity()
    double explained;  ///< how well the mosaic fits: TileAnalysis::Explained(); for mono what no mosaic explains, by
                       ///< Evenness()
    double warmth;     ///< decides between mosaics that differ in red and blue only: TileAnalysis::Warmth()
};

struct Guesses {
    std::vector<Guess> ranking;  ///< the best first; equals by warmth
    bool isPatternKnown;         ///< whether the frame has enough colour to identify its mosaic
};

/** Tries mono, four Bayer and sixteen TrueSense mosaics on each candidate. */
Guesses RankFormats(const std::vector<LayoutCandidate>& candidates);

}  // namespace kvx::tool
