/** What the flat functions share. */
#pragma once

#include <cstdint>

#include "KvxBayer/BayerJob.h"

namespace kvx {

/**
 * Converts without keeping anything: algorithm 1 gets an interpolator for this call. Unlike the component, the flat
 * functions take an unknown algorithm for a request to do nothing.
 *
 * @return a result code with the Bayer component's type
 */
uint32_t ConvertBayerFlat(const BayerJob& job, int algType) noexcept;

}  // namespace kvx
