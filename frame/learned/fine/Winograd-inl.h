/**
 * Four sums of a 3x3 filter, 2x2 cells, from 16 products instead of 36, exact in whole numbers: F(2x2, 3x3) of Lavin
 * and Gray, "Fast Algorithms for Convolutional Neural Networks", 2016, after Winograd. Transformed filters are four
 * times those of the paper, so that they have no fractions, and the sums are divided by four.
 */
// Included once per instruction set.
#if defined(KVX_WINOGRAD) == defined(HWY_TARGET_TOGGLE)
#ifdef KVX_WINOGRAD
#undef KVX_WINOGRAD
#else
#define KVX_WINOGRAD
#endif

#include <hwy/highway.h>

#include "frame/learned/fine/LayerRows.h"

HWY_BEFORE_NAMESPACE();
namespace kvx::frame::HWY_NAMESPACE {
namespace {

/**
 * Transforms the 4x4 cells around each of `tiles` squares of 2x2, for a vector of planes.
 *
 * @param d     words of a vector
 * @param out   [place of 16][tile][plane]; `placeStep` words from place to place
 * @return bits of all words plus 8192: without the upper two, each word is at least -8192 and less than 8192, so that
 *         neither the transformed words nor four times a sum overflow
 */
template <class D>
HWY_INLINE hwy::HWY_NAMESPACE::Vec<D> TransformCells(D d, const CellRows& in, size_t plane, size_t planes, size_t tiles,
                                                     int16_t* out, size_t placeStep) {
    namespace hn = hwy::HWY_NAMESPACE;
    using V = hn::Vec<D>;
    const V limit = hn::Set(d, 8192);
    V bits = hn::Zero(d);
    // A column of cells from top to bottom.
    const auto column = [&](size_t cell, V* transformed) {
        V words[4];
        for (size_t row = 0; row < 4; ++row) {
            words[row] = hn::LoadU(d, in.rows[row] + cell * planes + plane);
            bits = hn::Or(bits, hn::Add(words[row], limit));
        }
        transformed[0] = hn::Sub(words[0], words[2]);
        transformed[1] = hn::Add(words[1], words[2]);
        transformed[2] = hn::Sub(words[2], words[1]);
        transformed[3] = hn::Sub(words[1], words[3]);
    };
    V first[4], second[4], third[4], fourth[4];
    column(0, first);
    column(1, second);
    for (size_t tile = 0; tile < tiles; ++tile) {
        column(2 * tile + 2, third);
        column(2 * tile + 3, fourth);
        int16_t* place = out + tile * planes + plane;
        for (size_t row = 0; row < 4; ++row) {
            for (const V words : {hn::Sub(first[row], third[row]), hn::Add(second[row], third[row]),
                                  hn::Sub(third[row], second[row]), hn::Sub(second[row], fourth[row])}) {
                hn::StoreU(words, d, place);
                place += placeStep;
            }
            first[row] = third[row];
            second[row] = fourth[row];
        }
    }
    return bits;
}

/** Four times the sums of a square of cells, row by row, from its 16 products; `placeStep` words apart. */
template <class D>
HWY_INLINE void SumsOfProducts(D d, const int32_t* products, size_t placeStep, hwy::HWY_NAMESPACE::Vec<D>* sums) {
    namespace hn = hwy::HWY_NAMESPACE;
    hn::Vec<D> upper[4], lower[4];
    for (size_t column = 0; column < 4; ++column) {
        const auto at = [&](size_t row) { return hn::LoadU(d, products + (4 * row + column) * placeStep); };
        const auto second = at(1), third = at(2);
        upper[column] = hn::Add(hn::Add(at(0), second), third);
        lower[column] = hn::Sub(hn::Sub(second, third), at(3));
    }
    for (const auto* const row : {upper, lower}) {
        *sums++ = hn::Add(hn::Add(row[0], row[1]), row[2]);
        *sums++ = hn::Sub(hn::Sub(row[1], row[2]), row[3]);
    }
}

}  // namespace
}  // namespace kvx::frame::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
