#include "KvxBayer/BayerGeometry.h"

#include <climits>

#include "KvxDemosaicing/KvxResult.h"
#include "framework/PixelFormats.h"

namespace kvx {
namespace {

bool Holds(const _KvxImage& image, uint64_t bytesPerPixel) {
    return image.data && image.width <= INT_MAX && image.height <= INT_MAX && image.lineStep <= INT_MAX &&
           image.width * bytesPerPixel <= image.lineStep;
}

}  // namespace

uint32_t CheckBayerGeometry(const _KvxImage& src, const _KvxImage& dst, const BayerOutput& output) noexcept {
    const uint64_t sampleSize = Is8Bit(src.pixelType) ? 1 : 2;
    const uint64_t outputSize = output.form == BayerOutput::Samples ? sampleSize : 1;
    const bool sameSize = src.width == dst.width && src.height == dst.height;
    if (!sameSize || !Holds(src, sampleSize) || !Holds(dst, 3 * outputSize)) return KvxResult_InvalidArgument;
    return src.width == 0 || src.height == 0 ? KvxResult_ConversionFailed : KvxResult_Success;
}

}  // namespace kvx
