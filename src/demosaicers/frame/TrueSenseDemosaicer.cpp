#include "demosaicers/frame/TrueSenseDemosaicer.h"

#include <optional>

namespace kvx {

template <class T>
void TrueSenseDemosaicer<T>::CleanMemory() noexcept {
    m_call = {};
}

template <class T>
bool TrueSenseDemosaicer<T>::IsThis(IDemosaicing* other) noexcept {
    return other == this;
}

template <class T>
void TrueSenseDemosaicer<T>::SetOutputPixelType(bool withAlpha, bool bgrOrder) noexcept {
    m_layout = {withAlpha, bgrOrder};
}

template <class T>
int TrueSenseDemosaicer<T>::Init(const T* src, _KvxRect roi, _KvxSize size, int srcLineStep, int pixelDepth, T* dst,
                                 int dstLineStep, unsigned char grid, tagTrueSenseParam* params) noexcept {
    return Bind({src, sizeof *src, roi, size, srcLineStep, pixelDepth, dst, sizeof *dst, dstLineStep, grid, params});
}

template <class T>
int TrueSenseDemosaicer<T>::Calculate() noexcept {
    return ConvertBound(sizeof(T), sizeof(T));
}

template <class T>
int TrueSenseDemosaicer<T>::InitRGB(const unsigned short* src, _KvxRect roi, _KvxSize size, int srcLineStep,
                                    int pixelDepth, unsigned char* dst, int dstLineStep, unsigned char grid,
                                    tagTrueSenseParam* params) noexcept {
    return Bind({src, sizeof *src, roi, size, srcLineStep, pixelDepth, dst, sizeof *dst, dstLineStep, grid, params});
}

template <class T>
int TrueSenseDemosaicer<T>::CalculateRGB() noexcept {
    return ConvertBound(sizeof(uint16_t), sizeof(uint8_t));
}

template <class T>
int TrueSenseDemosaicer<T>::Run(const TrueSenseCall& call, const PixelLayout& layout) noexcept {
    m_layout = layout;
    const int result = Bind(call);
    return result == KvxResult_Success ? ConvertBound(call.srcSampleSize, call.dstSampleSize) : result;
}

template <class T>
int TrueSenseDemosaicer<T>::Bind(const TrueSenseCall& call) noexcept {
    m_call = {};
    int result = BindFrame(call, m_layout, m_rules, m_frame);
    if (result == KvxResult_Success) result = Reserve();
    if (result == KvxResult_Success) m_call = call;
    return result;
}

/** The layout may have changed since the frame was bound, and the destination may share memory with the source. */
template <class T>
int TrueSenseDemosaicer<T>::ConvertBound(size_t srcSampleSize, size_t dstSampleSize) noexcept {
    const bool isBound = (m_call.src || m_call.exchange) && m_call.srcSampleSize == srcSampleSize &&
                         m_call.dstSampleSize == dstSampleSize;
    if (!isBound || !BindDestination(m_call, m_layout, m_frame)) return KvxResult_InvalidArgument;
    if (m_call.exchange) return Convert();
    const std::optional<ByteRows> rows = m_disjointSource.Take(m_frame.SourceRows(), m_frame.DestinationRows());
    if (!rows) return KvxResult_NoMemory;
    const TrueSenseSource source = m_frame.source;
    m_frame.source.origin = static_cast<const uint8_t*>(rows->data);
    m_frame.source.rowStep = rows->lineStep;
    const int result = Convert();
    m_frame.source = source;
    m_disjointSource.Release();
    return result;
}

template class TrueSenseDemosaicer<unsigned char>;
template class TrueSenseDemosaicer<unsigned short>;

}  // namespace kvx
