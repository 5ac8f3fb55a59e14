// The flat TrueSense functions with any region, steps (negative ones, too), parameters and tone table.
#include <climits>
#include <cstdlib>

#include "KvxDemosaicing/KvxTrueSenseFlat.h"
#include "support/Images.h"
#include "support/InstructionSet.h"

using namespace kvx::fuzz;

namespace {

struct Arguments {
    _KvxRect roi{};
    _KvxSize size{};
    int srcStep = 0, depth = 0, dstStep = 0;
    uint8_t grid = 0;
    tagTrueSenseParam* params = nullptr;
    int algorithm = 0;
    bool temporary = false;
};

struct Kind {
    uint32_t srcSample, pixelBytes;
    uint32_t (*call)(const Arguments&, const void*, void*);
};

template <auto function, class Source, class Destination>
uint32_t Call(const Arguments& a, const void* src, void* dst) {
    return function(static_cast<const Source*>(src), a.roi, a.size, a.srcStep, a.depth, static_cast<Destination*>(dst),
                    a.dstStep, a.grid, a.params, a.algorithm, a.temporary);
}

constexpr Kind s_kinds[] = {
    {1, 3, Call<TrueSenseToRGB_8u_C1C3R, uint8_t, uint8_t>},
    {1, 4, Call<TrueSenseToBGR_8u_C1C4R, uint8_t, uint8_t>},
    {2, 3, Call<TrueSenseToBGR_16u8u_C1C3R, uint16_t, uint8_t>},
    {2, 4, Call<TrueSenseToRGB_16u8u_C1C4R, uint16_t, uint8_t>},
    {2, 6, Call<TrueSenseToRGB_16u_C1C3R, uint16_t, uint16_t>},
    {2, 8, Call<TrueSenseToBGR_16u_C1C4R, uint16_t, uint16_t>},
};

/** Defaults, of which a few 8-byte fields are any bits. */
void DrawParams(Input& input, tagTrueSenseParam& params) {
    TrueSense_DefaultValues(&params);
    for (uint32_t i = input.Below(8); i > 0; --i) {
        const auto field = input.Below(sizeof params / 8 - 1);  // the last one is a pointer
        const auto value = input.Flag() ? uint64_t{input.Below(40)} : input.Take<uint64_t>();
        std::memcpy(reinterpret_cast<uint8_t*>(&params) + 8 * field, &value, sizeof value);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    Input input(data, size);
    UseAnyInstructionSet(input);
    const Kind kind = input.OneOf(s_kinds);
    Arguments a;
    a.size = {DrawLength(input), DrawLength(input)};
    a.roi = {0, 0, a.size.width, a.size.height};
    if (input.Flag()) a.roi = {input.Below(40), input.Below(40), DrawLength(input), DrawLength(input)};
    a.depth = input.Below(8) ? static_cast<int>(8 + input.Below(9)) : input.Take<int>();
    a.grid = input.Below(8) ? static_cast<uint8_t>(input.Below(16)) : input.Take<uint8_t>();
    a.algorithm = input.Below(8) ? static_cast<int>(input.Below(5)) : input.Take<int>();
    a.temporary = input.Flag();
    const bool upwards = input.Below(4) == 0, backwards = input.Below(4) == 0;

    tagTrueSenseParam params{};
    GuardedBuffer tone(KVX_TONE_TABLE_SIZE * sizeof(uint16_t));
    if (input.Flag()) {
        DrawParams(input, params);
        if (input.Flag()) {
            input.Fill(tone.Data(), tone.Size());
            params.toneTable = reinterpret_cast<const uint16_t*>(tone.Data());
        }
        a.params = &params;
    }

    const uint64_t srcRow = uint64_t{a.size.width} * kind.srcSample, dstRow = uint64_t{a.roi.width} * kind.pixelBytes;
    Image src, dst;
    src.record.lineStep = DrawStep(input, srcRow);
    dst.record.lineStep = DrawStep(input, dstRow);
    if (src.record.lineStep > INT_MAX || dst.record.lineStep > INT_MAX) return 0;  // would be other, negative steps
    if (!src.Allocate(input, a.size.height, srcRow)) return 0;
    if (!dst.Allocate(input, a.roi.height, dst.record.lineStep)) return 0;

    auto *from = static_cast<uint8_t*>(src.record.data), *to = static_cast<uint8_t*>(dst.record.data);
    a.srcStep = static_cast<int>(src.record.lineStep);
    a.dstStep = static_cast<int>(dst.record.lineStep);
    if (upwards) {
        if (from && src.buffer->Size() > 0) from += uint64_t{a.size.height - 1} * src.record.lineStep;
        a.srcStep = -a.srcStep;
    }
    if (backwards) {
        if (to && dst.buffer->Size() >= dstRow && dstRow > 0) to += dstRow - kind.pixelBytes;
        a.dstStep = -a.dstStep;
    }
    Convert(
        input, src, dst, {0, 0x80060007, 0x80060008, 0x80060009}, [&] { return kind.call(a, from, to); },
        [=](size_t place) { return place < dstRow; });
    return 0;
}
