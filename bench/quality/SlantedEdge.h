/** How sharp an edge comes out, after ISO 12233: an edge at a slant is sampled finely across it. */
#pragma once

#include <opencv2/core.hpp>
#include <span>

#include "quality/Restoration.h"

namespace kvx::quality {

struct Edge {
    const char* name;
    cv::Vec3d left, right;  ///< blue, green, red; 12-bit codes; no channel is the same on both sides
};

/** One in brightness, one in colour alone. */
std::span<const Edge> AllEdges();

/** Channels blue, green, red. */
struct EdgeFigures {
    cv::Vec3d width;      ///< from 10 to 90 per cent, in pixels across the edge
    cv::Vec3d overshoot;  ///< beyond either side, as a share of the step
};

/** Means over a thousand rows; with noise over four frames of them. Throws as Restored(). */
EdgeFigures MeasureEdge(const Edge& edge, const Setting& setting);

/** The edge, 5 degrees from upright, through the middle of the picture; area-sampled. */
Picture DrawEdge(const Edge& edge, const cv::Size& size);

}  // namespace kvx::quality
