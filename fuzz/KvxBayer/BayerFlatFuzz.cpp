// The flat Bayer functions with arbitrary arguments.
#include "KvxDemosaicing/KvxBayer.h"
#include "KvxDemosaicing/KvxBayerFlat.h"
#include "support/Images.h"
#include "support/InstructionSet.h"

using namespace kvx::fuzz;

namespace {

struct Arguments {
    _KvxRect roi{};
    _KvxSize size{};
    int srcStep = 0, depth = 0, dstStep = 0;
    uint8_t pattern = 0;
    int algorithm = 0;
};

struct Kind {
    uint32_t srcSample, dstSample, slotBytes;
    uint32_t (*call)(const Arguments&, const void*, void*);
};

template <auto function, class Source, class Destination>
uint32_t Call(const Arguments& a, const void* src, void* dst) {
    return function(static_cast<const Source*>(src), a.roi, a.size, a.srcStep, a.depth, static_cast<Destination*>(dst),
                    a.dstStep, a.pattern, a.algorithm);
}

constexpr Kind s_kinds[] = {
    {1, 1, 3, Call<BayerToRGB_8u_C1C3R, uint8_t, uint8_t>},
    {1, 1, 3, Call<BayerToBGR_8u_C1C4R, uint8_t, uint8_t>},
    {2, 2, 6, Call<BayerToBGR_16u_C1C3R, uint16_t, uint16_t>},
    {2, 2, 6, Call<BayerToRGB_16u_C1C4R, uint16_t, uint16_t>},
    {2, 1, 3, Call<BayerToRGB_16u8u_C1C3R, uint16_t, uint8_t>},
    {2, 1, 3, Call<BayerToBGR_16u8u_C1C3R, uint16_t, uint8_t>},
    {2, 1, 4, Call<BayerToRGB_16u8u_C1C4R, uint16_t, uint8_t>},
    {2, 1, 4, Call<BayerToBGR_16u8u_C1C4R, uint16_t, uint8_t>},
    {1, 1, 4, Call<BayerToBGRA_8u_C1C4R, uint8_t, uint8_t>},
    {2, 1, 4, Call<BayerToRGBA_16u8u_C1C4R, uint16_t, uint8_t>},
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    Input input(data, size);
    UseAnyInstructionSet(input);
    const Kind kind = input.OneOf(s_kinds);
    const bool byRecords = input.Below(4) == 0;
    Arguments a;
    Image src, dst;
    src.record.pixelType = DrawFormat(input, 3);
    dst.record.pixelType = DrawFormat(input, 2);
    a.size = {DrawLength(input), DrawLength(input)};
    a.roi = {input.Take<uint32_t>(), input.Take<uint32_t>(), a.size.width, a.size.height};
    if (input.Below(8) == 0) a.roi.width = DrawLength(input), a.roi.height = DrawLength(input);
    constexpr int depths[] = {8, 10, 12, 14, 16};
    a.depth = input.Below(8) ? input.OneOf(depths) : input.Take<int>();
    a.pattern = input.Below(8) ? static_cast<uint8_t>(input.Below(4)) : input.Take<uint8_t>();
    a.algorithm = input.Below(8) ? static_cast<int>(input.Below(3)) : input.Take<int>();

    const uint32_t srcSample = byRecords ? SampleBytes(src.record.pixelType) : kind.srcSample;
    const uint32_t dstSample = !byRecords ? kind.dstSample : srcSample == 1 ? 1 : SampleBytes(dst.record.pixelType);
    const uint64_t srcRow = uint64_t{a.size.width} * srcSample, picture = uint64_t{a.roi.width} * 3 * dstSample;
    src.record.lineStep = DrawStep(input, srcRow);
    dst.record.lineStep = DrawStep(input, byRecords ? picture : uint64_t{a.roi.width} * kind.slotBytes);
    if (!src.Allocate(input, a.size.height, srcRow)) return 0;
    if (!dst.Allocate(input, a.roi.height, dst.record.lineStep)) return 0;
    const auto convert = [&] {
        if (!byRecords) {
            a.srcStep = static_cast<int>(src.record.lineStep);
            a.dstStep = static_cast<int>(dst.record.lineStep);
            return kind.call(a, src.record.data, dst.record.data);
        }
        src.record.width = a.size.width, src.record.height = a.size.height;
        dst.record.width = a.roi.width, dst.record.height = a.roi.height;
        src.record.pixelDepth = static_cast<uint32_t>(a.depth);
        return BayerToColor(&src.record, &dst.record, a.algorithm);
    };
    const bool hasSlots = !byRecords && kind.slotBytes == 4;
    const bool isKnown = a.algorithm >= 0 && a.algorithm <= 2;  // an unknown algorithm converts nothing
    const uint64_t written = !isKnown ? 0 : hasSlots ? uint64_t{a.roi.width} * 4 : picture;
    Convert(input, src, dst, {0, 0x80050001, 0x80050007, 0x80050009}, convert,
            [=](size_t place) { return place < written; });
    return 0;
}
