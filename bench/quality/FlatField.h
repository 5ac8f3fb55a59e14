/** The remaining sensor noise on surfaces of one colour. */
#pragma once

#include <opencv2/core.hpp>
#include <span>

#include "quality/Restoration.h"

namespace kvx::quality {

struct FlatField {
    const char* name;
    cv::Vec<uint16_t, 3> levels;  ///< blue, green, red; 12-bit codes
};

/** Greys from dark to bright, and colours. */
std::span<const FlatField> AllFlatFields();

/** In 12-bit codes; channels blue, green, red. */
struct FlatFigures {
    cv::Vec3d deviation;  ///< standard deviation of a channel
    cv::Vec3d shift;      ///< its mean minus its level
    double blotch;        ///< root mean square of the deviations of red - green and blue - green after means of 16x16
};

/** Figures of a frame of 512x512 pixels without its border. */
FlatFigures MeasureFlat(const FlatField& field, const Setting& setting);

/** A flat image for inspection. */
Picture DrawFlat(const FlatField& field, int side);

}  // namespace kvx::quality
