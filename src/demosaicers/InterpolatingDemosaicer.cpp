#include "demosaicers/InterpolatingDemosaicer.h"

#include <algorithm>
#include <new>

namespace kvx {

template <class T>
void InterpolatingDemosaicer<T>::CleanMemory() noexcept {
    m_bound = Bound::Nothing;
    m_workspaces.clear();
    m_reservedWidth = 0;
}

template <class T>
bool InterpolatingDemosaicer<T>::IsThis(IDemosaicing* other) noexcept {
    return other == this;
}

template <class T>
void InterpolatingDemosaicer<T>::SetOutputPixelType(bool withAlpha, bool bgrOrder) noexcept {
    m_withAlpha = withAlpha;
    m_bgrOrder = bgrOrder;
}

template <class T>
int InterpolatingDemosaicer<T>::Init(const T* src, _KvxRect roi, _KvxSize size, int srcLineStep, int pixelDepth, T* dst,
                                     int dstLineStep, unsigned char grid, tagTrueSenseParam* params) noexcept {
    return Bind({src, sizeof(T), roi, size, srcLineStep, pixelDepth, dst, sizeof(T), dstLineStep, grid, params,
                 m_withAlpha, m_bgrOrder},
                Bound::Samples);
}

template <class T>
int InterpolatingDemosaicer<T>::Calculate() noexcept {
    return m_bound == Bound::Samples ? Convert() : static_cast<int>(KvxResult_InvalidArgument);
}

template <class T>
int InterpolatingDemosaicer<T>::InitRGB(const unsigned short* src, _KvxRect roi, _KvxSize size, int srcLineStep,
                                        int pixelDepth, unsigned char* dst, int dstLineStep, unsigned char grid,
                                        tagTrueSenseParam* params) noexcept {
    return Bind({src, sizeof(uint16_t), roi, size, srcLineStep, pixelDepth, dst, sizeof(uint8_t), dstLineStep, grid,
                 params, m_withAlpha, m_bgrOrder},
                Bound::Bytes);
}

template <class T>
int InterpolatingDemosaicer<T>::CalculateRGB() noexcept {
    return m_bound == Bound::Bytes ? Convert() : static_cast<int>(KvxResult_InvalidArgument);
}

template <class T>
int InterpolatingDemosaicer<T>::Bind(const TrueSenseCall& call, Bound bound) noexcept {
    m_bound = Bound::Nothing;
    int result = BindFrame(call, m_oddDepths, m_frame);
    if (result == KvxResult_Success) result = ReserveWorkspaces();
    if (result == KvxResult_Success) result = Reserve();
    if (result == KvxResult_Success) m_bound = bound;
    return result;
}

template <class T>
int InterpolatingDemosaicer<T>::ReserveWorkspaces() noexcept {
    const auto threads = static_cast<size_t>(std::min(m_frame.threads, (m_frame.area.height - 1) / m_bandRows + 1));
    if (m_workspaces.size() == threads && m_reservedWidth == m_frame.area.width) return KvxResult_Success;
    m_reservedWidth = 0;
    try {
        m_workspaces.resize(threads);
    } catch (const std::bad_alloc&) {
        return KvxResult_NoMemory;
    }
    for (TrueSenseWorkspace& workspace : m_workspaces)
        if (!workspace.Reserve(m_frame.area.width)) return KvxResult_NoMemory;
    m_reservedWidth = m_frame.area.width;
    return KvxResult_Success;
}

template class InterpolatingDemosaicer<unsigned char>;
template class InterpolatingDemosaicer<unsigned short>;

}  // namespace kvx
