/**
 * @file
 * Processing of sample values: black level and white balance on the mosaic, then colour matrix and tone curve on the
 * pixels. Mono, Bayer and TrueSense frames share the arithmetic, whose results are the same bits on every machine.
 *
 * Samples are scaled to 16 bits first and reduced to the destination's depth in the last step. The TrueSense component
 * works with 12 bits, so its mosaic is scaled to 12.
 *
 * Mosaic: let s be the sample (at most white), b the black level and white the white level, all shifted left to 16
 * bits, and `largest` 65535 (TrueSense: 4095). The result is min(((s - b) * factor + 2^(k-1)) >> k, largest), and 0 for
 * s below b. factor = gain * largest / (white - b) * 2^k, rounded up, so that white stays white at gain 1. k, at most
 * 17, is the largest for which all four factors fit 16 bits.
 *
 * Pixels: the matrix in single precision, products summed from left to right, clamped to 0..65535, rounded half up;
 * then a table of 65536 entries with the curve, rounded to the destination's depth.
 */
#ifndef KVXFRAME_FINISH_H
#define KVXFRAME_FINISH_H

#include <array>
#include <cstdint>
#include <vector>

#include "KvxFrame/View.h"

namespace kvx::frame {

/** White-balance factors: more than 0, at most 64. */
struct Gains {
    double red = 1;    ///< red sites
    double green = 1;  ///< green sites
    double blue = 1;   ///< blue sites
    double pan = 1;    ///< clear sites of TrueSense, and mono frames
};

/** Where the white-balance gains come from. */
enum class WhiteBalance : uint8_t {
    Given,      ///< only Finish::gains
    GreyWorld,  ///< measured: the means of the colours become equal
    WhitePatch  ///< measured: the brightest 1 % of the frame become grey
};

/** Tone curve from linear light to the stored values. */
enum class ToneCurve : uint8_t {
    Linear,
    Srgb,  ///< IEC 61966-2-1
    Table  ///< Finish::table
};

/** Processing of the values of a frame. The default keeps them linear, from black 0 to white. */
struct Finish {
    uint32_t blackLevel = 0;                          ///< sample value of black; less than white
    uint32_t whiteLevel = 0;                          ///< sample value at which the sensor clips; 0: 2^bits - 1
    WhiteBalance whiteBalance = WhiteBalance::Given;  ///< whether gains are measured in the frame, and how
    Gains gains;                                      ///< given gains; multiplied by measured ones
    /** Colour matrix, row by row: the rows give red, green and blue. Rows that sum to 1 keep grey. -64 to 64. */
    std::array<double, 9> matrix = {1, 0, 0, 0, 1, 0, 0, 0, 1};
    ToneCurve tone = ToneCurve::Linear;  ///< the last step
    /** For ToneCurve::Table: 2 to 65536 16-bit outputs, evenly spaced from black to white, interpolated linearly. */
    std::vector<uint16_t> table;
};

/**
 * Measures the white balance of a mosaic: gains that make the levels of red and blue equal to green's. The smallest
 * gain is 1, so that clipped samples stay white. Clear sites get green's gain.
 *
 * Tiles in which a colour is clipped (within the top 1/64 of the range) are left out, and clear sites are not measured.
 * A frame without other tiles, or without green, gives gains of 1. Gains are limited to 16. In frames with more than
 * 512 rows of tiles, evenly spaced rows are measured.
 *
 * @param source a valid Bayer or TrueSense frame; a mono frame gives gains of 1
 * @param finish its levels and its method, GreyWorld or WhitePatch, count
 * @throws Error what Validate() throws; 0x80070007 for levels that do not fit the frame, or the method Given
 */
KVX_API Gains MeasureGains(const SourceView& source, const Finish& finish);

}  // namespace kvx::frame

#endif
