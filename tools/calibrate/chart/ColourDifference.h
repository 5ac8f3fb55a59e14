#pragma once

#include "tools/calibrate/chart/LabColour.h"

namespace kvx::tool {

/**
 * CIEDE2000 (CIE 142-2001) with all weights 1; about 1 is the smallest difference that is seen. The form and its
 * treatment of hue angles are those of Sharma, Wu and Dalal, "The CIEDE2000 color-difference formula", Color Research
 * and Application 30(1), 2005.
 */
double ColourDifference(const Lab& first, const Lab& second);

}  // namespace kvx::tool
