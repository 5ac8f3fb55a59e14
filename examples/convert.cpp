// Converts an 8-bit Bayer frame to BGR with the edge-aware algorithm, set as a component parameter.
#include <KvxDemosaicing/KvxDemosaicing.h>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <vector>

namespace {

_KvxImage MakeGrey(uint32_t pixelType, uint32_t width, uint32_t height, uint32_t bytesPerPixel,
                   std::vector<uint8_t>& pixels) {
    pixels.resize(std::size_t{width} * height * bytesPerPixel, 100);
    return KvxImage_Make(pixelType, width, height, width * bytesPerPixel, pixels.data());
}

}  // namespace

int main() {
    std::vector<uint8_t> raw, bgr;
    const _KvxImage src = MakeGrey(KvxFormat_BayerGB8, 64, 48, 1, raw);
    _KvxImage dst = MakeGrey(KvxFormat_BGR8, 64, 48, 3, bgr);

    const std::unique_ptr<KvxBayer, decltype(&KvxBayer_DeleteComponent)> bayer(KvxBayer::CreateComponent(),
                                                                               KvxBayer_DeleteComponent);
    uint32_t result = bayer->GetComponent()->SetParamInt("BayerAlgType", KvxBayerAlgorithm_EdgeAware);
    if (!KvxResult_Failed(result)) result = KvxBayer_ConvertImage(bayer.get(), &src, &dst);
    if (KvxResult_Failed(result)) {
        std::fprintf(stderr, "0x%08X: %s\n", result, KvxResult_Text(result));
        return EXIT_FAILURE;
    }
    std::printf("%d %d %d\n", bgr[0], bgr[1], bgr[2]);
}
