#include "demosaicers/frame/TrueSenseFrame.h"

#include <omp.h>

#include <algorithm>
#include <climits>
#include <cstdlib>

#include "KvxTrueSense/TrueSenseParams.h"
#include "demosaicers/frame/TrueSenseTile.h"
#include "pipeline/ToneScales.h"

namespace kvx {
namespace {

constexpr tagTrueSenseParam s_defaults = DefaultTrueSenseParams();
constexpr ColourMatrix s_identity = {1, 0, 0, 0, 1, 0, 0, 0, 1};

bool IsSupported(int depth, OddDepths oddDepths) {
    return depth >= 8 && depth <= 16 && (depth % 2 == 0 || oddDepths == OddDepths::Accepted);
}

bool HoldsRow(int lineStep, uint64_t bytes) {
    return bytes <= static_cast<uint64_t>(std::llabs(lineStep));
}

bool Fits(const TrueSenseCall& call, uint64_t pixelBytes) {
    constexpr uint32_t largest = INT_MAX - 2 * kTileSize;  // the working area is up to six pixels larger
    const _KvxRect& roi = call.roi;
    return call.size.width <= largest && call.size.height <= largest &&
           uint64_t{roi.x} + roi.width <= call.size.width && uint64_t{roi.y} + roi.height <= call.size.height &&
           HoldsRow(call.srcLineStep, call.size.width * uint64_t{call.srcSampleSize}) &&
           HoldsRow(call.dstLineStep, roi.width * pixelBytes);
}

constexpr int WholeTiles(int length) {
    return (length + kTileSize - 1) / kTileSize * kTileSize;
}

WorkingArea AreaOf(const TrueSenseCall& call) {
    const int columnPhase = call.grid % kTileSize, rowPhase = call.grid / kTileSize;
    const int width = static_cast<int>(call.roi.width), height = static_cast<int>(call.roi.height);
    return {WholeTiles(width + columnPhase), WholeTiles(height + rowPhase), columnPhase, rowPhase, width, height};
}

/** A sensor read out mirrored is read backwards, which meets the native pattern. */
TrueSenseSource SourceOf(const TrueSenseCall& call, const tagTrueSenseParam& params) {
    const bool upwards = params.verMirrored != 0;
    const int64_t firstRow = int64_t{call.roi.y} + (upwards ? call.roi.height - 1 : 0);
    return {.origin = static_cast<const uint8_t*>(call.src) + firstRow * call.srcLineStep +
                      static_cast<int64_t>(call.roi.x * call.srcSampleSize),
            .rowStep = upwards ? -ptrdiff_t{call.srcLineStep} : call.srcLineStep,
            .sampleSize = call.srcSampleSize,
            .backwards = params.horMirrored != 0,
            .leftShift = std::max(kWorkingDepth - call.pixelDepth, 0),
            .rightShift = std::max(call.pixelDepth - kWorkingDepth, 0)};
}

/** Mirrored frames are written backwards, too: the picture keeps the source's orientation. */
TrueSenseDestination DestinationOf(const TrueSenseCall& call, const tagTrueSenseParam& params, ptrdiff_t pixelBytes) {
    ptrdiff_t rowStep = call.dstLineStep, pixelStep = pixelBytes;
    if (call.dstLineStep < 0) {  // deliberate: a negative line step flips both directions
        rowStep = -rowStep;
        pixelStep = -pixelStep;
    }
    auto* origin = static_cast<uint8_t*>(call.dst);
    if (params.verMirrored) {
        origin += static_cast<ptrdiff_t>(call.roi.height - 1) * rowStep;
        rowStep = -rowStep;
    }
    if (params.horMirrored) {
        origin += static_cast<ptrdiff_t>(call.roi.width - 1) * pixelStep;
        pixelStep = -pixelStep;
    }
    return {origin, rowStep, pixelStep, call.dstSampleSize, call.bgrOrder};
}

/** Positive: to the left. A 16-bit source written as bytes keeps the upper 8 of the tone table's 12 bits. */
int OutputShift(const TrueSenseCall& call, const tagTrueSenseParam& params) {
    if (call.srcSampleSize > call.dstSampleSize) return 8 - kWorkingDepth;
    if (params.normalizationEnable || call.pixelDepth % 2 != 0) return 16 - kWorkingDepth;
    return call.pixelDepth - kWorkingDepth;
}

uint16_t ToneValue(uint16_t entry, int shift) {
    const auto value = static_cast<int16_t>(entry);  // deliberate: entries are signed
    return static_cast<uint16_t>(shift < 0 ? value >> -shift : value << shift);
}

}  // namespace

int BindFrame(const TrueSenseCall& call, OddDepths oddDepths, TrueSenseFrame& frame) noexcept {
    if (!call.src || !call.dst) return KvxResult_NullPointer;
    const uint64_t pixelBytes = (call.withAlpha ? 4 : 3) * call.dstSampleSize;
    if (call.grid >= kTileSize * kTileSize) return KvxResult_InvalidArgument;
    if (call.roi.width == 0 || call.roi.height == 0) return KvxResult_NoMemory;  // as for a plane that cannot be made
    if (!IsSupported(call.pixelDepth, oddDepths) || !Fits(call, pixelBytes)) return KvxResult_InvalidArgument;

    const tagTrueSenseParam& params = call.params ? *call.params : s_defaults;
    frame.area = AreaOf(call);
    frame.source = SourceOf(call, params);
    frame.destination = DestinationOf(call, params, static_cast<ptrdiff_t>(pixelBytes));
    frame.matrix = {params.RR, params.RG, params.RB, params.GR, params.GG, params.GB, params.BR, params.BG, params.BB};
    frame.applyMatrix = frame.matrix != s_identity;
    const uint16_t* table = params.toneTable ? params.toneTable : Tonescale12Table12.data();
    frame.outputShift = OutputShift(call, params);
    for (size_t i = 0; i < frame.tone.size(); ++i) frame.tone[i] = ToneValue(table[i], frame.outputShift);
    frame.threads = params.threads_num > 0 ? static_cast<int>(std::min<int64_t>(params.threads_num, INT_MAX))
                                           : omp_get_max_threads();
    frame.params = params;
    return KvxResult_Success;
}

}  // namespace kvx
