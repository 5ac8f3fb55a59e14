#include "demosaicers/interpolation/InterpolatingDemosaicer.h"

#include <new>

namespace kvx {

template <class T>
void InterpolatingDemosaicer<T>::CleanMemory() noexcept {
    TrueSenseDemosaicer<T>::CleanMemory();
    m_workspaces.clear();
    m_reservedWidth = 0;
}

template <class T>
int InterpolatingDemosaicer<T>::Reserve() noexcept {
    const TrueSenseFrame& frame = this->Frame();
    const auto threads =
        static_cast<size_t>(TeamSize((frame.area.height - 1) / m_bandRows + 1, frame.params.threads_num));
    if (m_workspaces.size() == threads && m_reservedWidth == frame.area.width) return KvxResult_Success;
    m_reservedWidth = 0;
    try {
        m_workspaces.resize(threads);
    } catch (const std::bad_alloc&) {
        return KvxResult_NoMemory;
    }
    for (TrueSenseWorkspace& workspace : m_workspaces)
        if (!workspace.Reserve(frame.area.width)) return KvxResult_NoMemory;
    m_reservedWidth = frame.area.width;
    return KvxResult_Success;
}

template class InterpolatingDemosaicer<unsigned char>;
template class InterpolatingDemosaicer<unsigned short>;

}  // namespace kvx
