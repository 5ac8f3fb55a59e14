#include "frame/learned/fine/LayerRows.h"

#include <algorithm>
#include <cstring>
#include <type_traits>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "frame/learned/fine/LayerRows.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "frame/learned/PairProducts-inl.h"
#include "frame/learned/fine/Winograd-inl.h"

HWY_BEFORE_NAMESPACE();
namespace kvx::frame::HWY_NAMESPACE {
namespace {

namespace hn = hwy::HWY_NAMESPACE;

// Cells whose sums stay in registers, for so many vectors of outputs each: there are 16 registers, or 32 with AVX-512.
template <size_t kVectors>
constexpr size_t kCellsWith = HWY_TARGET <= HWY_AVX3 ? 8
                              : kVectors == 3        ? 4
                                                     : 6;
static_assert(kCellsWith<2> <= kCellSlack);

// Squares of 2x2 cells that are computed together: what lies between the steps stays in the first-level cache.
constexpr size_t kTiles = 2 * kCellsWith<2>;
static_assert(kTiles <= kBlockTiles && kTiles % kCellsWith<3> == 0);

constexpr int16_t kLeak = (1 << 15) / 8;  // of the leaky ReLU, in 15 bits after the binary point

/** Sums of kCells cells, for kVectors vectors of outputs. */
template <class D32, size_t kVectors>
class Sums {
public:
    using Sum = hn::Vec<D32>;
    static constexpr size_t kCells = kCellsWith<kVectors>;

    Sums() {
        for (size_t cell = 0; cell < kCells; ++cell)
            for (size_t v = 0; v < kVectors; ++v) m_even[cell][v] = m_odd[cell][v] = hn::Zero(D32());
    }

    HWY_INLINE Sum Of(size_t cell, size_t v) const {
        return hn::RearrangeToOddPlusEven(m_even[cell][v], m_odd[cell][v]);
    }

