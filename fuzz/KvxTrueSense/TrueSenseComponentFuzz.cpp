// A TrueSense component through a few frames with any records and parameters.
#include "KvxDemosaicing/KvxTrueSense.h"
#include "support/Images.h"
#include "support/InstructionSet.h"

using namespace kvx::fuzz;

namespace {

void SetAnyParameter(Input& input, KvxComponent* parameters) {
    _KvxStParam param{};
    const uint32_t index = input.Below(KvxComponent_GetParamCount(parameters));
    Require(KvxComponent_GetParamByIdx(parameters, index, &param) == 0, "every index has a parameter");
    const uint32_t result =
        param.type == KvxParamType_Int
            ? KvxComponent_SetParamInt(parameters, param.name, input.Flag() ? input.Below(40) : input.Take<int64_t>())
            : KvxComponent_SetParamFloat(parameters, param.name,
                                         input.Flag() ? input.Below(64) / 16.0 - 1 : input.Take<double>());
    RequireOneOf(result, {0, 0x80000004});
}

void ConvertAny(Input& input, KvxTrueSense* component) {
    constexpr uint32_t destinations[] = {KvxFormat_RGB8,  KvxFormat_BGR8,  KvxFormat_RGBa8,
                                         KvxFormat_BGRa8, KvxFormat_RGB12, KvxFormat_BGR16};
    Image src, dst;
    src.record.pixelType = DrawFormat(input, 4);
    src.record.pixelDepth = input.Below(8) ? 8 + 2 * input.Below(4) : input.Take<uint32_t>();
    src.record.width = DrawLength(input);
    src.record.height = DrawLength(input);
    const uint64_t srcRow = uint64_t{src.record.width} * SampleBytes(src.record.pixelType);
    src.record.lineStep = DrawStep(input, srcRow);
    dst.record.pixelType = input.Below(8) ? input.OneOf(destinations) : DrawFormat(input, 2);
    dst.record.width = input.Take<uint32_t>();  // not looked at
    const bool hasAlpha = dst.record.pixelType == KvxFormat_RGBa8 || dst.record.pixelType == KvxFormat_BGRa8;
    const uint64_t dstRow = uint64_t{src.record.width} * (hasAlpha ? 4 : 3) * SampleBytes(dst.record.pixelType);
    dst.record.lineStep = DrawStep(input, dstRow);
    if (!src.Allocate(input, src.record.height, srcRow)) return;
    if (!dst.Allocate(input, src.record.height, dst.record.lineStep)) return;
    Convert(
        input, src, dst, {0, 0x80060007, 0x80060008, 0x80060009},
        [&] { return KvxTrueSense_ConvertImage(component, &src.record, &dst.record); },
        [=](size_t place) { return place < dstRow && !(hasAlpha && place % 4 == 3); });
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    Input input(data, size);
    UseAnyInstructionSet(input);
    KvxTrueSense* component = KvxTrueSense_CreateComponent();
    KvxComponent* parameters = KvxTrueSense_GetComponent(component);
    for (int frame = 0; frame < 4 && !input.IsEmpty(); ++frame) {
        KvxComponent_SetParamInt(parameters, "TrueSenseAlgType", input.Below(8));
        for (uint32_t i = input.Below(6); i > 0; --i) SetAnyParameter(input, parameters);
        _KvxImage src{}, dst{};
        switch (input.Below(8)) {
            case 0:
                KvxTrueSense_ReleaseData(component);
                break;
            case 1:
                src.pixelType = DrawFormat(input, 4);
                RequireOneOf(KvxTrueSense_AllocData(component, &src, &dst), {0, 0x80060007, 0x80060009});
                break;
            default:
                ConvertAny(input, component);
        }
    }
    KvxTrueSense_DeleteComponent(component);
    return 0;
}
