#include "frame/learned/fine/LayerRow.h"

#include <cstring>
#include <type_traits>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "frame/learned/fine/LayerRow.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "frame/learned/PairProducts-inl.h"

HWY_BEFORE_NAMESPACE();
namespace kvx::frame::HWY_NAMESPACE {
namespace {

namespace hn = hwy::HWY_NAMESPACE;

// Cells whose sums stay in registers, for two vectors of outputs each: there are 16 registers, or 32 with AVX-512.
constexpr size_t kCells = HWY_TARGET <= HWY_AVX3 ? 8 : 6;
static_assert(kCells <= kCellSlack);

constexpr int kLeak = 3;  // leaky ReLU: max(a, a >> kLeak)

/** Sums of kCells cells, for kVectors vectors of outputs. */
template <class D32, size_t kVectors>
class Sums {
public:
    using Sum = hn::Vec<D32>;

    Sums() {
        for (size_t cell = 0; cell < kCells; ++cell)
            for (size_t v = 0; v < kVectors; ++v) m_even[cell][v] = m_odd[cell][v] = hn::Zero(D32());
    }

    HWY_INLINE Sum Of(size_t cell, size_t v) const {
        return hn::RearrangeToOddPlusEven(m_even[cell][v], m_odd[cell][v]);
    }

    /** Adds the filters' products. @param cell the first; @param output the first */
    HWY_INLINE void Add(const Filters& filters, const int16_t* const* rows, size_t cell, size_t output) {
        const hn::Repartition<int16_t, D32> d16;
        const size_t length = filters.size * filters.inputs;
        const int16_t* weights = filters.weights.data() + 2 * output;
        for (size_t row = 0; row < filters.size; ++row) {
            const int16_t* in = rows[row] + cell * filters.inputs;
            for (const int16_t* const end = in + length; in < end; in += 2, weights += 2 * filters.outputs) {
                hn::Vec<decltype(d16)> factors[kVectors];
                for (size_t v = 0; v < kVectors; ++v) factors[v] = hn::LoadU(d16, weights + v * hn::Lanes(d16));
#pragma GCC unroll 8
                for (size_t c = 0; c < kCells; ++c) {
                    int32_t pair;
                    std::memcpy(&pair, in + c * filters.inputs, sizeof pair);
                    const auto words = hn::BitCast(d16, hn::Set(D32(), pair));
#pragma GCC unroll 2
                    for (size_t v = 0; v < kVectors; ++v)
                        m_even[c][v] = PlusProducts(words, factors[v], m_even[c][v], m_odd[c][v]);
                }
            }
        }
    }

private:
    Sum m_even[kCells][kVectors], m_odd[kCells][kVectors];  // x86 adds pairs at once and leaves the odd ones 0
};

template <class Sum>
HWY_INLINE auto Rounded(Sum sum, Sum half, int shift) {
    const hn::Rebind<int16_t, hn::DFromV<Sum>> d16;
    return hn::DemoteTo(d16, hn::ShiftRightSame(hn::Add(sum, half), shift));
}

template <class V>
HWY_INLINE V Leaky(V x) {
    return hn::Max(x, hn::ShiftRight<kLeak>(x));
}

/** Calls `task` with a tag, a number of vectors and their first output, until all outputs are done. */
template <class Task>
HWY_INLINE void ForOutputs(size_t outputs, const Task& task) {
    using Whole = hn::CappedTag<int32_t, 2 * kFilterGroup>;
    using Group = hn::CappedTag<int32_t, kFilterGroup>;
    using One = std::integral_constant<size_t, 1>;
    using Two = std::integral_constant<size_t, 2>;
    const size_t whole = hn::Lanes(Whole()), group = hn::Lanes(Group());
    size_t output = 0;
    for (; output + 2 * whole <= outputs; output += 2 * whole) task(Whole(), Two(), output);
    for (; output + whole <= outputs; output += whole) task(Whole(), One(), output);
    for (; output < outputs; output += group) task(Group(), One(), output);
}

void Hidden(const HiddenLayer& layer, const CellRows& in, const int16_t* skip, const int16_t* sigma, int16_t* out,
            size_t cells) {
    const size_t outputs = layer.filters.outputs;
    ForOutputs(outputs, [&](auto d32, auto vectors, size_t output) {
        const hn::Rebind<int16_t, decltype(d32)> d16;
        const auto half = hn::Set(d32, 1 << layer.shift >> 1);
        for (size_t cell = 0; cell < cells; cell += kCells) {
            Sums<decltype(d32), vectors> sums;
            sums.Add(layer.filters, in.rows, cell, output);
            for (size_t c = 0; c < kCells; ++c)
                for (size_t v = 0; v < vectors; ++v) {
                    const size_t first = output + v * hn::Lanes(d32), place = (cell + c) * outputs + first;
                    const auto sum = sums.Of(c, v);
                    auto result = Leaky(Rounded(sum, half, layer.shift));
                    if (sigma) {
                        const auto offset = hn::Mul(hn::LoadU(d32, layer.noiseFactors.data() + first),
                                                    hn::Set(d32, int32_t{sigma[cell + c]}));
                        result = hn::SaturatedSub(Leaky(Rounded(hn::Add(sum, offset), half, layer.shift)),
                                                  Leaky(Rounded(offset, half, layer.shift)));
                    }
                    if (skip) result = hn::SaturatedAdd(result, hn::LoadU(d16, skip + place));
                    hn::StoreU(result, d16, out + place);
                }
        }
    });
}

void Result(const Network& network, const CellRows& hidden, const CellRows& input, uint16_t* out, size_t cells) {
    const size_t outputs = network.last.outputs;
    // A base of one cell reads the one in the middle.
    const int16_t* const middle[] = {input.rows[1] + network.inputs};
    const int16_t* const* const base = network.base.size == 1 ? middle : input.rows;
    ForOutputs(outputs, [&](auto d32, auto vectors, size_t output) {
        const hn::Rebind<uint16_t, decltype(d32)> dWord;
        const auto sign = hn::Set(dWord, uint16_t{0x8000});
        const auto half = hn::Set(d32, 1 << network.shift >> 1);
        for (size_t cell = 0; cell < cells; cell += kCells) {
            Sums<decltype(d32), vectors> sums;
            sums.Add(network.last, hidden.rows, cell, output);
            sums.Add(network.base, base, cell, output);
            for (size_t c = 0; c < kCells; ++c)
                for (size_t v = 0; v < vectors; ++v) {
                    const auto word = hn::BitCast(dWord, Rounded(sums.Of(c, v), half, network.shift));
                    hn::StoreU(hn::Xor(word, sign), dWord, out + (cell + c) * outputs + output + v * hn::Lanes(d32));
                }
        }
    });
}

}  // namespace
}  // namespace kvx::frame::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace kvx::frame {

HWY_EXPORT(Hidden);
HWY_EXPORT(Result);

void HiddenRow(const HiddenLayer& layer, const CellRows& in, const int16_t* skip, const int16_t* sigma, int16_t* out,
               size_t cells) {
    HWY_DYNAMIC_DISPATCH(Hidden)(layer, in, skip, sigma, out, cells);
}

void ResultRow(const Network& network, const CellRows& hidden, const CellRows& input, uint16_t* out, size_t cells) {
    HWY_DYNAMIC_DISPATCH(Result)(network, hidden, input, out, cells);
}

}  // namespace kvx::frame
#endif
