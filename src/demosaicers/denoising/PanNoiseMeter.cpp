#include "demosaicers/denoising/PanNoiseMeter.h"

#include <numeric>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "demosaicers/denoising/PanNoiseMeter.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#ifndef KVX_PAN_NOISE_METER_ONCE
#define KVX_PAN_NOISE_METER_ONCE
namespace kvx {
namespace {

/** One row for each row of cells of a block. */
template <class T>
using BlockRows = std::array<T*, kNoiseBlock>;

/** Rows of sums of columns. */
constexpr int kLevel = 0, kRoughness = 1, kAcross = 2, kDown = kAcross + kNoiseLags, kSums = kDown + kNoiseLags;

}  // namespace
}  // namespace kvx
#endif

HWY_BEFORE_NAMESPACE();
namespace kvx::HWY_NAMESPACE {
namespace {
namespace hn = hwy::HWY_NAMESPACE;

using Codes = hn::ScalableTag<int16_t>;
using Sums = hn::RebindToUnsigned<Codes>;  // eight differences of residuals, of up to 8184 codes each, fit

hn::Vec<Sums> Magnitude(hn::Vec<Codes> value) {
    return hn::BitCast(Sums(), hn::Abs(value));
}

void StoreResiduals(const int16_t* row, const int16_t* up, const int16_t* down, size_t cells, int16_t* residuals) {
    const Codes d;
    for (size_t k = 0; k < cells; k += hn::Lanes(d)) {
        const auto nearest = hn::Add(hn::Add(hn::LoadU(d, up + k - 1), hn::LoadU(d, up + k)),
                                     hn::Add(hn::LoadU(d, down + k - 1), hn::LoadU(d, down + k)));
        hn::StoreU(hn::Sub(hn::ShiftLeft<2>(hn::LoadU(d, row + k)), nearest), d, residuals + k);
    }
}

void SumMagnitudes(const BlockRows<const int16_t>& rows, size_t cells, uint16_t* sums) {
    for (size_t k = 0; k < cells; k += hn::Lanes(Codes())) {
        auto sum = hn::Zero(Sums());
        for (const int16_t* row : rows) sum = hn::Add(sum, Magnitude(hn::LoadU(Codes(), row + k)));
        hn::StoreU(sum, Sums(), sums + k);
    }
}

/** Differences of residuals `lag` cells apart. */
void SumDifferences(const BlockRows<const int16_t>& rows, int lag, size_t cells, uint16_t* across, uint16_t* down) {
    const Codes d;
    for (size_t k = 0; k < cells; k += hn::Lanes(d)) {
        auto sumAcross = hn::Zero(Sums()), sumDown = hn::Zero(Sums());
        for (int i = 0; i < kNoiseBlock; ++i) {
            const auto here = hn::LoadU(d, rows[i] + k);
            sumAcross = hn::Add(sumAcross, Magnitude(hn::Sub(here, hn::LoadU(d, rows[i] + k - lag))));
            if (i >= lag) sumDown = hn::Add(sumDown, Magnitude(hn::Sub(here, hn::LoadU(d, rows[i - lag] + k))));
        }
        hn::StoreU(sumAcross, Sums(), across + k);
        hn::StoreU(sumDown, Sums(), down + k);
    }
}

}  // namespace
}  // namespace kvx::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace kvx {

HWY_EXPORT(StoreResiduals);
HWY_EXPORT(SumMagnitudes);
HWY_EXPORT(SumDifferences);

bool PanNoiseMeter::Reserve(int cells) noexcept {
    return m_residuals.Reserve(cells, kNoiseBlock, 0, 0) && m_sums.Reserve(cells, kSums, 0, 0);
}

void PanNoiseMeter::CountBlocks(const PipelinePlanes& planes, int blockRow) noexcept {
    const auto cells = static_cast<size_t>(planes.Cells());
    BlockRows<const int16_t> codes, residuals;
    for (int i = 0; i < kNoiseBlock; ++i) {
        const PanWindow rows = planes.Window(planes.pan, 2 * (blockRow * kNoiseBlock + i));
        codes[i] = rows[3];
        residuals[i] = m_residuals.Row(i);
        HWY_DYNAMIC_DISPATCH(StoreResiduals)(rows[3], rows[2], rows[4], cells, m_residuals.Row(i));
    }
    HWY_DYNAMIC_DISPATCH(SumMagnitudes)(codes, cells, m_sums.Row(kLevel));
    HWY_DYNAMIC_DISPATCH(SumMagnitudes)(residuals, cells, m_sums.Row(kRoughness));
    for (int lag = 1; lag <= kNoiseLags; ++lag) HWY_DYNAMIC_DISPATCH(SumDifferences)
    (residuals, lag, cells, m_sums.Row(kAcross + lag - 1), m_sums.Row(kDown + lag - 1));
    for (int cell = 0; cell + kNoiseBlock <= planes.Cells(); cell += kNoiseBlock) m_noise.Count(BlockAt(cell));
}

NoiseBlock PanNoiseMeter::BlockAt(int firstCell) const noexcept {
    const auto sum = [=, this](int row, int firstColumn) {
        const uint16_t* columns = m_sums.Row(row) + firstCell;
        return std::accumulate(columns + firstColumn, columns + kNoiseBlock, 0);
    };
    NoiseBlock block{sum(kLevel, 0), sum(kRoughness, 0), {}, {}};
    for (int lag = 1; lag <= kNoiseLags; ++lag) {
        block.across[lag - 1] = sum(kAcross + lag - 1, lag);
        block.down[lag - 1] = sum(kDown + lag - 1, 0);
    }
    return block;
}

}  // namespace kvx
#endif
