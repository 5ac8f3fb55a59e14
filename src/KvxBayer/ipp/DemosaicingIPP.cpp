#include "KvxBayer/ipp/DemosaicingIPP.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <new>

#include "KvxBayer/ipp/Method.h"
#include "KvxDemosaicing/KvxResult.h"
#include "framework/Bands.h"

namespace kvx {
namespace {

int RoundedUpToEven(int size) {
    return size + size % 2;
}

int DividedRoundingUp(int value, int divisor) {
    return (value + divisor - 1) / divisor;
}

ipp::Frame FrameOf(const BayerJob& job) {
    const int bitsAboveUnit = job.depth - ipp::kDepthOfUnit;
    return {job,
            {job.exchange, static_cast<const uint8_t*>(job.source), static_cast<size_t>(job.sourceStep),
             static_cast<int>(job.size.width), static_cast<int>(job.size.height), job.sampleSize,
             IsGreenFirst(job.pattern), IsBlueOnTop(job.pattern)},
            {job.sampleSize, static_cast<uint16_t>((1 << job.depth) - 1), std::ldexp(1.0f, -bitsAboveUnit),
             std::ldexp(1.0f, bitsAboveUnit)}};
}

}  // namespace

std::unique_ptr<DemosaicingIPP> DemosaicingIPP::Create(int sampleSize) noexcept {
    if (sampleSize == 1) return std::unique_ptr<DemosaicingIPP>(new (std::nothrow) DemosaicingIPP_8);
    return std::unique_ptr<DemosaicingIPP>(new (std::nothrow) DemosaicingIPP_16);
}

uint32_t DemosaicingIPP::Init(_KvxImage* dst, const _KvxImage* src) noexcept {
    m_isPrepared = false;
    if (!dst || !src) return KvxResult_NullPointer;
    const auto job = BayerJobOf(*src, *dst);
    if (!job) return KvxResult_InvalidArgument;
    const uint32_t result = CheckGeometry(*job);
    return result == KvxResult_Success ? Prepare(*job) : result;
}

template <class Sample>
uint32_t DemosaicingIPPOf<Sample>::Prepare(const BayerJob& job) noexcept {
    constexpr uint32_t mostRows = 1u << 30;  // row numbers are int, as are those of mirrored rows
    m_isPrepared = false;
    if (job.sampleSize != SampleSize() || job.size.height > mostRows) return KvxResult_InvalidArgument;
    m_frame = FrameOf(job);
    const int threads = TeamSize(INT_MAX);
    CutIntoTiles(threads);
    try {
        m_frame.source = m_narrowFrame.Widened(m_frame.source);
        m_isPrepared = MakeWorkers(static_cast<size_t>(TeamSize(int64_t{m_tilesAcross} * m_tilesDown, threads)));
    } catch (const std::bad_alloc&) {  // reported below
    }
    if (m_isPrepared) return KvxResult_Success;
    CleanMemory();
    return KvxResult_NoMemory;
}

template <class Sample>
void DemosaicingIPPOf<Sample>::CutIntoTiles(int threads) {
    constexpr int tallest = 512, lowest = 64;  // a tile computes some 20 rows more than it gives
    constexpr int tilesPerThread = 4;          // so that a thread that is held up delays little work
    const int width = RoundedUpToEven(m_frame.source.width), height = RoundedUpToEven(m_frame.source.height);
    m_tilesAcross = DividedRoundingUp(width, ipp::kMaxTileColumns);
    m_tileColumns = RoundedUpToEven(DividedRoundingUp(width, m_tilesAcross));
    m_tileRows = tallest;
    while (m_tileRows > lowest &&
           int64_t{m_tilesAcross} * DividedRoundingUp(height, m_tileRows) < int64_t{threads} * tilesPerThread)
        m_tileRows /= 2;
    m_tileRows = RoundedUpToEven(DividedRoundingUp(height, DividedRoundingUp(height, m_tileRows)));  // equal heights
    m_tilesAcross = DividedRoundingUp(width, m_tileColumns);
    m_tilesDown = DividedRoundingUp(height, m_tileRows);
}

/** @return false without memory; throws std::bad_alloc as well */
template <class Sample>
bool DemosaicingIPPOf<Sample>::MakeWorkers(size_t count) {
    while (m_workers.size() < count) {
        m_workers.push_back(ipp::TileWorker::Create());
        if (!m_workers.back()) return false;
    }
    return true;
}

template <class Sample>
ipp::TileArea DemosaicingIPPOf<Sample>::AreaOf(int tile) const {
    const int width = static_cast<int>(m_frame.job.size.width), height = static_cast<int>(m_frame.job.size.height);
    const int row = tile / m_tilesAcross * m_tileRows, column = tile % m_tilesAcross * m_tileColumns;
    return {row, std::min(m_tileRows, height - row), column, std::min(m_tileColumns, width - column)};
}

template <class Sample>
uint32_t DemosaicingIPPOf<Sample>::Calculate() noexcept {
    if (!m_isPrepared) return KvxResult_InvalidArgument;
    const int tiles = m_tilesAcross * m_tilesDown;
    const int threads = TeamSize(std::min<int64_t>(tiles, static_cast<int64_t>(m_workers.size())));
    ForBands(0, tiles, tiles, threads, [this](int thread, int64_t tile, int64_t /*end*/) {
        m_workers[static_cast<size_t>(thread)]->Compute(m_frame, AreaOf(static_cast<int>(tile)));
    });
    return KvxResult_Success;
}

template <class Sample>
uint32_t DemosaicingIPPOf<Sample>::CleanMemory() noexcept {
    m_isPrepared = false;
    m_workers.clear();
    m_workers.shrink_to_fit();
    m_narrowFrame = {};
    return KvxResult_Success;
}

template class DemosaicingIPPOf<uint8_t>;
template class DemosaicingIPPOf<uint16_t>;

}  // namespace kvx
