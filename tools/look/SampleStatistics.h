#pragma once

#include <cstdint>

#include "tools/files/RawFrame.h"

namespace kvx::tool {

/** Range, mean and bits of the samples of a frame. */
struct SampleStatistics {
    uint32_t smallest;
    uint32_t largest;
    double mean;
    unsigned highestBit;  ///< bits up to the highest that is set in any sample; 0 for a black frame
    unsigned lowestBit;   ///< number of the lowest bit that is set in any sample; 0 for a black frame
    double clippedShare;  ///< of samples at white, from 0 to 1
    double blackShare;    ///< of samples that are 0
};

/** Measures every sample. */
SampleStatistics MeasureSamples(const RawFrame& frame);

/** The fewest bits, of 8 for bytes and 10 to 16 for words, that hold the largest sample. */
uint8_t BitsUsed(const cv::Mat& samples);

}  // namespace kvx::tool
