/** One TrueSense conversion, checked and ready: what is read, where it goes, and what happens between. */
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "demosaicers/frame/TrueSenseCall.h"
#include "framework/DisjointSource.h"

namespace kvx {

/** Bits of the values in the working area. */
constexpr int kWorkingDepth = 12;

/** A part of the working area. */
struct Area {
    int column, row;  ///< of its first site
    int width, height;
};

/** The region, enlarged to whole tiles: its origin is a tile's, and its sizes are multiples of 4. */
struct WorkingArea {
    int width, height;
    Area region;   ///< becomes pixels
    Area given{};  ///< has samples in the source: the region, or the region and its neighbours
};

/** Samples of the given area, as 12-bit values: shifted left, then right. */
struct TrueSenseSource {
    const uint8_t* origin;  ///< first byte of the row that the working area takes first; null if rows are exchanged
    ptrdiff_t rowStep;
    size_t sampleSize;
    bool upwards;    ///< the last row is the first one of the working area
    bool backwards;  ///< the last sample of a row is the first one of the working area
    int leftShift, rightShift;

    const uint8_t* Row(int row) const {
        return origin + row * rowStep;
    }
};

/** Pixels of three samples; steps in bytes. */
struct TrueSenseDestination {
    uint8_t* origin;  ///< the region's first pixel; null if rows are exchanged
    ptrdiff_t rowStep, pixelStep;
    size_t sampleSize;
    bool blueFirst;

    uint8_t* Row(int row) const {
        return origin + row * rowStep;
    }
    /** Red, green and blue in the order of a pixel's samples. */
    template <class Colour>
    std::array<Colour, 3> InOrder(const std::array<Colour, 3>& colours) const {
        return blueFirst ? std::array{colours[2], colours[1], colours[0]} : colours;
    }
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
    int outputShift;                                 ///< from the tone table's 12 bits; positive: to the left
    tagTrueSenseParam params;                        ///< its tone table is the caller's, for Reserve() to read
    const RowExchange* exchange;                     ///< in place of both buffers; or null

    /** The memory that the conversion reads and writes. */
    ByteRows SourceRows() const;
    ByteRows DestinationRows() const;
};

/** How a class of demosaicers takes frames. */
struct FrameRules {
    bool oddDepths;  ///< 9 to 15 bits as well, which have no output depth of their own and are written 16 bits deep
    int margin;      ///< sites that the working area has on each side of the region; a multiple of kTileSize
};

/** @return 0; 7 unsupported grid, depth or geometry; 8 null source or destination. `frame` is valid only after 0. */
int BindFrame(const TrueSenseCall& call, const PixelLayout& layout, const FrameRules& rules,
              TrueSenseFrame& frame) noexcept;

/** Gives a bound frame another layout of pixels. @return false when the rows of the destination cannot hold it */
bool BindDestination(const TrueSenseCall& call, const PixelLayout& layout, TrueSenseFrame& frame) noexcept;

}  // namespace kvx
