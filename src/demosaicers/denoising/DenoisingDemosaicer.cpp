#include "demosaicers/denoising/DenoisingDemosaicer.h"

#include <new>

#include "demosaicers/frame/SourceRow.h"

namespace kvx {
namespace {

constexpr size_t kVectorReserve = 128;  // values: what vectors may touch beyond a row

}  // namespace

template <class T>
void DenoisingDemosaicer<T>::CleanMemory() noexcept {
    TrueSenseDemosaicer<T>::CleanMemory();
    m_planes.Release();
    m_lines.reset();
    m_meters.reset();
    m_gradients.Release();
    m_codes.Release();
    m_panThresholds.Release();
    m_reservedThreads = 0;
}

template <class T>
int DenoisingDemosaicer<T>::Reserve() noexcept {
    const TrueSenseFrame& frame = this->Frame();
    m_param = PipelineParamOf(frame.area, frame.params);
    MakeRawTables(m_param, m_rawTables);
    m_threads = TeamSize((frame.area.height - 1) / m_bandRows + 1, frame.params.threads_num);
    const bool hasGeometry = m_planes.width == frame.area.width && m_planes.height == frame.area.height;
    if (hasGeometry && m_reservedThreads == m_threads) return KvxResult_Success;

    const auto threads = static_cast<size_t>(m_threads);
    m_reservedThreads = 0;
    m_lineStep = static_cast<size_t>(frame.area.width) + kVectorReserve;
    m_lines.reset(new (std::nothrow) uint16_t[2 * m_lineStep * threads]);
    m_meters.reset(new (std::nothrow) PanNoiseMeter[threads]);
    const int width = frame.area.width;
    bool reserved = m_lines && m_meters && m_planes.Reserve(width, frame.area.height) &&
                    m_gradients.Reserve(width / 2, kGradientRows * m_threads, 0, 0) &&
                    m_codes.Reserve(width / 2, kCodeRows * m_threads, 0, 0) &&
                    m_panThresholds.Reserve(width / 2, m_threads, 0, 1.0F) && ReserveThreads(m_threads, width);
    for (size_t thread = 0; thread < threads; ++thread) reserved = reserved && m_meters[thread].Reserve(width / 2);
    if (!reserved) {
        CleanMemory();
        return KvxResult_NoMemory;
    }
    m_reservedThreads = m_threads;
    return KvxResult_Success;
}

template <class T>
void DenoisingDemosaicer<T>::MakeLowPlanes() noexcept {
    CalculateWhiteBalance();
    FilterPan(ReducesNoise(m_param) ? MeasurePanNoise() : NoPanThresholds());
    InterpolatePan();
    CalculateImpulseFilter();
}

template <class T>
void DenoisingDemosaicer<T>::CalculateWhiteBalance() noexcept {
    const TrueSenseFrame& frame = this->Frame();
    ForBands(0, m_planes.CellRows(), (m_bandRows + 1) / 2, [&](int thread, int begin, int end) {
        uint16_t *upper = m_lines.get() + 2 * m_lineStep * thread, *lower = upper + m_lineStep;
        for (int cellRow = begin; cellRow < end; ++cellRow) {
            const int row = 2 * cellRow;
            ReadSourceRow(frame, row, reinterpret_cast<int16_t*>(upper));
            ReadSourceRow(frame, row + 1, reinterpret_cast<int16_t*>(lower));
            int16_t *pan0 = m_planes.pan.Row(row), *pan1 = m_planes.pan.Row(row + 1);
            TakeCells(m_rawTables, row, upper, lower, static_cast<size_t>(m_planes.Cells()), pan0, pan1,
                      m_planes.colour.Row(cellRow));
            MirrorPanRow(pan0, 0, m_planes.Cells());
            MirrorPanRow(pan1, 1, m_planes.Cells());
        }
    });
}

template <class T>
PanThresholds DenoisingDemosaicer<T>::MeasurePanNoise() noexcept {
    for (int thread = 0; thread < m_threads; ++thread) m_meters[thread].Begin();
    const int blockRows = m_planes.CellRows() / kNoiseBlock;
    if (blockRows > 0)
        ForBands(0, blockRows, (m_bandRows + 2 * kNoiseBlock - 1) / (2 * kNoiseBlock),
                 [&](int thread, int begin, int end) {
                     for (int row = begin; row < end; ++row) m_meters[thread].CountBlocks(m_planes, row);
                 });
    PanNoise noise;
    for (int thread = 0; thread < m_threads; ++thread) noise.Add(m_meters[thread].Noise());
    return noise.Thresholds();
}

template <class T>
void DenoisingDemosaicer<T>::FilterPan(const PanThresholds& thresholds) noexcept {
    const PipelinePlanes& planes = m_planes;
    ForBands(0, planes.height, m_bandRows, [&](int thread, int begin, int end) {
        for (int row = begin; row < end; ++row) {
            int16_t* filtered = planes.filteredPan.Row(row);
            FilterPanRow(planes.Window(planes.pan, row), row % 2, static_cast<size_t>(planes.Cells()), thresholds,
                         m_panThresholds.Row(thread), filtered);
            MirrorPanRow(filtered, row % 2, planes.Cells());
        }
    });
}

template <class T>
GradientRow DenoisingDemosaicer<T>::Gradients(int thread, int row) noexcept {
    const int first = kGradientRows * thread + kArrays * (row % kRing);
    return {m_gradients.Row(first), m_gradients.Row(first + 1), m_gradients.Row(first + 2), m_gradients.Row(first + 3)};
}

template <class T>
void DenoisingDemosaicer<T>::SumGradientsOf(int thread, int row) noexcept {
    const PipelinePlanes& planes = m_planes;
    const PanWindow rows = planes.Window(planes.filteredPan, row);
    const int scratch = kGradientRows * thread + kRing * kArrays;
    SumGradients(rows[3], rows[2], rows[4], row % 2, static_cast<size_t>(planes.Cells()),
                 {m_gradients.Row(scratch), m_gradients.Row(scratch + 1)}, Gradients(thread, row));
}

template <class T>
void DenoisingDemosaicer<T>::InterpolatePan() noexcept {
    const PipelinePlanes& planes = m_planes;
    const auto cells = static_cast<size_t>(planes.Cells());
    ForBands(0, planes.CellRows(), (m_bandRows + 1) / 2, [&](int thread, int begin, int end) {
        int next = std::max(2 * begin - 2, 0);
        for (int cellRow = begin; cellRow < end; ++cellRow) {
            int16_t* const atColour[] = {m_codes.Row(kCodeRows * thread), m_codes.Row(kCodeRows * thread + 1)};
            for (int parity = 0; parity < 2; ++parity) {
                const int row = 2 * cellRow + parity;
                for (; next <= std::min(row + 2, planes.height - 1); ++next) SumGradientsOf(thread, next);
                std::array<GradientRow, 5> gradients;
                for (int i = 0; i < 5; ++i) gradients[i] = Gradients(thread, planes.MirroredRow(row + i - 2));
                InterpolatePanRow(planes.Window(planes.filteredPan, row), gradients, parity, cells, atColour[parity]);
                MergePanRow(planes.filteredPan.Row(row), atColour[parity], parity, cells, planes.fullPan.Row(row));
            }
            GenerateLow({planes.filteredPan.Row(2 * cellRow), atColour[0], planes.filteredPan.Row(2 * cellRow + 1),
                         atColour[1]},
                        cellRow);
        }
    });
}

template <class T>
void DenoisingDemosaicer<T>::GenerateLow(const CellPan& pan, int cellRow) noexcept {
    GenerateLowRow(pan, m_planes.colour.Row(cellRow), static_cast<size_t>(m_planes.Cells()),
                   m_planes.lowPan[0].Row(cellRow), m_planes.difference.Row(cellRow));
    std::fill_n(m_planes.lowPan[0].Row(cellRow) + m_planes.Cells(), PaddedPlane<int32_t>::kReach, kOutside);
}

template <class T>
void DenoisingDemosaicer<T>::CalculateImpulseFilter() noexcept {
    const auto cells = static_cast<size_t>(m_planes.Cells());
    const auto rowAt = [this](int row) -> const int16_t* {
        return row < 0 || row >= m_planes.CellRows() ? nullptr : m_planes.difference.Row(row);
    };
    const bool isFiltered = this->Frame().params.impulseFilterEnable != 0;
    ForBands(0, m_planes.CellRows(), (m_bandRows + 1) / 2, [&](int, int begin, int end) {
        for (int row = begin; row < end; ++row) {
            const int16_t* difference = rowAt(row);
            if (isFiltered) {
                FilterImpulses({rowAt(row - 2), difference, rowAt(row + 2)}, cells,
                               m_planes.filteredDifference.Row(row));
                difference = m_planes.filteredDifference.Row(row);
            }
            int32_t* wide = m_planes.lowColorDiff[0].Row(row);
            GenerateLowColour(m_planes.lowPan[0].Row(row), difference, cells, m_planes.lowColour.Row(row), wide);
            std::fill_n(wide + cells, PaddedPlane<int32_t>::kReach, kOutside);
        }
    });
}

template class DenoisingDemosaicer<unsigned char>;
template class DenoisingDemosaicer<unsigned short>;

}  // namespace kvx
