/** What all TrueSense demosaicers share: their interfaces, and latching the arguments of a call. */
#pragma once

#include <cstdint>

#include "KvxTrueSense/IDemConvertion.h"
#include "demosaicers/frame/TrueSenseFrame.h"

namespace kvx {

template <class T>
class TrueSenseDemosaicer : public IDemosaicing, public IDemConvertion<T> {
public:
    void CleanMemory() noexcept override;
    bool IsThis(IDemosaicing* other) noexcept final;

    void SetOutputPixelType(bool withAlpha, bool bgrOrder) noexcept final;
    int Init(const T* src, _KvxRect roi, _KvxSize size, int srcLineStep, int pixelDepth, T* dst, int dstLineStep,
             unsigned char grid, tagTrueSenseParam* params) noexcept final;
    int Calculate() noexcept final;
    int InitRGB(const unsigned short* src, _KvxRect roi, _KvxSize size, int srcLineStep, int pixelDepth,
                unsigned char* dst, int dstLineStep, unsigned char grid, tagTrueSenseParam* params) noexcept final;
    int CalculateRGB() noexcept final;

protected:
    explicit TrueSenseDemosaicer(OddDepths oddDepths) : m_oddDepths(oddDepths) {}

    /** Makes working memory ready for Frame(). @return 0, 7 or 9 */
    virtual int Reserve() noexcept = 0;
    /** Converts Frame(). @return 0, 7 or 9 */
    virtual int Convert() noexcept = 0;

    const TrueSenseFrame& Frame() const {
        return m_frame;
    }

private:
    enum class Bound { Nothing, Samples, Bytes };

    int Bind(const TrueSenseCall& call, Bound bound) noexcept;

    OddDepths m_oddDepths;
    bool m_withAlpha = false, m_bgrOrder = false;
    Bound m_bound = Bound::Nothing;  // which of the two pairs of calls has begun
    TrueSenseFrame m_frame{};
};

}  // namespace kvx
