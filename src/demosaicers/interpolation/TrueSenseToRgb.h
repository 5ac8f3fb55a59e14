/** The fast TrueSense demosaicer: interpolation only. */
#pragma once

#include "demosaicers/interpolation/InterpolatingDemosaicer.h"

namespace kvx {

template <class T>
class TrueSenseToRgb final : public InterpolatingDemosaicer<T> {
public:
    /** The result does not depend on the height of a band. */
    explicit TrueSenseToRgb(int bandRows = kBandRows)
        : InterpolatingDemosaicer<T>({.oddDepths = false, .margin = 0}, bandRows) {}

private:
    int Convert() noexcept override;
};

}  // namespace kvx
