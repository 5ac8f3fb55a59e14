#include "KvxBayer/BayerFlat.h"

#include "KvxBayer/BayerConversion.h"
#include "KvxDemosaicing/KvxBayer.h"

namespace kvx {

uint32_t ConvertBayerFlat(const BayerJob& job, int algType) noexcept {
    std::unique_ptr<DemosaicingIPP> interpolator;
    switch (algType) {
        case KvxBayerAlgorithm_IPP:
            interpolator = DemosaicingIPP::Create(job.sampleSize);
            break;
        case KvxBayerAlgorithm_Bilinear:
        case KvxBayerAlgorithm_EdgeAware:
            break;
        default:
            return KvxResult_Success;
    }
    return KvxResult_Of(KvxComponentType_Bayer, ConvertBayer(job, algType, interpolator.get()));
}

}  // namespace kvx
