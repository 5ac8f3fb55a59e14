#pragma once

#include <string>
#include <vector>

#include "tools/calibrate/chart/ColourFit.h"

namespace kvx::tool {

/** The table of patches with their errors before and after, then gains and matrix. */
std::string ChartTable(const ColourFit& fit, const std::vector<std::string>& names);

/** A sentence if the charts were not in the same light; else empty. */
std::string LightWarning(const ColourFit& fit);

}  // namespace kvx::tool
