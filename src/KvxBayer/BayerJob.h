/** One Bayer conversion. */
#pragma once

#include <cstdint>
#include <optional>

#include "KvxBayer/BayerOutput.h"
#include "KvxBayer/BayerPattern.h"
#include "KvxDemosaicing/KvxImage.h"
#include "framework/DisjointSource.h"
#include "framework/RowExchange.h"

namespace kvx {

/** What to convert into what. Every public entry fills one job; everything behind the entries reads it. */
struct BayerJob {
    const void* source;
    int64_t sourceStep;  ///< bytes, as `destinationStep`; not checked yet, and so possibly negative
    _KvxSize size;
    int sampleSize;  ///< bytes of a source sample: 1 or 2
    int depth;       ///< significant bits of a source sample
    BayerPattern pattern;

    void* destination;
    int64_t destinationStep;
    _KvxSize destinationSize;
    ChannelOrder order;
    BayerOutput output{};
    const RowExchange* exchange = nullptr;  ///< in place of both buffers: the samples and the results are words

    int OutputSampleSize() const {
        return output.form == BayerOutput::Samples ? sampleSize : 1;
    }
    int PixelBytes() const {
        return output.SamplesPerPixel() * OutputSampleSize();
    }
    /** Bytes of the pixels in a destination row. */
    int64_t PictureBytes() const {
        return int64_t{size.width} * PixelBytes();
    }
    /** Bytes that are written in a destination row. */
    int64_t WrittenBytes() const {
        const int64_t slots = int64_t{4} * size.width;
        const bool hasSlots = output.pixel == BayerPixel::ThreeThenZeros;
        return hasSlots ? (slots < destinationStep ? slots : destinationStep) : PictureBytes();
    }
    ByteRows SourceRows() const {
        return {source, size.height, int64_t{size.width} * sampleSize, sourceStep};
    }
    ByteRows WrittenRows() const {
        return {destination, size.height, WrittenBytes(), destinationStep};
    }
};

/** The job between two records, whose samples keep their width; `pattern` takes the place of the source format's. */
BayerJob BayerJobOf(const _KvxImage& src, const _KvxImage& dst, BayerPattern pattern) noexcept;

/** The same with the source's own pattern; nothing when the source is not an unpacked Bayer format. */
std::optional<BayerJob> BayerJobOf(const _KvxImage& src, const _KvxImage& dst) noexcept;

/** The job of a frame whose rows the caller exchanges; nothing when its format is not an unpacked Bayer format. */
std::optional<BayerJob> BayerJobOf(const _KvxImage& frame, const RowExchange& exchange) noexcept;

/** Significant bits of samples: `pixelDepth`, or those of the format where it is 0; at most what a sample holds. */
int SignificantBits(uint32_t pixelDepth, int formatBits) noexcept;

/**
 * @return 0, or a KvxResultCode: InvalidArgument when sizes, line steps and buffers do not fit each other,
 *         ConversionFailed when there are no pixels
 */
uint32_t CheckGeometry(const BayerJob& job) noexcept;

}  // namespace kvx
