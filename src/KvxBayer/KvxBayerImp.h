/** The Bayer component. */
#pragma once

#include <memory>

#include "KvxBayer/ipp/DemosaicingIPP.h"
#include "KvxDemosaicing/KvxBayer.h"
#include "framework/KvxComponentImp.h"

namespace kvx {

class KvxBayerImp final : public KvxBayer, public KvxComponentImp {
public:
    KvxBayerImp();
    ~KvxBayerImp() override;

    KvxComponent* GetComponent() noexcept override;
    uint32_t ConvertImage(const _KvxImage* src, _KvxImage* dst) noexcept override;
    uint32_t AllocData(const _KvxImage* src, _KvxImage* dst) noexcept override;
    void ReleaseData() noexcept override;

    /** ConvertImage() for a frame whose rows the caller exchanges. */
    uint32_t ConvertRows(const _KvxImage& frame, const RowExchange& exchange) noexcept;

private:
    uint32_t Convert(const BayerJob& job) noexcept;
    /** "BayerAlgType"; 0 when its value is no algorithm's or cannot be read. */
    int Algorithm() noexcept;

    int64_t m_bayerAlgType = 0;
    int64_t m_noRealloc = 0;  // never read: both components have the parameter

    std::unique_ptr<DemosaicingIPP> m_interpolator;  // of algorithm 1, for the last frame's sample size
};

}  // namespace kvx
