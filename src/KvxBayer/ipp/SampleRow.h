/** Samples to lanes, and lanes to samples. */
#pragma once

#include <cstdint>

#include "KvxBayer/BayerOutput.h"
#include "KvxBayer/ipp/Lanes.h"

namespace kvx::ipp {

/** Conversion of samples of a depth to the unit of Method.h and back. */
struct SampleScale {
    int sampleBytes;   ///< 1 or 2
    uint16_t maximum;  ///< larger samples are clamped to this
    float toUnit;      ///< a power of two, as is its inverse
    float fromUnit;
};

/** @param samples 2 x `lanes` of them, even column first */
void UnpackRow(const void* samples, const SampleScale& scale, int lanes, const PairRow& row);

/**
 * Rounds, clamps and interleaves three channels into 2 x `lanes` pixels.
 * @param out room for the pixels of kLaneBlock lanes more
 */
void PackRow(const PairRow channels[3], int firstLane, int lanes, const SampleScale& scale, const BayerOutput& output,
             uint8_t* out);

/** The same into planes of words, one for each channel, with room for the words of kLaneBlock lanes more. */
void PackPlanes(const PairRow channels[3], int firstLane, int lanes, const SampleScale& scale,
                uint16_t* const planes[3]);

}  // namespace kvx::ipp
