/**
 * @file
 * Processing of sample values: black level and white balance on the mosaic, then colour matrix and tone curve on the
 * pixels. Mono, Bayer and TrueSense frames share the arithmetic, whose results are the same bits on every machine.
 *
 * Samples are scaled to 16 bits first and reduced to the destination's depth in the last step. The TrueSense component
 * works with 12 bits, so its mosaic is scaled to 12.
 *
 * Mosaic: let s be the sample (at most white), b the black level and white the white level of its filter, all scaled to
 * 16 bits by a power of two, the levels then rounded to whole numbers, and `largest` 65535 (TrueSense: 4095). The
 * result is min(((s - b) * factor + 2^(k-1)) >> k, largest), and 0 for s below b. factor = gain * largest / (white - b)
 * * 2^k, rounded up, so that white stays white at gain 1. k, at most 17, is the largest for which all factors fit 16
 * bits.
 *
 * Pixels: the matrix, multiplied by 2^exposure, in single precision, products summed from left to right, clamped to
 * 0..65535, rounded half up; then a table of 65536 entries with the curve, rounded to the destination's depth.
 */
#ifndef KVXFRAME_FINISH_H
#define KVXFRAME_FINISH_H

#include <array>
#include <cstdint>
#include <vector>

#include "KvxDemosaicing/KvxImage.h"
#include "KvxFrame/View.h"

namespace kvx::frame {

/**
 * Black or white level in sample values; fractions are allowed, as in 8-bit frames of a 10-bit sensor. One number for
 * the whole frame, or four for the filters in the order of FilterIndex().
 */
struct Levels {
    std::array<double, 4> ofFilters;  ///< by FilterIndex()

    /** The same for all filters. */
    constexpr Levels(double all = 0) : ofFilters{all, all, all, all} {}
    /** One for each filter. */
    constexpr Levels(double first, double second, double third, double fourth)
        : ofFilters{first, second, third, fourth} {}

    /** Compares all four. */
    friend bool operator==(const Levels& a, const Levels& b) {
        return a.ofFilters == b.ofFilters;
    }
};

/** White-balance factors: more than 0, at most 64. */
struct Gains {
    double red = 1;    ///< red sites
    double green = 1;  ///< green sites
    double blue = 1;   ///< blue sites
    double pan = 1;    ///< clear sites of TrueSense, and mono frames
};

/** Where the white-balance gains come from. */
enum class WhiteBalance : uint8_t {
    Given,       ///< only Finish::gains
    GreyWorld,   ///< measured: the means of the colours become equal
    WhitePatch,  ///< measured: the brightest 1 % of the frame become grey
    Auto         ///< measured: the median of three estimates of a plausible light, see MeasureGains()
};

/** Tone curve from linear light to the stored values. */
enum class ToneCurve : uint8_t {
    Linear,
    Srgb,  ///< IEC 61966-2-1
    Table  ///< Finish::table
};

/**
 * Processing of the values of a frame. The default keeps them linear, from black 0 to white; Natural() makes a picture
 * for a display.
 */
struct Finish {
    Levels blackLevel;                                ///< sample value of black; 0 or more, less than white
    Levels whiteLevel;                                ///< sample value at which the sensor clips; 0: 2^bits - 1
    WhiteBalance whiteBalance = WhiteBalance::Given;  ///< whether gains are measured in the frame, and how
    Gains gains;                                      ///< given gains; multiplied by measured ones
    /** Brightening in EV, -16 to 16: the pixels are multiplied by 2^exposure. */
    double exposure = 0;
    bool autoExposure = false;  ///< adds what MeasureExposure() measures in the frame
    /** Colour matrix, row by row: the rows give red, green and blue. Rows that sum to 1 keep grey. -64 to 64. */
    std::array<double, 9> matrix = {1, 0, 0, 0, 1, 0, 0, 0, 1};
    ToneCurve tone = ToneCurve::Linear;  ///< the last step
    /** For ToneCurve::Table: 2 to 65536 16-bit outputs, evenly spaced from black to white, interpolated linearly. */
    std::vector<uint16_t> table;

