#include "KvxBayer/BayerConversion.h"

#include "KvxBayer/BayerGeometry.h"
#include "KvxBayer/BilinearWords.h"
#include "KvxBayer/LibraryConversion.h"
#include "KvxDemosaicing/KvxResult.h"

namespace kvx {

uint32_t ConvertBayer(const _KvxImage& src, const _KvxImage& dst, int code, const BayerOutput& output) noexcept {
    const uint32_t result = CheckBayerGeometry(src, dst, output);
    if (result != KvxResult_Success) return result;
    if (TakesBilinearWords(src, dst, code, output)) {
        ConvertBilinearWords(src, dst, code, output);
        return KvxResult_Success;
    }
    return ConvertByLibrary(src, dst, code, output);
}

}  // namespace kvx