    /**
     * Adds the products of a row of cells.
     *
     * @param weights of the first output: [pair of inputs][output][2]
     * @param length  words of the row under a filter
     * @param inputs  words from cell to cell
     * @return the weights of the next row
     */
    HWY_INLINE const int16_t* Add(const int16_t* weights, size_t length, size_t inputs, size_t outputs,
                                  const int16_t* in) {
        const hn::Repartition<int16_t, D32> d16;
        for (const int16_t* const end = in + length; in < end; in += 2, weights += 2 * outputs) {
            hn::Vec<decltype(d16)> factors[kVectors];
            for (size_t v = 0; v < kVectors; ++v) factors[v] = hn::LoadU(d16, weights + v * hn::Lanes(d16));
#pragma GCC unroll 8
            for (size_t c = 0; c < kCells; ++c) {
                int32_t pair;
                std::memcpy(&pair, in + c * inputs, sizeof pair);
                const auto words = hn::BitCast(d16, hn::Set(D32(), pair));
#pragma GCC unroll 3
                for (size_t v = 0; v < kVectors; ++v)
                    m_even[c][v] = PlusProducts(words, factors[v], m_even[c][v], m_odd[c][v]);
            }
        }
        return weights;
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
    return hn::Max(x, hn::MulFixedPoint15(x, hn::Set(hn::DFromV<V>(), kLeak)));
}

/**
 * Calls `task` with a tag, a number of vectors and their first output, until all outputs are done. Three vectors at a
 * time are better than two and one: fewer words of cells are loaded. With AVX-512 three halves of a vector replace a
 * half alone, which would leave most of the time to loads.
 */
template <class Task>
HWY_INLINE void ForOutputs(size_t outputs, const Task& task) {
    using Whole = hn::CappedTag<int32_t, 2 * kFilterGroup>;
    using Group = hn::CappedTag<int32_t, kFilterGroup>;
    using One = std::integral_constant<size_t, 1>;
    using Two = std::integral_constant<size_t, 2>;
    using Three = std::integral_constant<size_t, 3>;
    static_assert(3 * hn::MaxLanes(Whole()) <= kBlockOutputs);
    const size_t whole = hn::Lanes(Whole()), group = hn::Lanes(Group());
    size_t output = 0;
    if (HWY_TARGET <= HWY_AVX3 && outputs >= 3 * group && outputs % whole == group) {
        task(Group(), Three(), output);
        output += 3 * group;
    }
    if (outputs >= 3 * whole && outputs / whole % 2 == 1) {
        task(Whole(), Three(), output);
        output += 3 * whole;
    }
    for (; output + 2 * whole <= outputs; output += 2 * whole) task(Whole(), Two(), output);
    for (; output + whole <= outputs; output += whole) task(Whole(), One(), output);
    for (; output < outputs; output += group) task(Group(), One(), output);
}

/** Whole vectors of planes, then groups. */
template <class Task>
HWY_INLINE void ForPlanes(size_t planes, const Task& task) {
    using Whole = hn::CappedTag<int16_t, 4 * kFilterGroup>;
    using Group = hn::CappedTag<int16_t, kFilterGroup>;
    size_t plane = 0;
    for (; plane + hn::Lanes(Whole()) <= planes; plane += hn::Lanes(Whole())) task(Whole(), plane);
    for (; plane < planes; plane += hn::Lanes(Group())) task(Group(), plane);
}

/** Transforms the cells of a block. @return false if they are too large for that */
bool Transform(const CellRows& in, size_t planes, size_t tiles, int16_t* out) {
    bool fits = true;
    ForPlanes(planes, [&](auto d, size_t plane) {
        const auto bits = TransformCells(d, in, plane, planes, tiles, out, kTiles * planes);
        fits &= hn::AllTrue(d, hn::Eq(hn::And(bits, hn::Set(d, int16_t(-16384))), hn::Zero(d)));
    });
    return fits;
}

/** Sums of up to kTiles squares from transformed cells and filters. `take` gets a tag, row, cell, output and sums. */
template <class Take>
void SumTransformed(const Filters& filters, size_t tiles, LayerMemory& memory, Take take) {
    const size_t inputs = filters.inputs, outputs = filters.outputs;
    ForOutputs(outputs, [&, take](auto d32, auto vectors, size_t output) {
        using D32 = decltype(d32);
        const size_t lanes = hn::Lanes(d32), placeStep = kTiles * vectors * lanes;
        const int16_t* weights = filters.transformed.data() + 2 * output;
        for (size_t place = 0; place < kPlaces; ++place, weights += inputs * outputs) {
            const int16_t* cells = memory.Cells() + place * kTiles * inputs;
            int32_t* products = memory.Products() + place * placeStep;
            using BlockSums = Sums<D32, vectors>;
            for (size_t tile = 0; tile < tiles; tile += BlockSums::kCells, cells += BlockSums::kCells * inputs) {
                BlockSums sums;
                sums.Add(weights, inputs, inputs, outputs, cells);
                for (size_t c = 0; c < BlockSums::kCells; ++c)
                    for (size_t v = 0; v < vectors; ++v, products += lanes) hn::StoreU(sums.Of(c, v), d32, products);
            }
        }
        for (size_t tile = 0; tile < tiles; ++tile)
            for (size_t v = 0; v < vectors; ++v) {
                hn::Vec<D32> sums[4];
                SumsOfProducts(d32, memory.Products() + (tile * vectors + v) * lanes, placeStep, sums);
                for (size_t i = 0; i < 4; ++i)
                    take(d32, i / 2, 2 * tile + i % 2, output + v * lanes, hn::ShiftRight<2>(sums[i]));
            }
    });
}

/** The same sums from the cells as they are. */
template <class Take>
void SumDirectly(const Filters& filters, const CellRows& in, size_t cells, const Take& take) {
    const size_t inputs = filters.inputs, outputs = filters.outputs, skipped = filters.size == 1 ? 1 : 0;
    ForOutputs(outputs, [&](auto d32, auto vectors, size_t output) {
        using D32 = decltype(d32);
        using BlockSums = Sums<D32, vectors>;
        for (size_t row = 0; row < 2; ++row)
            for (size_t cell = 0; cell < cells; cell += BlockSums::kCells) {
                BlockSums sums;
                const int16_t* weights = filters.weights.data() + 2 * output;
                for (size_t i = 0; i < filters.size; ++i)
                    weights = sums.Add(weights, filters.size * inputs, inputs, outputs,
                                       in.rows[row + skipped + i] + (cell + skipped) * inputs);
                for (size_t c = 0; c < BlockSums::kCells; ++c)
                    for (size_t v = 0; v < vectors; ++v)
                        take(d32, row, cell + c, output + v * hn::Lanes(d32), sums.Of(c, v));
            }
    });
}

/** Calls `body` with the first cell of each block, its cells, and the rows moved there. */
template <class Body>
void ForBlocks(const CellRows& in, size_t inputs, size_t cells, const Body& body) {
    for (size_t first = 0; first < cells; first += 2 * kTiles) {
        CellRows rows = in;
        for (const int16_t*& row : rows.rows) row += first * inputs;
        body(first, std::min(2 * kTiles, cells - first), rows);
    }
}

template <class Take>
void SumBlock(const Filters& filters, const CellRows& in, size_t cells, LayerMemory& memory, const Take& take) {
    const size_t tiles = (cells + 1) / 2;
    if (!filters.transformed.empty() && Transform(in, filters.inputs, tiles, memory.Cells()))
        SumTransformed(filters, tiles, memory, take);
    else
        SumDirectly(filters, in, cells, take);
}

void Hidden(const HiddenLayer& layer, const CellRows& in, const RowPair<const int16_t>& skip,
            const RowPair<const int16_t>& sigma, const RowPair<int16_t>& out, size_t cells, LayerMemory& memory) {
    const size_t outputs = layer.filters.outputs;
    const int32_t* const factors = layer.noiseFactors.data();
    ForBlocks(in, layer.filters.inputs, cells, [&](size_t first, size_t count, const CellRows& rows) {
        // By value: the compiler must expect that a store of a vector changes what it has a reference to.
        const auto take = [=, shift = layer.shift](auto d32, size_t row, size_t cell, size_t output, auto sum) {
            const hn::Rebind<int16_t, decltype(d32)> d16;
            const auto half = hn::Set(d32, 1 << shift >> 1);
            const size_t place = (first + cell) * outputs + output;
            auto result = Leaky(Rounded(sum, half, shift));
            if (sigma.rows[row]) {
                const auto offset =
                    hn::Mul(hn::LoadU(d32, factors + output), hn::Set(d32, int32_t{sigma.rows[row][first + cell]}));
                result = hn::SaturatedSub(Leaky(Rounded(hn::Add(sum, offset), half, shift)),
                                          Leaky(Rounded(offset, half, shift)));
            }
            if (skip.rows[row]) result = hn::SaturatedAdd(result, hn::LoadU(d16, skip.rows[row] + place));
            hn::StoreU(result, d16, out.rows[row] + place);
        };
        SumBlock(layer.filters, rows, count, memory, take);
    });
}

void Result(const Network& network, const CellRows& hidden, const CellRows& input, const RowPair<uint16_t>& out,
            size_t cells, LayerMemory& memory) {
    const size_t outputs = network.last.outputs, rowSums = (2 * kTiles + kCellSlack) * outputs;
    int32_t* const baseSums = memory.BaseSums();
    ForBlocks(hidden, network.channels, cells, [&](size_t first, size_t count, const CellRows& rows) {
        CellRows inputs = input;
        for (const int16_t*& row : inputs.rows) row += first * network.inputs;
        const int excess = network.baseShift - network.shift;
        const auto keep = [&](auto d32, size_t row, size_t cell, size_t output, auto sum) {
            const auto rounded = hn::ShiftRightSame(hn::Add(sum, hn::Set(d32, 1 << excess >> 1)), excess);
            hn::StoreU(rounded, d32, baseSums + row * rowSums + cell * outputs + output);
        };
        SumDirectly(network.base, inputs, count, keep);
        const auto take = [&](auto d32, size_t row, size_t cell, size_t output, auto sum) {
            const hn::Rebind<uint16_t, decltype(d32)> dWord;
            const auto base = hn::LoadU(d32, baseSums + row * rowSums + cell * outputs + output);
            const auto half = hn::Set(d32, 1 << network.shift >> 1);
            const auto word = hn::BitCast(dWord, Rounded(hn::Add(sum, base), half, network.shift));
            hn::StoreU(hn::Xor(word, hn::Set(dWord, uint16_t{0x8000})), dWord,
                       out.rows[row] + (first + cell) * outputs + output);
        };
        SumBlock(network.last, rows, count, memory, take);
    });
}

}  // namespace
}  // namespace kvx::frame::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace kvx::frame {

HWY_EXPORT(Hidden);
HWY_EXPORT(Result);

LayerMemory::LayerMemory(const Network& network)
    : m_cells(kPlaces * kBlockTiles * network.channels),
      m_products(kPlaces * kBlockTiles * kBlockOutputs),
      m_baseSums(2 * (2 * kBlockTiles + kCellSlack) * network.last.outputs) {}

void HiddenRows(const HiddenLayer& layer, const CellRows& in, const RowPair<const int16_t>& skip,
                const RowPair<const int16_t>& sigma, const RowPair<int16_t>& out, size_t cells, LayerMemory& memory) {
    HWY_DYNAMIC_DISPATCH(Hidden)(layer, in, skip, sigma, out, cells, memory);
}

void ResultRows(const Network& network, const CellRows& hidden, const CellRows& input, const RowPair<uint16_t>& out,
                size_t cells, LayerMemory& memory) {
    HWY_DYNAMIC_DISPATCH(Result)(network, hidden, input, out, cells, memory);
}

}  // namespace kvx::frame
#endif
