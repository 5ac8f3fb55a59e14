/** Sharpness of an edge after ISO 12233: a slanted edge gives fine samples across it. */
#pragma once

#include <opencv2/core.hpp>
#include <span>

#include "quality/Restoration.h"

namespace kvx::quality {

struct Edge {
    const char* name;
    cv::Vec3d left, right;  ///< blue, green, red; 12-bit codes; no channel is the same on both sides
};

/** An edge in brightness, and one in colour only. */
std::span<const Edge> AllEdges();

/** Channels blue, green, red. */
struct EdgeFigures {
    cv::Vec3d width;      ///< from 10 to 90 per cent, in pixels across the edge
    cv::Vec3d overshoot;  ///< beyond either side, as a share of the step
};

/** Means over a thousand rows; with noise over four frames. Throws as Restored(). */
EdgeFigures MeasureEdge(const Edge& edge, const Setting& setting);

/** The edge, 5 degrees from vertical, through the middle of the image, area-sampled. */
Picture DrawEdge(const Edge& edge, const cv::Size& size);

}  // namespace kvx::quality
