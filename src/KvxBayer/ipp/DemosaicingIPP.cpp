#include "KvxBayer/ipp/DemosaicingIPP.h"

#include <omp.h>

#include <algorithm>
#include <cmath>
#include <new>

#include "KvxBayer/BayerGeometry.h"
#include "KvxBayer/ipp/Method.h"
#include "KvxDemosaicing/KvxPixelFormat.h"
#include "KvxDemosaicing/KvxResult.h"
#include "framework/PixelFormats.h"

namespace kvx {
namespace {

/** Significant bits of the source's samples. */
int DepthOf(const _KvxImage& src) {
    if (src.pixelDepth == 0) return KvxPixelFormat_ByCode(src.pixelType)->bitsPerComponent;
    return static_cast<int>(std::min<uint32_t>(src.pixelDepth, Is8Bit(src.pixelType) ? 8 : 16));
}

int RoundedUpToEven(int size) {
    return size + size % 2;
}

int DividedRoundingUp(int value, int divisor) {
    return (value + divisor - 1) / divisor;
}

}  // namespace

uint32_t DemosaicingIPP::Init(_KvxImage* dst, const _KvxImage* src) noexcept {
    if (!dst || !src) return KvxResult_NullPointer;
    const uint32_t format = src->pixelType & kRowMask;
    if (!KvxPixelFormat_ByCode(src->pixelType) || s_bayerDescRB[format] == 0) return KvxResult_InvalidArgument;
    const uint32_t result = CheckBayerGeometry(*src, *dst, m_output);
    if (result != KvxResult_Success) return result;
    constexpr uint32_t mostRows = 1u << 30;  // their numbers are int, as are those of mirrored rows
    if (src->height > mostRows) return KvxResult_InvalidArgument;
    m_dst = dst;
    m_width = RoundedUpToEven(static_cast<int>(src->width));
    m_height = RoundedUpToEven(static_cast<int>(src->height));
    m_firstNotGreen = s_bayerDescG[format] == 0;
    m_blueFirstRow = s_bayerDescRB[format] == 3;
    m_maxValue = (1 << DepthOf(*src)) - 1;
    return KvxResult_Success;
}

template <class Sample>
uint32_t DemosaicingIPPOf<Sample>::Init(_KvxImage* dst, const _KvxImage* src) noexcept {
    m_dst = nullptr;
    if (src && Is8Bit(src->pixelType) != (sizeof(Sample) == 1)) return KvxResult_InvalidArgument;
    const uint32_t result = DemosaicingIPP::Init(dst, src);
    if (result != KvxResult_Success) return result;

    constexpr int sampleBytes = sizeof(Sample);
    const int width = static_cast<int>(src->width), height = static_cast<int>(src->height);
    const int bitsAboveUnit = std::ilogb(m_maxValue + 1) - ipp::kDepthOfUnit;
    m_frame = {{static_cast<const uint8_t*>(src->data), src->lineStep, width, height, sampleBytes, !m_firstNotGreen,
                m_blueFirstRow},
               {static_cast<uint8_t*>(dst->data), dst->lineStep},
               width,
               height,
               {sampleBytes, static_cast<uint16_t>(m_maxValue), std::ldexp(1.0f, -bitsAboveUnit),
                std::ldexp(1.0f, bitsAboveUnit)},
               m_output,
               m_slot,
               s_RGBBGRDesc[dst->pixelType & kRowMask] == 5};
    try {
        m_frame.source = m_narrowFrame.Widened(m_frame.source);
        if (MakeWorkers()) return KvxResult_Success;
    } catch (const std::bad_alloc&) {  // reported below
    }
    CleanMemory();
    return KvxResult_NoMemory;
}

/** Cuts the frame into tiles, and makes a worker for each thread. */
template <class Sample>
bool DemosaicingIPPOf<Sample>::MakeWorkers() {
    constexpr int tallest = 512, lowest = 64;  // a tile computes some 20 rows more than it gives
    constexpr int tilesPerThread = 4;          // so that a thread that is held up holds up little
    const int threads = omp_get_max_threads();
    m_tilesAcross = DividedRoundingUp(m_width, ipp::kMaxTileColumns);
    m_tileColumns = RoundedUpToEven(DividedRoundingUp(m_width, m_tilesAcross));
    m_tileRows = tallest;
    while (m_tileRows > lowest &&
           int64_t{m_tilesAcross} * DividedRoundingUp(m_height, m_tileRows) < int64_t{threads} * tilesPerThread)
        m_tileRows /= 2;
    m_tileRows = RoundedUpToEven(DividedRoundingUp(m_height, DividedRoundingUp(m_height, m_tileRows)));  // all alike
    m_tilesAcross = DividedRoundingUp(m_width, m_tileColumns);
    m_tilesDown = DividedRoundingUp(m_height, m_tileRows);

    const auto wanted = static_cast<size_t>(std::min<int64_t>(threads, int64_t{m_tilesAcross} * m_tilesDown));
    while (m_workers.size() < wanted) {
        m_workers.push_back(ipp::TileWorker::Create());
        if (!m_workers.back()) return false;
    }
    return true;
}

template <class Sample>
ipp::TileArea DemosaicingIPPOf<Sample>::AreaOf(int tile) const {
    const int row = tile / m_tilesAcross * m_tileRows, column = tile % m_tilesAcross * m_tileColumns;
    return {row, std::min(m_tileRows, m_frame.height - row), column, std::min(m_tileColumns, m_frame.width - column)};
}

template <class Sample>
uint32_t DemosaicingIPPOf<Sample>::Calculate() noexcept {
    if (!m_dst) return KvxResult_InvalidArgument;
    const int tiles = m_tilesAcross * m_tilesDown;
    const int threads = std::min({static_cast<int>(m_workers.size()), omp_get_max_threads(), tiles});
#pragma omp parallel for num_threads(threads) schedule(dynamic) default(none) shared(tiles)
    for (int tile = 0; tile < tiles; ++tile)
        m_workers[static_cast<size_t>(omp_get_thread_num())]->Compute(m_frame, AreaOf(tile));
    return KvxResult_Success;
}

template <class Sample>
uint32_t DemosaicingIPPOf<Sample>::CleanMemory() noexcept {
    m_dst = nullptr;
    m_width = m_height = 0;
    m_workers.clear();
    m_workers.shrink_to_fit();
    m_narrowFrame = {};
    return KvxResult_Success;
}

template class DemosaicingIPPOf<uint8_t>;
template class DemosaicingIPPOf<uint16_t>;

}  // namespace kvx
