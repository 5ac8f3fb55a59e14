#include "demosaicers/frame/TrueSenseDemosaicer.h"

namespace kvx {

template <class T>
void TrueSenseDemosaicer<T>::CleanMemory() noexcept {
    m_bound = Bound::Nothing;
}

template <class T>
bool TrueSenseDemosaicer<T>::IsThis(IDemosaicing* other) noexcept {
    return other == this;
}

template <class T>
void TrueSenseDemosaicer<T>::SetOutputPixelType(bool withAlpha, bool bgrOrder) noexcept {
    m_withAlpha = withAlpha;
    m_bgrOrder = bgrOrder;
}

template <class T>
int TrueSenseDemosaicer<T>::Init(const T* src, _KvxRect roi, _KvxSize size, int srcLineStep, int pixelDepth, T* dst,
                                 int dstLineStep, unsigned char grid, tagTrueSenseParam* params) noexcept {
    return Bind({src, sizeof(T), roi, size, srcLineStep, pixelDepth, dst, sizeof(T), dstLineStep, grid, params,
                 m_withAlpha, m_bgrOrder},
                Bound::Samples);
}

template <class T>
int TrueSenseDemosaicer<T>::Calculate() noexcept {
    return m_bound == Bound::Samples ? Convert() : static_cast<int>(KvxResult_InvalidArgument);
}

template <class T>
int TrueSenseDemosaicer<T>::InitRGB(const unsigned short* src, _KvxRect roi, _KvxSize size, int srcLineStep,
                                    int pixelDepth, unsigned char* dst, int dstLineStep, unsigned char grid,
                                    tagTrueSenseParam* params) noexcept {
    return Bind({src, sizeof(uint16_t), roi, size, srcLineStep, pixelDepth, dst, sizeof(uint8_t), dstLineStep, grid,
                 params, m_withAlpha, m_bgrOrder},
                Bound::Bytes);
}

template <class T>
int TrueSenseDemosaicer<T>::CalculateRGB() noexcept {
    return m_bound == Bound::Bytes ? Convert() : static_cast<int>(KvxResult_InvalidArgument);
}

template <class T>
int TrueSenseDemosaicer<T>::Bind(const TrueSenseCall& call, Bound bound) noexcept {
    m_bound = Bound::Nothing;
    int result = BindFrame(call, m_oddDepths, m_frame);
    if (result == KvxResult_Success) result = Reserve();
    if (result == KvxResult_Success) m_bound = bound;
    return result;
}

template class TrueSenseDemosaicer<unsigned char>;
template class TrueSenseDemosaicer<unsigned short>;

}  // namespace kvx
