/** The TrueSense component. */
#pragma once

#include <memory>

#include "demosaicers/frame/TrueSenseDemosaicer.h"
#include "framework/KvxComponentImp.h"

namespace kvx {

class KvxTrueSenseImp final : public KvxTrueSense, public KvxComponentImp {
public:
    KvxTrueSenseImp();
    ~KvxTrueSenseImp() override;

    KvxComponent* GetComponent() noexcept override;
    uint32_t ConvertImage(const _KvxImage* src, _KvxImage* dst) noexcept override;
    uint32_t AllocData(const _KvxImage* src, _KvxImage* dst) noexcept override;
    void ReleaseData() noexcept override;

    const tagTrueSenseParam& Params() const noexcept {
        return m_params;
    }
    /** ConvertImage() with these parameters and this algorithm; the component's own stay as they are. */
    uint32_t ConvertImageWith(const _KvxImage* src, _KvxImage* dst, const tagTrueSenseParam& params,
                              int64_t algorithm) noexcept;
    /** The same for a frame whose rows the caller exchanges. */
    uint32_t ConvertRows(const _KvxImage& frame, bool isBytes, const tagTrueSenseParam& params, int64_t algorithm,
                         const RowExchange& exchange) noexcept;

private:
    template <class T>
    static uint32_t Select(std::unique_ptr<TrueSenseDemosaicer<T>>& demosaicer, int64_t algorithm) noexcept;

    int64_t m_trueSenseAlgType = 0;
    int64_t m_noRealloc = 0;  // never read: both components have the parameter
    tagTrueSenseParam m_params;
    // Of the two, the one that the last frame needed.
    std::unique_ptr<TrueSenseDemosaicer<unsigned char>> m_demosaicer8;
    std::unique_ptr<TrueSenseDemosaicer<unsigned short>> m_demosaicer16;
};

}  // namespace kvx
