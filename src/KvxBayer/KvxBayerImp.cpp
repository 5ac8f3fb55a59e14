#include "KvxBayer/KvxBayerImp.h"

#include "KvxBayer/BayerConversion.h"
#include "framework/PixelFormats.h"

namespace kvx {
namespace {

constexpr uint32_t Result(uint32_t code) {
    return KvxResult_Of(KvxComponentType_Bayer, code);
}

}  // namespace

KvxBayerImp::KvxBayerImp() : KvxComponentImp(KvxComponentType_Bayer) {
    AddParam("BayerAlgType", 0, 0, 4, &m_bayerAlgType);
    AddParam("NoRealloc", 0, 0, 1, &m_noRealloc);
}

KvxBayerImp::~KvxBayerImp() = default;

KvxComponent* KvxBayerImp::GetComponent() noexcept {
    return this;
}

int KvxBayerImp::Algorithm() noexcept {
    int64_t algorithm = 0;
    if (KvxResult_Failed(GetParamInt("BayerAlgType", &algorithm))) return KvxBayerAlgorithm_Bilinear;
    const bool known = algorithm >= KvxBayerAlgorithm_Bilinear && algorithm <= KvxBayerAlgorithm_EdgeAware;
    return known ? static_cast<int>(algorithm) : KvxBayerAlgorithm_Bilinear;
}

uint32_t KvxBayerImp::ConvertImage(const _KvxImage* src, _KvxImage* dst) noexcept {
    if (!src || !dst) return Result(KvxResult_InvalidArgument);
    const int algorithm = Algorithm();
    const int code = PixelTypeToBayerType(src->pixelType, algorithm, IsBlueFirst(dst->pixelType));
    if (code == -1 || algorithm == KvxBayerAlgorithm_IPP) return Result(KvxResult_InvalidArgument);
    return Result(ConvertBayer(*src, *dst, code, {.form = BayerOutput::Samples}));
}

uint32_t KvxBayerImp::AllocData(const _KvxImage* src, _KvxImage* dst) noexcept {
    if (!src || !dst) return Result(KvxResult_InvalidArgument);
    ReleaseData();
    const int algorithm = Algorithm();
    const bool convertible = PixelTypeToBayerType(src->pixelType, algorithm, false) != -1;
    return Result(convertible && algorithm != KvxBayerAlgorithm_IPP ? KvxResult_Success : KvxResult_InvalidArgument);
}

void KvxBayerImp::ReleaseData() noexcept {}

}  // namespace kvx
