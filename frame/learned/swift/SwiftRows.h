/**
 * The loops of "swift" over a piece of a row.
 *
 * Pointers are to the piece's first column. Rows can be read kSwiftReach columns before it. Loops run over whole
 * vectors: rows that they read or write have room for kRowSlack columns after the last, with any content.
 */
#pragma once

#include <cstddef>
#include <cstdint>

#include "frame/learned/swift/PackedFilters.h"

namespace kvx::frame {

inline constexpr size_t kRowSlack = 72;

/** Samples are signed, the middle of their range less. They have 12 bits, or 14 or 16 where the frame has more. */
struct SampleRow {
    int16_t* samples;  ///< of two parts: the upper part
    int16_t* lower;    ///< the lower part; null: samples are whole
    int16_t* levels;   ///< the upper 12 bits; null: as samples
};

/** The two lowest bits apart leave room to add four samples of 16 bits. */
inline constexpr int kLowerBits = 2;

/** Reads `count` samples of `bits` bits, bytes or words, and gives them `depth` bits. Nothing else is read or written.
 */
void ReadSamples(const uint8_t* in, size_t count, int bits, int depth, const SampleRow& out);

/** What differs between the two directions: gradients, or sums of them. */
struct GradientRow {
    uint16_t *alongRows, *alongColumns;
};

/** The gradients of Bayer samples. @param levels five rows, the third is that of the gradients */
void BayerGradients(const int16_t* const levels[5], size_t count, const GradientRow& out);

/** The same of TrueSense samples. @param firstPan column of a pan sample, 0 or 1 */
void TrueSenseGradients(const int16_t* const levels[5], size_t firstPan, size_t count, const GradientRow& out);

/** How much to take of the filters along rows, 0 to 4. @param gradients of three rows; `sums`: working rows */
void MixRow(const GradientRow gradients[3], const GradientRow& sums, size_t count, uint16_t* mix);

/** Sums of the samples 1, 2 and 3 rows above and below. @param rows seven, the fourth is in the middle */
void AddRows(const int16_t* const rows[7], size_t count, int16_t* const sums[3]);

/** Where pixels go. */
struct PixelRow {
    uint8_t* data;  ///< three samples a pixel
    size_t count;
    int sampleBits;   ///< depth to which words are rounded
    int bits;         ///< of a stored sample: sampleBits, or the upper 8 of them
    bool isOwnFirst;  ///< whether the first sample of a pixel is the red or blue of the row's own sites
};

/** What the rows' loops of both families read. */
struct PixelInput {
    const PackedRow& filters;
    const uint16_t* mix;
    int shift;  ///< of the mixed sums
    int up;     ///< from a sample to a word of 16 bits
};

/** The samples of a row, and sums of those 1, 2 and 3 rows away. */
using SumRows = const int16_t* [4];

/** @param lower of the samples' lower parts; null: samples are whole */
void BayerPixels(const PixelInput& input, const SumRows& samples, const SumRows* lower, const PixelRow& out);

/** @param samples seven rows, the fourth is the pixels' */
void TrueSensePixels(const PixelInput& input, const int16_t* const samples[7], const PixelRow& out);

}  // namespace kvx::frame
