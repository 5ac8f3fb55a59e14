// The noise-reducing pipeline with any parameters, in buffers of exactly the sizes that it asks for.
#include <climits>

#include "KvxDemosaicing/KvxPipeline.h"
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

void DrawParameters(Input& input, ImageProcessParam& param) {
    param.cfaPattern = input.Below(8) ? static_cast<int32_t>(input.Below(4)) : input.Take<int32_t>();
    param.reserved = input.Take<int32_t>();
    param.monoEnable = static_cast<int32_t>(input.Below(3));
    param.darkFloor = input.Below(4) ? static_cast<int32_t>(input.Below(300)) : input.Take<int32_t>();
    float gains[6] = {1, 1, 1, 1, 1, 20};
    Spoil(input, gains);
    param.redBalance = gains[0], param.greenBalance = gains[1], param.blueBalance = gains[2];
    param.panBalance = gains[3], param.globalGain = gains[4], param.analogGain = gains[5];
    for (int i = 0; i < 5; ++i) {
        param.ISOAnalogGain[i] = static_cast<float>(10 + 6 * i);
        param.ISOPanSlope[i] = param.ISOColorSlope[i] = static_cast<float>(i) * 0.5F;
        param.ISOPanIntercept[i] = param.ISOColorIntercept[i] = static_cast<float>(i * 40);
    }
    for (float* sigma : {param.panSigma, param.colorSigma})
        for (int i = 0; i < 3; ++i) sigma[i] = 2;
    for (int32_t* radius : {param.panRadius, param.colorRadius})
        for (int i = 0; i < 3; ++i)
            radius[i] = input.Below(8) ? static_cast<int32_t>(input.Below(3)) : input.Take<int32_t>();
    for (int i = 0; i < 9; i += 4) param.colorMatrix[i] = 1;
    for (int i = 0; i < 4; ++i) param.sharpness[i] = i == 0 ? 40.0F : 1.0F;
    Spoil(input, param.ISOAnalogGain);
    Spoil(input, param.ISOPanSlope);
    Spoil(input, param.ISOPanIntercept);
    Spoil(input, param.ISOColorSlope);
    Spoil(input, param.ISOColorIntercept);
    Spoil(input, param.panSigma);
    Spoil(input, param.colorSigma);
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
    param.log = input.Below(8) ? reinterpret_cast<char*>(log.Data()) : nullptr;

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
