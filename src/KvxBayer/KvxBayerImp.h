/** The Bayer component. */
#pragma once

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

    int64_t m_bayerAlgType = 0;
    int64_t m_noRealloc = 0;  // no operation reads it: it is there so that both components have the parameter
};

}  // namespace kvx
