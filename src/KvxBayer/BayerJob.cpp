#include "KvxBayer/BayerJob.h"

#include <algorithm>
#include <climits>

#include "KvxDemosaicing/KvxResult.h"
#include "framework/PixelFormats.h"

namespace kvx {
namespace {

bool IsCountable(const _KvxSize& size) {
    return size.width <= INT_MAX && size.height <= INT_MAX;
}

bool Holds(const void* data, int64_t lineStep, const _KvxSize& size, int64_t pixelBytes) {
    return data && IsCountable(size) && lineStep <= INT_MAX && size.width * pixelBytes <= lineStep;
}

bool HasBuffers(const BayerJob& job) {
    return job.size == job.destinationSize && Holds(job.source, job.sourceStep, job.size, job.sampleSize) &&
           Holds(job.destination, job.destinationStep, job.size, job.PixelBytes());
}

}  // namespace

BayerJob BayerJobOf(const _KvxImage& src, const _KvxImage& dst, BayerPattern pattern) noexcept {
    return {.source = src.data,
            .sourceStep = src.lineStep,
            .size = {src.width, src.height},
            .sampleSize = Is8Bit(src.pixelType) ? 1 : 2,
            .depth = SignificantBits(src.pixelDepth, BitsOf(src.pixelType)),
            .pattern = pattern,
            .destination = dst.data,
            .destinationStep = dst.lineStep,
            .destinationSize = {dst.width, dst.height},
            .order = IsBlueFirst(dst.pixelType) ? ChannelOrder::BGR : ChannelOrder::RGB};
}

std::optional<BayerJob> BayerJobOf(const _KvxImage& src, const _KvxImage& dst) noexcept {
    const auto pattern = PatternOf(src.pixelType);
    if (!pattern) return std::nullopt;
    return BayerJobOf(src, dst, *pattern);
}

std::optional<BayerJob> BayerJobOf(const _KvxImage& frame, const RowExchange& exchange) noexcept {
    auto job = BayerJobOf(frame, _KvxImage{});
    if (!job) return std::nullopt;
    job->sampleSize = sizeof(uint16_t);
    job->exchange = &exchange;
    return job;
}

int SignificantBits(uint32_t pixelDepth, int formatBits) noexcept {
    if (pixelDepth == 0) return formatBits;
    return static_cast<int>(std::min<uint32_t>(pixelDepth, formatBits == 8 ? 8 : 16));
}

uint32_t CheckGeometry(const BayerJob& job) noexcept {
    if (!(job.exchange ? IsCountable(job.size) : HasBuffers(job))) return KvxResult_InvalidArgument;
    return job.size.width == 0 || job.size.height == 0 ? KvxResult_ConversionFailed : KvxResult_Success;
}

}  // namespace kvx
