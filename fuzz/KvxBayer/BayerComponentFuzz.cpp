// A few calls of a Bayer component with arbitrary records: nothing outside the buffers is touched, every result is
// documented, and a call that fails leaves the destination unchanged.
#include "KvxDemosaicing/KvxBayer.h"
#include "support/Images.h"
#include "support/InstructionSet.h"

using namespace kvx::fuzz;

namespace {

void ConvertAny(Input& input, KvxBayer* component) {
    Image src, dst;
    src.record.pixelType = DrawFormat(input, 3);
    src.record.pixelDepth = input.Flag() ? input.Take<uint32_t>() : input.Below(18);
    src.record.width = DrawLength(input);
    src.record.height = DrawLength(input);
    const uint64_t srcRow = uint64_t{src.record.width} * SampleBytes(src.record.pixelType);
    src.record.lineStep = DrawStep(input, srcRow);

    dst.record = src.record;
    const bool isSameSize = input.Below(8) != 0;
    dst.record.pixelType = input.Flag() ? uint32_t{KvxFormat_RGB8} : DrawFormat(input, 2);
    if (!isSameSize) dst.record.width = DrawLength(input), dst.record.height = DrawLength(input);
    const bool virtually = input.Flag();
    const uint32_t dstSample =
        SampleBytes(virtually ? src.record.pixelType : dst.record.pixelType);  // see KvxBayer::ConvertImage()
    // From 10 or 12 bits to 8 the destination has the source's size, whatever its record says.
    const bool toBytes = !virtually && (src.record.pixelType & 0xFE00) == 0x0200 &&
                         (dst.record.pixelType == KvxFormat_RGB8 || dst.record.pixelType == KvxFormat_BGR8);
    const _KvxImage& sized = toBytes ? src.record : dst.record;
    const uint64_t dstRow = uint64_t{sized.width} * 3 * dstSample;
    dst.record.lineStep = DrawStep(input, dstRow);
    if (!src.Allocate(input, src.record.height, srcRow)) return;
    if (!dst.Allocate(input, sized.height, dst.record.lineStep)) return;
    const auto convert = [&] {
        return virtually ? component->ConvertImage(&src.record, &dst.record)
                         : KvxBayer_ConvertImage(component, &src.record, &dst.record);
    };
    Convert(input, src, dst, {0, 1, 0x80050001, 0x80050007, 0x80050009}, convert,
            [=](size_t place) { return place < dstRow; });
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    Input input(data, size);
    UseAnyInstructionSet(input);
    KvxBayer* component = KvxBayer_CreateComponent();
    for (int call = 0; call < 4 && !input.IsEmpty(); ++call) {
        KvxComponent_SetParamInt(KvxBayer_GetComponent(component), "BayerAlgType", input.Below(6));
        _KvxImage src{}, dst{};
        switch (input.Below(8)) {
            case 0:
                KvxBayer_ReleaseData(component);
                break;
            case 1:
                src.pixelType = DrawFormat(input, 3);
                RequireOneOf(KvxBayer_AllocData(component, &src, &dst), {0, 0x80050007, 0x80050009});
                break;
            default:
                ConvertAny(input, component);
        }
    }
    KvxBayer_DeleteComponent(component);
    return 0;
}
