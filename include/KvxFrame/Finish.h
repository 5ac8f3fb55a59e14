/**
 * @file
 * From linear sensor values to a picture: black level and white balance on the mosaic, then colour matrix and tone
 * curve on the pixels. The same arithmetic for mono, Bayer and TrueSense frames, the same bits on every machine.
 *
 * Sample values are brought to 16 bits first and stay so until the last step; only what is stored is cut to the
 * destination's depth. The TrueSense component works with 12 bits inside: its mosaic gets those.
 *
 * Mosaic, with s the sample (at most white), b the black level, white the white level, all three brought to 16 bits by
 * a shift, and `largest` 65535 (or 4095): min(((s - b) * factor + 2^(k-1)) >> k, largest), 0 for s below b, factor =
 * gain * largest / (white - b) * 2^k, rounded up: white stays white at gain 1 where 2^k, at most 2^17, is the finest
 * scale at which the largest of the four factors takes 16 bits. Pixels: the matrix in single precision, products summed
 * from left to right, clamped to 0..65535, rounded half up; then the curve's 65536 entries, rounded to the
 * destination's depth.
 */
#ifndef KVXFRAME_FINISH_H
#define KVXFRAME_FINISH_H

#include <array>
#include <cstdint>
#include <vector>

#include "KvxFrame/View.h"

namespace kvx::frame {

/** Factors of the colours: more than 0, at most 64. */
struct Gains {
    double red = 1;    ///< red sites
    double green = 1;  ///< green sites
    double blue = 1;   ///< blue sites
    double pan = 1;    ///< clear sites of TrueSense, and mono frames
};

/** How white balance is found in a frame. */
enum class WhiteBalance : uint8_t {
    Given,      ///< Finish::gains
    GreyWorld,  ///< the means of the colours become equal
    WhitePatch  ///< the brightest 1 % of the frame become grey: highlights have the colour of the light
};

/** From linear light to what is stored. */
enum class ToneCurve : uint8_t {
    Linear,
    Srgb,  ///< IEC 61966-2-1
    Table  ///< Finish::table
};

/** What is done to the values of a frame. The default leaves them linear, from black 0 to white. */
struct Finish {
    uint32_t blackLevel = 0;                          ///< in samples of the source; less than white
    uint32_t whiteLevel = 0;                          ///< the sample at which the sensor clips; 0: 2^bits - 1
    WhiteBalance whiteBalance = WhiteBalance::Given;  ///< whether gains are found in the frame, and how
    Gains gains;                                      ///< applied on top of what is found
    /** Row by row: red, green and blue out of red, green and blue. Rows that sum to 1 leave grey grey. -64 to 64. */
    std::array<double, 9> matrix = {1, 0, 0, 0, 1, 0, 0, 0, 1};
    ToneCurve tone = ToneCurve::Linear;  ///< the last step
    /** Output of 16 bits over input from black to white: 2 to 65536 values, straight lines between. */
    std::vector<uint16_t> table;
};

/**
 * White balance of a mosaic: gains that bring red and blue to green. The smallest is 1, so that what is clipped stays
 * white; that of clear sites is green's.
 *
 * Tiles in which a colour is clipped (in the top 1/64 of the range) are left out; clear sites have no say. A frame
 * without other tiles, or without green, gives gains of 1. Gains are limited to 16.
 * Of frames with more than 512 rows of tiles only some, evenly spaced, are looked at.
 *
 * @param source a valid Bayer or TrueSense frame; mono gives 1
 * @param finish its levels and its method, GreyWorld or WhitePatch
 * @throws Error 0x80070007
 */
KVX_API Gains MeasureGains(const SourceView& source, const Finish& finish);

}  // namespace kvx::frame

#endif
