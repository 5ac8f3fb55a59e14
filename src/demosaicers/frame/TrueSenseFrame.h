/** One TrueSense conversion, checked and ready: what is read, where it goes, and what happens between. */
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "KvxDemosaicing/KvxImage.h"
#include "KvxDemosaicing/KvxTrueSense.h"

namespace kvx {

/** Bits of the values in the working area. */
constexpr int kWorkingDepth = 12;

/** The arguments of IDemConvertion::Init() and InitRGB(), whatever the sample types. */
struct TrueSenseCall {
    const void* src;
    size_t srcSampleSize;
    _KvxRect roi;
    _KvxSize size;
    int srcLineStep;
    int pixelDepth;
    void* dst;
    size_t dstSampleSize;
    int dstLineStep;
    unsigned char grid;
    const tagTrueSenseParam* params;
    bool withAlpha, bgrOrder;
};

/**
 * The region, enlarged to whole tiles: its origin is a tile's, and its sizes are multiples of 4. The region starts at
 * (rowPhase, columnPhase).
 */
struct WorkingArea {
    int width, height;
    int columnPhase, rowPhase;
    int regionWidth, regionHeight;
};

/** Samples of the region, as 12-bit values: shifted left, then right. */
struct TrueSenseSource {
    const uint8_t* origin;  ///< first byte of the row that the working area takes first
    ptrdiff_t rowStep;
    size_t sampleSize;
    bool backwards;  ///< the last sample of a row is the first one of the working area
    int leftShift, rightShift;

    const uint8_t* Row(int row) const {
        return origin + row * rowStep;
    }
};

/** Pixels of three samples; steps in bytes. */
struct TrueSenseDestination {
    uint8_t* origin;  ///< the region's first pixel
    ptrdiff_t rowStep, pixelStep;
    size_t sampleSize;
    bool blueFirst;
};

constexpr int kChannels = 3;
using ColourMatrix = std::array<double, size_t{kChannels} * kChannels>;  // row-major: output, input

struct TrueSenseFrame {
    WorkingArea area;
    TrueSenseSource source;
    TrueSenseDestination destination;
    ColourMatrix matrix;
    bool applyMatrix;                                ///< the matrix is not the identity
    std::array<uint16_t, KVX_TONE_TABLE_SIZE> tone;  ///< what to store, by clamped 12-bit value
    int threads;                                     ///< of the conversion, at least 1
    int outputShift;                                 ///< from the tone table's 12 bits; positive: to the left
    tagTrueSenseParam params;                        ///< its tone table is the caller's, for Reserve() to read
};

/** Which depths are taken: the odd ones have no output depth of their own and are written 16 bits deep. */
enum class OddDepths { Refused, Accepted };

/** @return 0; 7 unsupported grid, depth or geometry; 8 null source or destination. `frame` is valid only after 0. */
int BindFrame(const TrueSenseCall& call, OddDepths oddDepths, TrueSenseFrame& frame) noexcept;

}  // namespace kvx
