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

private:
    /** "BayerAlgType", with 0 for what names no algorithm or cannot be read. */
    int Algorithm() noexcept;
    /** The interpolator for the source's sample width, made when there is none; null without memory. */
    DemosaicingIPP* Interpolator(const _KvxImage& src) noexcept;

    int64_t m_bayerAlgType = 0;
    int64_t m_noRealloc = 0;  // no operation reads it: it is there so that both components have the parameter

    // At most one of them: the interpolator of the frames' sample width, kept from frame to frame.
    std::unique_ptr<DemosaicingIPP_8> m_demosaicing8;
    std::unique_ptr<DemosaicingIPP_16> m_demosaicing16;
};

}  // namespace kvx
