#pragma once

#include <opencv2/core.hpp>

namespace kvx::tool {

/** Linear light in sRGB's primaries: red, green, blue; white is 1, 1, 1. Values outside 0 to 1 are allowed. */
using LinearRgb = cv::Vec3d;

/** Tristimulus values; Y of white is 1. */
using Xyz = cv::Vec3d;

/** A colour of CIE 1976 L*a*b*, relative to D65 where nothing else is stated. */
struct Lab {
    double lightness;  ///< L*: 0 to 100
    double a;          ///< green to red
    double b;          ///< blue to yellow
};

/** CIE 15, for any white; below black the formula's straight part goes on. */
Lab LabFromXyz(const Xyz& colour, const Xyz& white);
Xyz XyzFromLab(const Lab& colour, const Xyz& white);

/** IEC 61966-2-1 without its curve. */
Lab LabFromLinear(const LinearRgb& colour);
LinearRgb LinearFromLab(const Lab& colour);

/** From D50 to D65 by the linear Bradford transform (Lam 1985; ICC.1 annex E). */
Lab AdaptedToD65(const Lab& d50);

}  // namespace kvx::tool
