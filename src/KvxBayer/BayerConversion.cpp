#include "KvxBayer/BayerConversion.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "KvxBayer/MosaicRow.h"
#include "KvxBayer/MosaicStrip.h"
#include "KvxDemosaicing/KvxBayer.h"
#include "KvxDemosaicing/KvxResult.h"
#include "framework/Bands.h"

namespace kvx {
namespace {

/** No site of a frame as small as this has all its neighbours. */
void WriteBlackRow(const BayerJob& job, uint8_t* out) {
    std::memset(out, 0, static_cast<size_t>(job.PictureBytes()));
    if (job.output.pixel == BayerPixel::WithAlpha)
        for (size_t column = 0; column < job.size.width; ++column) out[4 * column + 3] = 255;
}

void ConvertRow(const BayerJob& job, GreenRule rule, int64_t row) {
    uint8_t* const out = static_cast<uint8_t*>(job.destination) + row * job.destinationStep;
    if (job.size.width < 3 || job.size.height < 3) {
        WriteBlackRow(job, out);
    } else {
        const int64_t centre = std::clamp<int64_t>(row, 1, int64_t{job.size.height} - 2);  // border rows are copies
        const uint8_t* const samples = static_cast<const uint8_t*>(job.source) + centre * job.sourceStep;
        const bool odd = centre % 2 != 0;
        const bool topColourFirst = IsBlueOnTop(job.pattern) == (job.order == ChannelOrder::BGR);
        ConvertMosaicRow({.above = samples - job.sourceStep,
                          .centre = samples,
                          .below = samples + job.sourceStep,
                          .sampleSize = static_cast<size_t>(job.sampleSize),
                          .width = job.size.width,
                          .greenFirst = IsGreenFirst(job.pattern) != odd,
                          .rowColourFirst = topColourFirst != odd,
                          .rule = rule,
                          .output = job.output},
                         out);
    }
    const auto pictureBytes = static_cast<size_t>(job.PictureBytes());
    std::memset(out + pictureBytes, 0, static_cast<size_t>(job.WrittenBytes()) - pictureBytes);
}

void ConvertRows(const BayerJob& job, GreenRule rule) {
    constexpr int64_t bandRows = 16;                 // small, so that a thread that is held up delays little work
    constexpr int64_t pixelsWorthAThread = 1 << 15;  // below, starting a thread costs more than it saves
    const int64_t rows = job.size.height, bands = (rows + bandRows - 1) / bandRows;
    const int threads = TeamSize(std::min(bands, job.size.width * rows / pixelsWorthAThread));
    ForBands(0, rows, bands, threads, [&](int /*thread*/, int64_t begin, int64_t end) {
        for (int64_t row = begin; row < end; ++row) ConvertRow(job, rule, row);
    });
}

/** A frame in which no site has all its neighbours is black. */
void WriteBlack(const BayerJob& job) {
    constexpr uint32_t length = 1024;
    const std::array<uint16_t, length + KVX_ROW_PADDING / sizeof(uint16_t)> zeros{};
    const std::array<const uint16_t*, 3> planes = {zeros.data(), zeros.data(), zeros.data()};
    for (uint32_t row = 0; row < job.size.height; ++row)
        for (uint32_t column = 0; column < job.size.width; column += length)
            job.exchange->Write(row, column, std::min(length, job.size.width - column), planes);
}

void ExchangeRows(const BayerJob& job, GreenRule rule) {
    constexpr int64_t bandRows = 32;                 // two more are read
    constexpr int64_t pixelsWorthAThread = 1 << 13;  // the caller's functions take most of the time
    const int64_t width = job.size.width, rows = job.size.height;
    if (width < 3 || rows < 3) return WriteBlack(job);
    const int64_t bands = (rows + bandRows - 1) / bandRows, strips = (width + kStripColumns - 1) / kStripColumns;
    const int threads = TeamSize(std::min(bands, width * rows / pixelsWorthAThread));
    ForBands(0, rows, bands, threads, [&](int /*thread*/, int64_t begin, int64_t end) {
        MosaicStrip strip(job, rule);
        for (int64_t i = 0; i < strips; ++i) strip.Convert(begin, end, width * i / strips, width * (i + 1) / strips);
    });
}

}  // namespace

uint32_t ConvertBayer(BayerJob job, int algorithm, DemosaicingIPP* interpolator) noexcept {
    const uint32_t result = CheckGeometry(job);
    if (result != KvxResult_Success) return result;
    DisjointSource disjoint;
    if (!job.exchange) {
        const auto rows = disjoint.Take(job.SourceRows(), job.WrittenRows());
        if (!rows) return KvxResult_NoMemory;
        job.source = rows->data;
        job.sourceStep = rows->lineStep;
    }
    if (algorithm == KvxBayerAlgorithm_IPP)
        return interpolator ? interpolator->Convert(job) : uint32_t{KvxResult_NoMemory};
    const GreenRule rule = algorithm == KvxBayerAlgorithm_EdgeAware ? GreenRule::EdgeAware : GreenRule::Mean;
    if (job.exchange)
        ExchangeRows(job, rule);
    else
        ConvertRows(job, rule);
    return KvxResult_Success;
}

}  // namespace kvx
