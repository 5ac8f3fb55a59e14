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

/** Gives `count` samples of `bits` bits `depth` bits. @param in can be read a vector further, at most 64 bytes */
void SetDepth(const uint16_t* in, size_t count, int bits, int depth, const SampleRow& out);

/** What differs between the two directions: gradients, or sums of them. */
struct GradientRow {
    uint16_t *alongRows, *alongColumns;
};

/**
 * The gradients of a row of Bayer samples, and their sums with those of the two rows above.
 *
 * @param levels five rows, the third is that of the gradients
 * @param rows   the two rows above, and that of the gradients
 */
void BayerGradients(const int16_t* const levels[5], size_t count, const GradientRow rows[3], const GradientRow& sums);

/** The same of TrueSense samples. @param firstPan column of a pan sample, 0 or 1 */
void TrueSenseGradients(const int16_t* const levels[5], size_t firstPan, size_t count, const GradientRow rows[3],
                        const GradientRow& sums);

/** How much to take of the filters along rows, 0 to 4. @param sums of three rows, from column -1 on */
void MixRow(const GradientRow& sums, size_t count, uint16_t* mix);

/** Where pixels go: planes of words. */
struct PixelRow {
    uint16_t *own, *green, *other;  ///< `own`: the red or blue of the row's own sites
    size_t count;
    int sampleBits;  ///< depth to which words are rounded
    int bits;        ///< of a result: sampleBits, or the upper 8 of them
};

/** What the rows' loops of both families read. */
struct PixelInput {
    const PackedRow& filters;
    const uint16_t* mix;
    int shift;  ///< of the mixed sums
    int up;     ///< from a sample to a word of 16 bits
};

/** @param samples seven rows, the fourth is the pixels'; `lower`: their lower parts; null: samples are whole */
void BayerPixels(const PixelInput& input, const int16_t* const samples[7], const int16_t* const lower[7],
                 const PixelRow& out);

/** @param samples as above */
void TrueSensePixels(const PixelInput& input, const int16_t* const samples[7], const PixelRow& out);

}  // namespace kvx::frame
