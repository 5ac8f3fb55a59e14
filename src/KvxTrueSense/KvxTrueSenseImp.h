/** The TrueSense component. */
#pragma once

#include <memory>

#include "KvxTrueSense/IDemConvertion.h"
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

    void SetToneTable(const uint16_t* table) noexcept {
        m_params.toneTable = table;
    }

private:
    template <class T>
    uint32_t Select(std::unique_ptr<IDemConvertion<T>>& demosaicer) noexcept;

    int64_t m_trueSenseAlgType = 0;
    int64_t m_noRealloc = 0;  // no operation reads it: it is there so that both components have the parameter
    tagTrueSenseParam m_params;
    // Of the two, the one that the last frame needed.
    std::unique_ptr<IDemConvertion<unsigned char>> m_demosaicer8;
    std::unique_ptr<IDemConvertion<unsigned short>> m_demosaicer16;
};

}  // namespace kvx
