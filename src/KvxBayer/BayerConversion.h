/** One Bayer frame by any algorithm. */
#pragma once

#include <cstdint>

#include "KvxBayer/BayerJob.h"
#include "KvxBayer/ipp/DemosaicingIPP.h"

namespace kvx {

/**
 * Checks the job and converts the frame. Nothing is written outside the pixels of the destination, or its slots. Where
 * source and destination share memory, a private copy of the source is converted.
 *
 * Algorithms 0 and 2 give the samples of OpenCV's conversion with the code of PixelTypeToBayerType(), to the bit.
 * OpenCV itself is not called: its conversion of words is scalar, gives words only, ignores row padding in its
 * edge-aware form, and refuses words at odd addresses.
 *
 * @param algorithm a KvxBayerAlgorithm
 * @param interpolator for algorithm 1: an object for the job's sample size, or null when there was no memory for one
 * @return 0, or a KvxResultCode: InvalidArgument and ConversionFailed as of CheckGeometry(), NoMemory
 */
uint32_t ConvertBayer(BayerJob job, int algorithm, DemosaicingIPP* interpolator) noexcept;

}  // namespace kvx
