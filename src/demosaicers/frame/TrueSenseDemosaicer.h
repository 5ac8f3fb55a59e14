/** The base of all TrueSense demosaicers: it implements their interfaces and keeps the arguments of a call. */
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

    /** A whole conversion: the three calls above in one. The call's source has samples T, or words for its RGB form. */
    int Run(const TrueSenseCall& call, const PixelLayout& layout) noexcept;

protected:
    explicit TrueSenseDemosaicer(const FrameRules& rules) : m_rules(rules) {}

    /** Makes working memory ready for Frame(). @return 0, 7 or 9 */
    virtual int Reserve() noexcept = 0;
    /** Converts Frame(). @return 0, 7 or 9 */
    virtual int Convert() noexcept = 0;

    const TrueSenseFrame& Frame() const {
        return m_frame;
    }

private:
    int Bind(const TrueSenseCall& call) noexcept;
    int ConvertBound(size_t srcSampleSize, size_t dstSampleSize) noexcept;

    FrameRules m_rules;
    PixelLayout m_layout{};
    TrueSenseCall m_call{};  // what Init() or InitRGB() was given; no source after a refusal
    TrueSenseFrame m_frame{};
    DisjointSource m_disjointSource;
};

}  // namespace kvx
