/** Gamma codes of pan and of colour from raw rows. */
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "KvxDemosaicing/KvxPipeline.h"

namespace kvx {

/** Gain, white balance and gamma codes of single samples, by the sample minus the dark floor. */
struct RawTables {
    static constexpr int kValues = 4096;
    using Table = std::array<uint16_t, kValues>;

    int32_t darkFloor;
    Table pan;               ///< gamma codes
    Table red, green, blue;  ///< balanced linear values
};

void MakeRawTables(const ImageProcessParam& param, RawTables& tables) noexcept;

/**
 * Takes two rows of the base tile's mosaic.
 *
 * @param row the first one's, even
 * @param upper,lower 2 x cells raw samples each, which are overwritten
 * @param pan0,pan1 pan codes of either row, one for each cell
 * @param colour code of the mean of the two colour samples of each cell
 */
void TakeCells(const RawTables& tables, int row, uint16_t* upper, uint16_t* lower, size_t cells, int16_t* pan0,
               int16_t* pan1, int16_t* colour) noexcept;

}  // namespace kvx
