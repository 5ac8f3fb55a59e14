#include "demosaicers/frame/TrueSenseFrame.h"

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

bool IsSupported(int depth, bool oddDepths) {
    return depth >= 8 && depth <= 16 && (depth % 2 == 0 || oddDepths);
}

bool HoldsRow(int lineStep, uint64_t bytes) {
    return bytes <= static_cast<uint64_t>(std::llabs(lineStep));
}

bool HasRegion(const TrueSenseCall& call, int margin) {
    const auto largest =
        static_cast<uint32_t>(INT_MAX - 2 * (margin + kTileSize));  // for the working area to be an int
    const _KvxRect& roi = call.roi;
    return call.size.width <= largest && call.size.height <= largest &&
           uint64_t{roi.x} + roi.width <= call.size.width && uint64_t{roi.y} + roi.height <= call.size.height &&
           (call.exchange || HoldsRow(call.srcLineStep, call.size.width * uint64_t{call.srcSampleSize}));
}

constexpr int WholeTiles(int length) {
    return (length + kTileSize - 1) / kTileSize * kTileSize;
}

/** One direction of the working area: its length, and where the region and the given samples lie in it. */
struct Extent {
    int length;
    int region, regionLength;
    int given, givenLength;
};

/** @param before,after samples of the source on either side of the region, in the direction of reading */
Extent ExtentOf(int phase, int regionLength, int before, int after, int margin) {
    const int region = margin + phase, end = region + regionLength;
    const int length = WholeTiles(end + margin);
    if (margin == 0) return {length, region, regionLength, region, regionLength};
    const int given = region - std::min(before, region);
    return {length, region, regionLength, given, end + std::min(after, length - end) - given};
}

WorkingArea AreaOf(const TrueSenseCall& call, const tagTrueSenseParam& params, int margin) {
    const auto extentOf = [margin](int phase, uint32_t start, uint32_t length, uint32_t whole, bool backwards) {
        auto before = static_cast<int>(start), after = static_cast<int>(whole - start - length);
        if (backwards) std::swap(before, after);
        return ExtentOf(phase, static_cast<int>(length), before, after, margin);
    };
    const _KvxRect& roi = call.roi;
    const Extent across = extentOf(call.grid % kTileSize, roi.x, roi.width, call.size.width, params.horMirrored != 0);
    const Extent down = extentOf(call.grid / kTileSize, roi.y, roi.height, call.size.height, params.verMirrored != 0);
    return {across.length,
            down.length,
            {across.region, down.region, across.regionLength, down.regionLength},
            {across.given, down.given, across.givenLength, down.givenLength}};
}

/** A sensor read out mirrored is read backwards, which meets the native pattern. */
TrueSenseSource SourceOf(const TrueSenseCall& call, const tagTrueSenseParam& params, const WorkingArea& area) {
    const bool upwards = params.verMirrored != 0, backwards = params.horMirrored != 0;
    const int above = area.region.row - area.given.row;
    const int64_t firstRow = upwards ? int64_t{call.roi.y} + call.roi.height - 1 + above : int64_t{call.roi.y} - above;
    const int before = area.region.column - area.given.column;
    const int lower = backwards ? area.given.width - area.region.width - before : before;
    const int64_t firstColumn = int64_t{call.roi.x} - lower;
    const ptrdiff_t offset = firstRow * call.srcLineStep + firstColumn * static_cast<ptrdiff_t>(call.srcSampleSize);
    return {.origin = call.exchange ? nullptr : static_cast<const uint8_t*>(call.src) + offset,
            .rowStep = upwards ? -ptrdiff_t{call.srcLineStep} : call.srcLineStep,
            .sampleSize = call.srcSampleSize,
            .upwards = upwards,
            .backwards = backwards,
            .leftShift = std::max(kWorkingDepth - call.pixelDepth, 0),
            .rightShift = std::max(call.pixelDepth - kWorkingDepth, 0)};
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

ByteRows TrueSenseFrame::SourceRows() const {
    return {source.origin, area.given.height, static_cast<int64_t>(area.given.width * source.sampleSize),
            source.rowStep};
}

ByteRows TrueSenseFrame::DestinationRows() const {
    const ptrdiff_t step = std::abs(destination.pixelStep);
    const ptrdiff_t toLowest = destination.pixelStep < 0 ? (area.region.width - 1) * destination.pixelStep : 0;
    return {destination.origin + toLowest, area.region.height, area.region.width * step, destination.rowStep};
}

int BindFrame(const TrueSenseCall& call, const PixelLayout& layout, const FrameRules& rules,
              TrueSenseFrame& frame) noexcept {
    if (call.exchange ? !call.exchange->IsComplete() : !call.src || !call.dst) return KvxResult_NullPointer;
    if (call.grid >= kTileSize * kTileSize) return KvxResult_InvalidArgument;
    if (call.roi.width == 0 || call.roi.height == 0) return KvxResult_NoMemory;  // as for a plane that cannot be made
    if (!IsSupported(call.pixelDepth, rules.oddDepths) || !HasRegion(call, rules.margin))
        return KvxResult_InvalidArgument;

    frame.params = call.params ? *call.params : s_defaults;
    const tagTrueSenseParam& params = frame.params;
    frame.area = AreaOf(call, params, rules.margin);
    frame.exchange = call.exchange;
    frame.source = SourceOf(call, params, frame.area);
    if (!BindDestination(call, layout, frame)) return KvxResult_InvalidArgument;
    frame.matrix = {params.RR, params.RG, params.RB, params.GR, params.GG, params.GB, params.BR, params.BG, params.BB};
    frame.applyMatrix = frame.matrix != s_identity;
    const uint16_t* table = params.toneTable ? params.toneTable : Tonescale12Table12.data();
    frame.outputShift = OutputShift(call, params);
    for (size_t i = 0; i < frame.tone.size(); ++i) frame.tone[i] = ToneValue(table[i], frame.outputShift);
    return KvxResult_Success;
}

/** Mirrored frames are written backwards, too: the picture keeps the source's orientation. */
bool BindDestination(const TrueSenseCall& call, const PixelLayout& layout, TrueSenseFrame& frame) noexcept {
    if (call.exchange) {
        frame.destination = {nullptr, 0, 0, call.dstSampleSize, false};
        return true;
    }
    const size_t pixelBytes = (layout.withAlpha ? 4 : 3) * call.dstSampleSize;
    if (!HoldsRow(call.dstLineStep, call.roi.width * uint64_t{pixelBytes})) return false;
    auto rowStep = ptrdiff_t{call.dstLineStep}, pixelStep = static_cast<ptrdiff_t>(pixelBytes);
    if (call.dstLineStep < 0) {  // deliberate: a negative line step flips both directions
        rowStep = -rowStep;
        pixelStep = -pixelStep;
    }
    auto* origin = static_cast<uint8_t*>(call.dst);
    if (frame.params.verMirrored) {
        origin += static_cast<ptrdiff_t>(call.roi.height - 1) * rowStep;
        rowStep = -rowStep;
    }
    if (frame.params.horMirrored) {
        origin += static_cast<ptrdiff_t>(call.roi.width - 1) * pixelStep;
        pixelStep = -pixelStep;
    }
    frame.destination = {origin, rowStep, pixelStep, call.dstSampleSize, layout.bgrOrder};
    return true;
}

}  // namespace kvx
