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
    const auto job = src && dst ? BayerJobOf(*src, *dst) : std::nullopt;
    return job ? Convert(*job) : Result(KvxResult_InvalidArgument);
}

uint32_t KvxBayerImp::ConvertRows(const _KvxImage& frame, const RowExchange& exchange) noexcept {
    const auto job = BayerJobOf(frame, exchange);
    if (!job) return Result(KvxResult_InvalidArgument);
    return exchange.IsComplete() ? Convert(*job) : Result(KvxResult_NullPointer);
}

uint32_t KvxBayerImp::Convert(const BayerJob& job) noexcept {
    if (m_interpolator && m_interpolator->SampleSize() != job.sampleSize) ReleaseData();
    const int algorithm = Algorithm();
    if (algorithm == KvxBayerAlgorithm_IPP && !m_interpolator) m_interpolator = DemosaicingIPP::Create(job.sampleSize);
    return Result(ConvertBayer(job, algorithm, m_interpolator.get()));
}

uint32_t KvxBayerImp::AllocData(const _KvxImage* src, _KvxImage* dst) noexcept {
    if (!src || !dst || !IsBayer(src->pixelType)) return Result(KvxResult_InvalidArgument);
    ReleaseData();
    if (!PatternOf(src->pixelType)) return Result(KvxResult_InvalidArgument);
    if (Algorithm() != KvxBayerAlgorithm_IPP) return KvxResult_Success;
    m_interpolator = DemosaicingIPP::Create(Is8Bit(src->pixelType) ? 1 : 2);
    return m_interpolator ? uint32_t{KvxResult_Success} : Result(KvxResult_NoMemory);
}

void KvxBayerImp::ReleaseData() noexcept {
    m_interpolator.reset();
}

}  // namespace kvx
