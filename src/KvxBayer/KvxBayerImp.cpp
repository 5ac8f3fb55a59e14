#include "KvxBayer/KvxBayerImp.h"

#include <new>

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
    const auto pattern = PatternOf(src->pixelType);
    if (!pattern) return Result(KvxResult_InvalidArgument);
    const int algorithm = Algorithm();
    if (Is8Bit(src->pixelType))
        m_demosaicing16.reset();
    else
        m_demosaicing8.reset();
    if (algorithm == KvxBayerAlgorithm_IPP) {
        DemosaicingIPP* interpolator = Interpolator(*src);
        return Result(interpolator ? interpolator->Convert(dst, src) : uint32_t{KvxResult_NoMemory});
    }
    return Result(ConvertBayer(*src, *dst, *pattern, OrderOf(*dst), RuleOf(algorithm), {.form = BayerOutput::Samples}));
}

uint32_t KvxBayerImp::AllocData(const _KvxImage* src, _KvxImage* dst) noexcept {
    if (!src || !dst || !IsBayer(src->pixelType)) return Result(KvxResult_InvalidArgument);
    ReleaseData();
    if (!PatternOf(src->pixelType)) return Result(KvxResult_InvalidArgument);
    if (Algorithm() == KvxBayerAlgorithm_IPP && !Interpolator(*src)) return Result(KvxResult_NoMemory);
    return KvxResult_Success;
}

void KvxBayerImp::ReleaseData() noexcept {
    m_demosaicing8.reset();
    m_demosaicing16.reset();
}

DemosaicingIPP* KvxBayerImp::Interpolator(const _KvxImage& src) noexcept {
    if (Is8Bit(src.pixelType)) {
        if (!m_demosaicing8) m_demosaicing8.reset(new (std::nothrow) DemosaicingIPP_8);
        return m_demosaicing8.get();
    }
    if (!m_demosaicing16) m_demosaicing16.reset(new (std::nothrow) DemosaicingIPP_16);
    return m_demosaicing16.get();
}

}  // namespace kvx
