/** A Bayer conversion without a component. */
#pragma once

#include <cstdint>

#include "KvxBayer/BayerJob.h"

namespace kvx {

/**
 * Converts and keeps nothing: algorithm 1 gets an interpolator for this call. With an unknown algorithm it does nothing
 * and returns 0, unlike the component.
 *
 * @return a result code with the Bayer component's type
 */
uint32_t ConvertBayerFlat(const BayerJob& job, int algType) noexcept;

}  // namespace kvx
