// The noise-reducing pipeline with any parameters, in buffers of exactly the sizes that it asks for.
#include <climits>

#include "KvxDemosaicing/KvxPipeline.h"
#include "demosaicers/denoising/PipelineParams.h"
#include "support/GuardedBuffer.h"

using namespace kvx::fuzz;

namespace {

constexpr uint32_t kLogBytes = 4096;  // hold what any call writes

int32_t DrawLength(Input& input) {
    const uint32_t kind = input.Below(16);
    if (kind == 0) return input.Take<int32_t>();
    return static_cast<int32_t>(kind == 1 ? input.Below(70) : 2 * input.Below(28));
}

/** Real numbers of which some are any bits: NaN, infinity, huge and tiny. */
template <size_t count>
void Spoil(Input& input, float (&values)[count]) {
    for (float& value : values)
        if (input.Below(4) == 0) value = input.Flag() ? input.Take<float>() : static_cast<float>(input.Below(64)) / 8;
}

/** Those of a frame by default, of which some are anything. */
void DrawParameters(Input& input, ImageProcessParam& param) {
    tagTrueSenseParam defaults;
    TrueSense_DefaultValues(&defaults);
    param = kvx::PipelineParamOf({param.width, param.height, 0, 0, param.width, param.height}, defaults);
    param.cfaPattern = input.Below(8) ? static_cast<int32_t>(input.Below(4)) : input.Take<int32_t>();
    param.reserved = input.Take<int32_t>();
    param.monoEnable = static_cast<int32_t>(input.Below(3));
    param.darkFloor = input.Below(4) ? static_cast<int32_t>(input.Below(300)) : input.Take<int32_t>();
    float gains[6] = {1, 1, 1, 1, 1, 20};
    Spoil(input, gains);
    param.redBalance = gains[0], param.greenBalance = gains[1], param.blueBalance = gains[2];
    param.panBalance = gains[3], param.globalGain = gains[4], param.analogGain = gains[5];
    for (int32_t* radius : {param.panRadius, param.colorRadius})
        for (int i = 0; i < 3; ++i)
            radius[i] = input.Below(8) ? static_cast<int32_t>(input.Below(3)) : input.Take<int32_t>();
    for (auto* line : {&param.ISOAnalogGain, &param.ISOPanSlope, &param.ISOPanIntercept, &param.ISOColorSlope,
                       &param.ISOColorIntercept})
        Spoil(input, *line);
    for (auto* sigma : {&param.panSigma, &param.colorSigma}) Spoil(input, *sigma);
    Spoil(input, param.colorMatrix);
    Spoil(input, param.sharpness);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    Input input(data, size);
    ImageProcessParam param{};
    ImageProcessMemory memory{};
    param.width = DrawLength(input);
    param.height = DrawLength(input);
    const GuardedBuffer log(kLogBytes);
    char* const text = input.Below(8) ? reinterpret_cast<char*>(log.Data()) : nullptr;
    param.log = text;

    memory.mode = 1;
    const int32_t total = Api_ImageProcess(&param, &memory);
    const int64_t n = param.width > 0 && param.height > 0 ? int64_t{param.width} * param.height : 0;
    if (n > 4096) return 0;
    Require(total == 19 * n + 20 * (n ? int64_t{param.width / 2} * (param.height / 2) : 0), "the sum of the sizes");

    const bool atEnd = input.Below(4) != 0;
    const Edge edge = atEnd ? Edge::End : Edge::Begin;
    const GuardedBuffer work(memory.workSize, edge), staging(memory.stagingSize, edge), lowPan(memory.lowPanSize, edge),
        full0(memory.full0Size, edge), full1(memory.full1Size, edge), full2(memory.full2Size, edge),
        pan(memory.panSize, edge), output(static_cast<size_t>(3 * n), edge);
    GuardedBuffer raw(static_cast<size_t>(2 * n), edge), tone(4096 * sizeof(uint16_t));
    memory.work = work.Data(), memory.staging = staging.Data(), memory.lowPan = lowPan.Data();
    memory.full0 = full0.Data(), memory.full1 = full1.Data(), memory.full2 = full2.Data(), memory.pan = pan.Data();
    memory.mode = input.Below(16) ? 0 : 2;
    DrawParameters(input, param);
    param.log = text;
    if (input.Below(4) == 0) {
        input.Fill(tone.Data(), tone.Size());
        param.toneScale = reinterpret_cast<const uint16_t*>(tone.Data());
    }
    param.input = reinterpret_cast<const uint16_t*>(raw.Data());
    param.output = output.Data();
    input.Fill(raw.Data(), raw.Size());
    raw.MakeReadOnly();
    tone.MakeReadOnly();
    const auto before = output.Content();
    const int32_t result = Api_ImageProcess(&param, &memory);
    Require(result == 0 || result == -1, "a documented result");
    Require(result == 0 || output.Content() == before, "a failure leaves the output as it was");
    return 0;
}