    /** Measured white balance (Auto) and exposure, and the sRGB curve: what a display should show of linear light. */
    static Finish Natural() {
        Finish finish;
        finish.whiteBalance = WhiteBalance::Auto;
        finish.autoExposure = true;
        finish.tone = ToneCurve::Srgb;
        return finish;
    }
};

/**
 * Parts of a finish that hold even where they are neutral (a level of 0, gains of 1, the identity): a camera profile
 * does not replace them.
 */
struct GivenParts {
    bool blackLevel = false;  ///< Finish::blackLevel
    bool whiteLevel = false;  ///< Finish::whiteLevel
    bool gains = false;       ///< Finish::gains
    bool matrix = false;      ///< Finish::matrix
};

/** The finish is complete: a camera profile gives nothing. */
inline constexpr GivenParts kAllGiven = {true, true, true, true};

/**
 * Measures the white balance of a mosaic: gains that make the levels of red and blue equal to green's. The smallest
 * gain is 1, so that clipped samples stay white. Clear sites get green's gain.
 *
 * The frame is divided into blocks of tiles, 192 or more along its shorter side. Blocks in which a colour is clipped
 * (within the top 1/64 of the range) are left out, and clear sites are not measured. A frame without other blocks, or
 * without green, gives gains of 1. Gains are limited to 16. In frames with more than 512 rows of tiles, evenly spaced
 * rows of blocks are measured.
 *
 * Auto takes the median of three estimates of red and of blue, relative to green: the means of all blocks; the
 * Minkowski means with p = 6, between mean and maximum (Finlayson and Trezzi, "Shades of gray and colour constancy",
 * Color Imaging Conference 2004), of the plausible blocks; and the means of their brightest 0.5 %. The gains of
 * plausible blocks are those of a light that there is: red 0.7 to 4, blue 0.7 to 5, their product 0.8 to 9; almost
 * black blocks (below 1/64) do not count. If fewer than 2 % of the others are plausible, all of them count and the
 * gains are limited to this range.
 *
 * @param source a valid Bayer or TrueSense frame; a mono frame gives gains of 1
 * @param finish its levels and its method, any but Given, count
 * @throws Error what Validate() throws; 0x80070007 for levels that do not fit the frame, or the method Given
 */
KVX_API Gains MeasureGains(const SourceView& source, const Finish& finish);

/**
 * The gains that make a grey place of the frame grey, for example a card or a patch of a chart.
 *
 * @param source as above
 * @param place as for Crop(): at least a tile that is neither clipped nor black
 * @param finish its levels count
 * @throws Error what Validate() and Crop() throw; 0x80070007 for levels that do not fit the frame, or a place without
 *         such a tile
 */
KVX_API Gains MeasureGainsOfGrey(const SourceView& source, const _KvxRect& place, const Finish& finish);

/**
 * Measures the exposure that uses the range: the luminance of all but the brightest 1 % of the blocks, see
 * MeasureGains(), becomes at most 0.9. Clipped blocks, which are white anyway, do not count.
 *
 * @param source a valid frame; it is balanced with the finish's gains, measured ones included, and its matrix
 * @return EV, 0 to 6: it never darkens, as clipped places would turn grey
 * @throws Error what Validate() throws; 0x80070007 for levels that do not fit the frame
 */
KVX_API double MeasureExposure(const SourceView& source, const Finish& finish);

/**
 * Whether a frame is clearly the linear light of a sensor, which needs a finish for display, and not a mosaic of a
 * developed picture: it is dark (its median below a tenth of white), or rather dark (0.3) with a green cast (the
 * product of the Auto gains of red and blue, relative to green, above 1.7).
 *
 * @param source a valid frame
 * @param finish its levels count
 * @throws Error what Validate() throws; 0x80070007 for levels that do not fit the frame
 */
KVX_API bool LooksLinear(const SourceView& source, const Finish& finish);

}  // namespace kvx::frame

#endif
