#include "demosaicers/denoising/TrueSenseSimple.h"

#include <new>

#include "demosaicers/frame/PixelWriter.h"

namespace kvx {

template <class T>
void TrueSenseSimple<T>::CleanMemory() noexcept {
    DenoisingDemosaicer<T>::CleanMemory();
    m_workspaces.reset();
}

template <class T>
bool TrueSenseSimple<T>::ReserveThreads(int threads, int width) noexcept {
    m_workspaces.reset(new (std::nothrow) Workspace[threads]);
    bool reserved = m_workspaces != nullptr;
    for (int thread = 0; reserved && thread < threads; ++thread) {
        Workspace& workspace = m_workspaces[thread];
        reserved = workspace.upSampler.Reserve(width) && workspace.pan.Reserve(width, 1, 0, 0) &&
                   workspace.colours.Reserve(width, 3, 0, 0);
    }
    return reserved;
}

template <class T>
int TrueSenseSimple<T>::Convert() noexcept {
    const TrueSenseFrame& frame = this->Frame();
    const PipelinePlanes& planes = this->Planes();
    this->MakeLowPlanes();
    const PixelWriter writer(frame);
    const LowPlanes low = {&planes.lowPan[0], &planes.lowColorDiff[0], planes.Cells(), planes.CellRows()};
    const int begin = frame.area.region.row;
    this->ForBands(begin, begin + frame.area.region.height, this->BandRows(), [&](int thread, int first, int last) {
        m_workspaces[thread].upSampler.Begin(low, first);
        for (int row = first; row < last; ++row) ColorCorrection(m_workspaces[thread], writer, row);
    });
    return KvxResult_Success;
}

template <class T>
void TrueSenseSimple<T>::ColorCorrection(Workspace& workspace, const PixelWriter& writer, int row) noexcept {
    const WorkingArea& area = this->Frame().area;
    const auto width = static_cast<size_t>(area.width);
    const int16_t* panCodes = this->Planes().fullPan.Row(row);
    int16_t* const colours[] = {workspace.colours.Row(0), workspace.colours.Row(1), workspace.colours.Row(2)};
    if (this->Param().monoEnable == 1) {
        for (size_t k = 0; k < width; ++k) colours[0][k] = static_cast<int16_t>(Gamma10toLinear12[panCodes[k]]);
        const int16_t* grey = colours[0] + area.region.column;
        writer.WriteRow(row - area.region.row, {grey, grey, grey});
        return;
    }
    int32_t* pan = workspace.pan.Row(0);
    for (size_t k = 0; k < width; ++k) pan[k] = panCodes[k] * kCodeUnit;
    workspace.upSampler.LowColorDiffUpSample(row, pan, {colours[0], colours[1], colours[2]});
    for (int16_t* colour : colours)
        for (size_t k = 0; k < width; ++k) colour[k] = static_cast<int16_t>(Gamma10toLinear12[colour[k]]);
    writer.WriteRow(row - area.region.row, {colours[0] + area.region.column, colours[1] + area.region.column,
                                            colours[2] + area.region.column});
}

template class TrueSenseSimple<unsigned char>;
template class TrueSenseSimple<unsigned short>;

}  // namespace kvx
