/** The learned networks: what their layers are, and where their weights come from (training/README.md). */
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "KvxFrame/Format.h"
#include "frame/base/AlignedVector.h"

namespace kvx::frame {

/** The number of filters of a layer is a multiple of this: 32-bit sums of so many fill whole vectors or half of one. */
inline constexpr size_t kFilterGroup = 8;

/** Transformed filters of 3x3 cells have so many places (Winograd-inl.h). */
inline constexpr size_t kPlaces = 16;

/** Filters of `size` x `size` cells, in the order in which LayerRows reads them. */
struct Filters {
    size_t size;                              ///< 1 or 3
    size_t inputs;                            ///< planes of a cell, an even number
    size_t outputs;                           ///< a multiple of kFilterGroup: the last filters may be zeros
    AlignedVector<int16_t> weights;           ///< [row of cells][pair of inputs of the row's cells][output][2]
    AlignedVector<int16_t> transformed = {};  ///< [place][pair of inputs][output][2]; empty: not for these filters
};

struct HiddenLayer {
    Filters filters;
    std::vector<int32_t> noiseFactors;  ///< of the noise's deviation, for each output; zeros for noise-free frames
    int shift;
};

/** Where a plane of the result comes from. */
struct ResultPlane {
    bool isComputed;  ///< otherwise a known sample, which is a plane of the input
    uint8_t index;    ///< of the filter, or of the input's plane
};

/** A network of convolutions over cells: whole tiles of the mosaic, whose samples are planes. */
struct Network {
    size_t side;      ///< of a cell
    size_t inputs;    ///< planes of a cell
    size_t channels;  ///< planes of the hidden layers, a multiple of kFilterGroup
    bool hasNoise;    ///< whether it takes the noise's deviation
    std::vector<HiddenLayer> hidden;
    Filters last;                      ///< from the last hidden layer
    int shift;                         ///< of its sums
    Filters base;                      ///< from the input; adds to these sums
    int baseShift;                     ///< of the base's sums, not smaller
    std::vector<ResultPlane> results;  ///< red, green and blue of each site, row by row

    /** Cells on each side that a cell of the result depends on. */
    size_t Halo() const {
        return hidden.size() + 1;
    }
};

/** Reads a file of weights. @throws Error 0x80070003 for one that does not hold a network that LayerRows can run */
Network ReadNetwork(std::span<const uint8_t> file);

/** The network for the frames of a family, with noise or without; made at the first use. Bayer and TrueSense only. */
const Network& NetworkFor(Family family, bool hasNoise);

}  // namespace kvx::frame
