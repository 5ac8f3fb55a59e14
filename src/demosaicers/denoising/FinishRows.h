/** Display values of full-resolution rows. */
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "demosaicers/denoising/UpSampleRows.h"

namespace kvx {

/** Low-pass pan of a row, 16.16, and its codes. */
void FinishLowPan(const DoubledRows& lowPan, size_t width, int32_t* values, int16_t* codes) noexcept;

/** Codes of a colour of a row. */
void FinishColour(const int32_t* lowPan, const DoubledRows& difference, size_t width, int16_t* codes) noexcept;

/** Linear values of red, green and blue through the colour matrix, within 0 to 4095. */
void CorrectColour(const std::array<const uint16_t*, 3>& linear, const float* matrix, size_t width,
                   const std::array<uint16_t*, 3>& corrected) noexcept;

/** Sums of display values two columns away and twice a column's own; four times its own at the sides. */
void SmoothAcross(const uint16_t* display, size_t width, uint16_t* sums) noexcept;

/** A row and its neighbours, for sharpening; display values have 8 or 12 bits. */
struct SharpnessRow {
    const uint16_t *pan, *low;
    const uint16_t *lowUp, *lowDown;                 ///< null at the border
    const uint16_t *smooth, *smoothUp, *smoothDown;  ///< of SmoothAcross(): this row, two up, two down, or null
    bool isDeep;                                     ///< 12 bits
};

/** The low-pass pan smoothed, as 8-bit and, in `levels`, as full display values. */
void SmoothDown(const SharpnessRow& row, size_t width, uint16_t* levels) noexcept;

/**
 * Detail, sharpened: the values to add to the colours.
 *
 * @param levels from SmoothDown()
 * @param edgeScale,noiseGain for each pixel; a vector more may be read
 */
void FindDetail(const SharpnessRow& row, const uint16_t* levels, const float* edgeScale, const float* noiseGain,
                float maxSharpen, size_t width, float* detail) noexcept;

/** The same without sharpening: the difference between pan and low-pass pan, times `noiseGain`. */
void FindPlainDetail(const uint16_t* pan, const uint16_t* low, const float* noiseGain, size_t width,
                     float* detail) noexcept;

/** Adds detail to a colour, clamped to 0 and `white`. */
void AddDetail(const float* detail, uint16_t white, size_t width, uint16_t* colour) noexcept;

}  // namespace kvx
