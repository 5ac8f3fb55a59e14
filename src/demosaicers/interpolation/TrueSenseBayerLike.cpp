#include "demosaicers/interpolation/TrueSenseBayerLike.h"

#include <new>

#include "demosaicers/frame/PixelWriter.h"

namespace kvx {

template <class T>
void TrueSenseBayerLike<T>::CleanMemory() noexcept {
    InterpolatingDemosaicer<T>::CleanMemory();
    m_memories.clear();
    m_memoryWidth = 0;
}

template <class T>
int TrueSenseBayerLike<T>::Reserve() noexcept {
    if (const int result = InterpolatingDemosaicer<T>::Reserve(); result != KvxResult_Success) return result;
    const int width = this->Frame().area.width;
    const size_t threads = this->Workspaces().size();
    if (m_memories.size() == threads && m_memoryWidth == width) return KvxResult_Success;
    m_memoryWidth = 0;
    try {
        m_memories.resize(threads);
    } catch (const std::bad_alloc&) {
        return KvxResult_NoMemory;
    }
    for (BayerLikeMemory& memory : m_memories)
        if (!memory.Reserve(width)) return KvxResult_NoMemory;
    m_memoryWidth = width;
    return KvxResult_Success;
}

template <class T>
int TrueSenseBayerLike<T>::Convert() noexcept {
    const TrueSenseFrame& frame = this->Frame();
    const PixelWriter writer(frame);
    m_evenColour = HasBayerLikeColours(frame) ? std::nullopt : EvenColour();
    this->ForBands(0, frame.area.region.height, [&](const TrueSenseWorkspace& workspace, int begin, int end) {
        const BayerLikeMemory& memory = m_memories[&workspace - this->Workspaces().data()];
        if (!ConvertBand<int16_t>(workspace, memory, writer, begin, end))
            ConvertBand<int32_t>(workspace, memory, writer, begin, end);
    });
    return KvxResult_Success;
}

/** Rows [begin, end) of the region. @return false when Lane cannot hold the samples */
template <class T>
template <class Lane>
bool TrueSenseBayerLike<T>::ConvertBand(const TrueSenseWorkspace& workspace, const BayerLikeMemory& memory,
                                        const PixelWriter& writer, int begin, int end) const noexcept {
    const TrueSenseFrame& frame = this->Frame();
    const Area& region = frame.area.region;
    BayerLikeRows<Lane> rows(frame, workspace, memory, region.row + begin, m_evenColour);
    for (int row = begin; row < end; ++row) {
        if (!rows.Compute(region.row + row)) return false;
        writer.WriteRow(row, {workspace.Plane(0) + region.column, workspace.Plane(1) + region.column,
                              workspace.Plane(2) + region.column});
    }
    return true;
}

template <class T>
std::optional<uint16_t> TrueSenseBayerLike<T>::EvenColour() const noexcept {
    const TrueSenseFrame& frame = this->Frame();
    const TrueSenseWorkspace& workspace = this->Workspaces().front();
    const BayerLikeMemory& memory = m_memories.front();
    const auto least = BayerLikeRows<int16_t>(frame, workspace, memory, 0, 0).LeastDifference();
    return least ? least : BayerLikeRows<int32_t>(frame, workspace, memory, 0, 0).LeastDifference();
}

template class TrueSenseBayerLike<unsigned char>;
template class TrueSenseBayerLike<unsigned short>;

}  // namespace kvx
